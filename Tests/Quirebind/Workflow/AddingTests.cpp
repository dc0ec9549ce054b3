// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Quirebind/Workflow/WorkflowTestSupport.h"

namespace quirebind::workflowtest {
namespace {

using ::testing::ElementsAre;

TEST(NewWindow, isEmpty) {
    const Window window;
    EXPECT_TRUE(window.view.files().empty());
    EXPECT_FALSE(window.view.selection());
    EXPECT_FALSE(window.view.error());
    EXPECT_FALSE(window.view.output());
    EXPECT_FALSE(window.view.merging());
    EXPECT_FALSE(window.view.targeted());
    EXPECT_EQ(window.view.pageCount(), 0);
    EXPECT_FALSE(window.view.selectedURL());
}

TEST(Adding, listsFilesInOrderAndSelectsTheFirst) {
    Window window;
    const std::vector urls{window.document("a", 3), window.document("b", 1),
                           window.document("c", 12)};
    window.view.importFiles(urls);
    EXPECT_EQ(window.names(), "abc");
    EXPECT_EQ(window.view.pageCount(), 16);
    EXPECT_EQ(window.selected(), 0U);
    EXPECT_EQ(window.view.selectedURL(), urls[0]);
    EXPECT_FALSE(window.view.error());
    EXPECT_THAT(window.recorder.taken(), ElementsAre(Field::files, Field::files, Field::files,
                                                     Field::selection, Field::output));
}

TEST(Adding, keepsGoodFilesAndTellsOfTheOthersALineEach) {
    Window window;
    window.folder.write("no.pdf", "no PDF");
    const std::vector urls{URL::file(window.folder / "no.pdf"), window.document("a", 1),
                           URL::file(window.folder / "gone.pdf")};
    window.view.importFiles(urls);
    EXPECT_EQ(window.names(), "a");
    EXPECT_EQ(window.view.error(),
              "Could not read every page of no.pdf.\nCould not read every page of gone.pdf.");
    EXPECT_THAT(window.recorder.taken(),
                ElementsAre(Field::files, Field::selection, Field::output, Field::error));
}

TEST(Adding, ofALockedFileTellsThatAlone) {
    Window window;
    window.folder.write("locked.pdf", test::fixturePDF(R"(
{{header 1.4}}
{{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [] /Count 0 >>
endobj
{{xref}}
trailer
<< /Size {{size}} /Root 1 0 R /Encrypt << /Filter /Unknown /V 4 >> /ID [<00> <00>] >>
{{startxref}}
%%EOF
)"));
    const std::vector urls{window.document("a", 1), URL::file(window.folder / "locked.pdf")};
    window.view.importFiles(urls);
    EXPECT_EQ(window.names(), "a");
    EXPECT_EQ(window.view.error(), "locked.pdf is locked. Unlock it in Preview before adding it.");
}

TEST(Adding, ofNothingSelectsTheFirstWhereNothingIsSelected) {
    Window window;
    window.add({"a", "b"});
    window.view.setSelection(std::nullopt);
    window.view.importFiles({});
    EXPECT_EQ(window.selected(), 0U);
}

TEST(Adding, refusesWebLinksByTheirLastComponent) {
    Window window;
    const std::vector urls{URL::parse("https://example.org/some/My%20File.pdf?x=1")};
    EXPECT_TRUE(window.view.drop(urls));
    EXPECT_EQ(window.view.error(), "Could not read every page of My File.pdf.");
}

TEST(Adding, ofNothingOnlyClearsTheOutput) {
    Window window;
    window.add({"a", "b"});
    window.mergeInto("out.pdf");
    ASSERT_TRUE(window.view.output());
    window.recorder.writes.clear();
    window.view.importFiles({});
    EXPECT_FALSE(window.view.output());
    EXPECT_THAT(window.recorder.taken(), ElementsAre(Field::output));
}

TEST(Adding, selectsTheFirstOfTheWholeListWhereNothingIsSelected) {
    Window window;
    window.add({"a"});
    window.view.setSelection(std::nullopt);
    window.add({"b"});
    EXPECT_EQ(window.selected(), 0U);
}

TEST(Adding, keepsTheSelection) {
    Window window;
    window.add({"a", "b"});
    window.select(1);
    window.add({"c"});
    EXPECT_EQ(window.selected(), 1U);
}

TEST(Adding, listsAFileTwiceAsTwoEntries) {
    Window window;
    const URL url = window.document("a", 1);
    window.view.importFiles(std::vector{url, url});
    ASSERT_EQ(window.view.files().size(), 2U);
    EXPECT_NE(window.view.files()[0].id, window.view.files()[1].id);
    window.select(1);
    EXPECT_EQ(window.selected(), 1U);
    EXPECT_EQ(window.view.selectedURL(), url);
}

TEST(Adding, doesNotClearAnEarlierFailure) {
    Window window;
    window.view.importFiles(std::vector{URL::file(window.folder / "gone.pdf")});
    window.add({"a"});
    EXPECT_EQ(window.view.error(), "Could not read every page of gone.pdf.");
    window.view.dismissError();
    EXPECT_FALSE(window.view.error());
}

TEST(Selection, thatMatchesNoEntryShowsNothing) {
    Window window;
    window.add({"a"});
    window.view.setSelection(UUID::generate());
    EXPECT_FALSE(window.view.selectedURL());
}

TEST(OpenPanel, offersPDFsOnlyAndSeveralAtOnce) {
    Window window;
    window.desktop.filesToOpen = {window.document("a", 1), window.document("b", 1)};
    window.view.chooseFiles();
    EXPECT_EQ(window.names(), "ab");
    ASSERT_EQ(window.desktop.openPanels.size(), 1U);
    const OpenPanel& panel = window.desktop.openPanels.front();
    EXPECT_THAT(panel.allowedContentTypes, ElementsAre(ContentType::pdf));
    EXPECT_TRUE(panel.allowsMultipleSelection);
    EXPECT_FALSE(panel.canChooseDirectories);
}

TEST(OpenPanel, changesNothingWhenCancelled) {
    Window window;
    window.view.chooseFiles();
    EXPECT_TRUE(window.recorder.writes.empty());
}

TEST(DropArea, isTargetedWhileADragHovers) {
    Window window;
    window.view.setTargeted(true);
    EXPECT_TRUE(window.view.targeted());
    window.view.setTargeted(false);
    EXPECT_FALSE(window.view.targeted());
}

}  // namespace
}  // namespace quirebind::workflowtest
