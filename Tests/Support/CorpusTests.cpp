// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/Corpus.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A corpus of the test's own, and whatever corpus was set before in the end.
class CorpusTest : public ::testing::Test {
 public:
    // NOLINTBEGIN(concurrency-mt-unsafe): this program has one thread.
    CorpusTest() {
        if (const char* const set = std::getenv(kVariable)) before_ = set;
        std::filesystem::create_directories(folder_ / "corpus/b/c");
        std::filesystem::create_directories(folder_ / "measure/lists");
        folder_.write("corpus/b/c/two.PDF", "");
        folder_.write("corpus/b/one.pdf", "");
        folder_.write("corpus/b/text.txt", "");
        folder_.write("corpus/a b.pdf", "");
        folder_.write("measure/lists/some.txt", "b/one.pdf\na b.pdf\n");
        folder_.write("measure/lists/broken.txt", "a b.pdf\nnone.pdf\n");
        set(folder_ / "corpus");
    }
    CorpusTest(const CorpusTest&) = delete;
    CorpusTest(CorpusTest&&) = delete;
    CorpusTest& operator=(const CorpusTest&) = delete;
    CorpusTest& operator=(CorpusTest&&) = delete;
    ~CorpusTest() override {
        if (before_) {
            set(*before_);
        } else {
            unsetenv(kVariable);
        }
    }

 protected:
    static void set(const std::string& value) { setenv(kVariable, value.c_str(), 1); }
    // NOLINTEND(concurrency-mt-unsafe)

    [[nodiscard]] std::filesystem::path inCorpus(std::string_view name) const {
        return folder_ / "corpus/" + std::string(name);
    }
    [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }

 private:
    static constexpr const char* kVariable = "QUIREBIND_CORPUS";

    TemporaryFolder folder_;
    std::optional<std::string> before_;
};

using Corpus = CorpusTest;

TEST_F(Corpus, hasAllItsFilesSorted) {
    EXPECT_EQ(corpusFolder(), folder() / "corpus");
    EXPECT_THAT(allCorpusFiles(),
                ElementsAre(inCorpus("a b.pdf"), inCorpus("b/c/two.PDF"), inCorpus("b/one.pdf")));
}

TEST_F(Corpus, hasListsInTheirOrder) {
    EXPECT_THAT(corpusList("some"), ElementsAre(inCorpus("b/one.pdf"), inCorpus("a b.pdf")));
}

TEST_F(Corpus, isFoundWithASlashAtItsEnd) {
    set((folder() / "corpus") + "/");
    EXPECT_EQ(corpusList("some").size(), 2U);
}

TEST_F(Corpus, thatIsIncompleteFailsTheTest) {
    EXPECT_THROW(static_cast<void>(corpusList("broken")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(corpusList("unheard of")), std::runtime_error);
    set(folder() / "nowhere");
    EXPECT_THROW(static_cast<void>(corpusFolder()), std::runtime_error);
}

TEST_F(Corpus, canBeAnyFolderWithoutLists) {
    set(folder() / "corpus/b");
    EXPECT_THAT(allCorpusFiles(), ElementsAre(inCorpus("b/c/two.PDF"), inCorpus("b/one.pdf")));
    EXPECT_THAT(corpusList("some"), IsEmpty());
}

TEST_F(Corpus, thatIsNotSetIsEmpty) {
    set("");
    EXPECT_EQ(corpusFolder(), std::nullopt);
    EXPECT_THAT(allCorpusFiles(), IsEmpty());
    EXPECT_THAT(corpusList("some"), IsEmpty());
}

}  // namespace
}  // namespace quirebind::test
