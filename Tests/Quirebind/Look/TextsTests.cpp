// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "Quirebind/Look/Texts.h"

namespace quirebind {
namespace {

using Keys = std::map<std::string, QString>;

/// A translation of some keys, as long as it lives.
class Translation : public QTranslator {
 public:
    explicit Translation(Keys texts) : texts_(std::move(texts)) {
        QCoreApplication::installTranslator(this);
    }
    Translation(const Translation&) = delete;
    Translation& operator=(const Translation&) = delete;
    Translation(Translation&&) = delete;
    Translation& operator=(Translation&&) = delete;
    ~Translation() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* key, const char*,
                                    int count) const override {
        if (std::string(context) != "Quirebind") return {};
        const auto text = texts_.find(key);
        if (text == texts_.end()) return {};
        return text->second + (count == 1 ? QStringLiteral("!") : QString());
    }

 private:
    Keys texts_;
};

TEST(Texts, AreTheirKeysWhereNoTranslationIsAvailable) {
    EXPECT_EQ(text::tagline(), "Bring your pages together.");
    EXPECT_EQ(text::addPDFs(), QString::fromUtf8("Add PDFs\u2026"));
    EXPECT_EQ(text::mergePDFs(), QString::fromUtf8("Merge PDFs\u2026"));
    EXPECT_EQ(text::merging(), QString::fromUtf8("Merging\u2026"));
    EXPECT_EQ(text::alertTitle(), QString::fromUtf8("Quirebind couldn\u2019t finish"));
    EXPECT_EQ(text::privacy(), "Processed privately on your Mac");
    EXPECT_EQ(text::showInFinder(), "Show in Finder");
}

TEST(Texts, HaveNoSingularOfTheirOwn) {
    EXPECT_EQ(text::pages(1), "1 pages");
    EXPECT_EQ(text::summary(0, 0), QString::fromUtf8("0 documents \u00B7 0 pages"));
    EXPECT_EQ(text::summary(1, 1), QString::fromUtf8("1 documents \u00B7 1 pages"));
}

TEST(Texts, WriteNumbersAsTheLocaleDoes) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(text::documentCount(1234), "1,234");
    EXPECT_EQ(text::pages(9'876'543'210), "9,876,543,210 pages");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(text::summary(1000, 2000000),
              QString::fromUtf8("1.000 documents \u00B7 2.000.000 pages"));
    QLocale::setDefault(before);
}

TEST(Texts, AreLookedUpByTheirKeysBeforeNumbersAreFilledIn) {
    const Translation german(Keys{{"%lld pages", "%lld Seiten"},
                                  {"%lld", "[%lld]"},
                                  {"%lld documents \u00B7 %lld pages", "%lld, davon %lld"}});
    EXPECT_EQ(text::pages(3), "3 Seiten");
    EXPECT_EQ(text::documentCount(7), "[7]");
    EXPECT_EQ(text::summary(2, 5), "2, davon 5");
}

TEST(Texts, LetTranslationsHavePlurals) {
    const Translation german(Keys{{"%lld pages", "%lld Seite"}});
    EXPECT_EQ(text::pages(1), "1 Seite!");
    EXPECT_EQ(text::pages(2), "2 Seite");
    EXPECT_EQ(text::pages(4'294'967'297), QLocale().toString(4'294'967'297LL) + " Seite");
}

}  // namespace
}  // namespace quirebind
