// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Quirebind/Views/DocumentListModel.h"

namespace quirebind {
namespace {

std::vector<InputPDF> documents(std::initializer_list<const char*> names) {
    std::vector<InputPDF> files;
    for (const char* name : names)
        files.push_back({UUID::generate(), URL::file(std::string("/tmp/") + name), 2});
    return files;
}

std::string names(const DocumentListModel& model) {
    std::string result;
    for (int row = 0; row < model.rowCount(); ++row)
        result += model.index(row).data().toString().toStdString();
    return result;
}

/// A model that the toolkit's own checks watch.
struct Watched {
    DocumentListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST(DocumentListModel, ShowsNameAndPages) {
    Watched watched;
    watched.model.sync(documents({"a.pdf"}));
    const QModelIndex row = watched.model.index(0);
    EXPECT_EQ(row.data(DocumentListModel::nameRole), "a.pdf");
    EXPECT_EQ(row.data(DocumentListModel::pagesRole), "2 pages");
    EXPECT_EQ(row.data(Qt::AccessibleTextRole), "a.pdf, 2 pages");
}

TEST(DocumentListModel, TellsDocumentsOfTheSameNameApart) {
    Watched watched;
    watched.model.sync(documents({"May/a.pdf", "June/a.pdf"}));
    for (const int role : {int{Qt::ToolTipRole}, int{Qt::AccessibleDescriptionRole}}) {
        EXPECT_EQ(watched.model.index(0).data(role), "/tmp/May/a.pdf");
        EXPECT_EQ(watched.model.index(1).data(role), "/tmp/June/a.pdf");
    }
}

TEST(DocumentListModel, FindsRowsByTheirDocuments) {
    Watched watched;
    const auto files = documents({"a", "b", "a"});
    watched.model.sync(files);
    EXPECT_EQ(watched.model.indexOf(files[2].id).row(), 2);
    EXPECT_EQ(watched.model.idAt(watched.model.index(1)), files[1].id);
    EXPECT_FALSE(watched.model.indexOf(UUID::generate()).isValid());
    EXPECT_EQ(watched.model.idAt({}), std::nullopt);
}

TEST(DocumentListModel, ChangesNothingWhereNothingHasChanged) {
    Watched watched;
    const auto files = documents({"a", "b"});
    watched.model.sync(files);
    int changes = 0;
    const auto count = [&changes] { ++changes; };
    QObject::connect(&watched.model, &QAbstractItemModel::layoutChanged, count);
    QObject::connect(&watched.model, &QAbstractItemModel::modelReset, count);
    QObject::connect(&watched.model, &QAbstractItemModel::rowsInserted, count);
    QObject::connect(&watched.model, &QAbstractItemModel::rowsRemoved, count);
    watched.model.sync(files);
    EXPECT_EQ(changes, 0);
}

TEST(DocumentListModel, FollowsAnyChangeAndKeepsTrackOfEveryRow) {
    Watched watched;
    std::mt19937 random(1);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same changes every time
    std::vector<InputPDF> files;
    int made = 0;
    for (int change = 0; change < 300; ++change) {
        std::map<UUID, QPersistentModelIndex> tracked;
        for (const InputPDF& file : files) tracked.emplace(file.id, watched.model.indexOf(file.id));
        // Some go, the rest are shuffled or not, some come in anywhere.
        std::erase_if(files, [&](const InputPDF&) { return random() % 5 == 0; });
        if (random() % 2 == 0) std::ranges::shuffle(files, random);
        for (auto more = random() % 4; more > 0; --more) {
            const auto at = static_cast<std::ptrdiff_t>(random() % (files.size() + 1));
            files.insert(files.begin() + at,
                         {UUID::generate(), URL::file("/" + std::to_string(++made) + " "), 1});
        }
        watched.model.sync(files);

        std::string expected;
        for (const InputPDF& file : files) expected += file.url.lastPathComponent();
        ASSERT_EQ(names(watched.model), expected);
        for (const auto& [id, index] : tracked) {
            const bool listed = std::ranges::count(files, id, &InputPDF::id) != 0;
            ASSERT_EQ(index.isValid(), listed);
            const std::optional<UUID> expectedId = listed ? std::optional(id) : std::nullopt;
            ASSERT_EQ(watched.model.idAt(index), expectedId);
        }
    }
}

}  // namespace
}  // namespace quirebind
