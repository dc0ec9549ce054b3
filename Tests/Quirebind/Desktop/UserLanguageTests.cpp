// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "Quirebind/Desktop/UserLanguage.h"

namespace quirebind {
namespace {

std::string catalogue(const QStringList& preferred) {
    return UserLanguage::catalogue(preferred).toStdString();
}

TEST(UserLanguage, IsThatOfTheUserInEveryCountry) {
    EXPECT_EQ(catalogue({"de-DE", "de"}), "de");
    EXPECT_EQ(catalogue({"de-AT"}), "de");
    EXPECT_EQ(catalogue({"pt-BR"}), "pt");
    EXPECT_EQ(catalogue({"pt-PT"}), "pt");
    EXPECT_EQ(catalogue({"ar-MA"}), "ar");
    EXPECT_EQ(catalogue({"he-IL"}), "he");
}

TEST(UserLanguage, IsTheFirstThatThereIsACatalogueFor) {
    EXPECT_EQ(catalogue({"sv-SE", "sv", "nl-NL", "fr-FR"}), "nl");
    EXPECT_EQ(catalogue({"sv-SE", "sv"}), "");
    EXPECT_EQ(catalogue({}), "");
    EXPECT_EQ(catalogue({"C"}), "");
    EXPECT_EQ(catalogue({"../../etc/passwd", "it-IT"}), "it");
}

TEST(UserLanguage, EnglishIsNotPassedOver) {
    EXPECT_EQ(catalogue({"en-GB", "en", "de-DE"}), "");
    EXPECT_EQ(catalogue({"sv-SE", "en-US", "de-DE"}), "");
}

TEST(UserLanguage, ChineseIsToldApartByItsScript) {
    EXPECT_EQ(catalogue({"zh-CN"}), "zh_CN");
    EXPECT_EQ(catalogue({"zh"}), "zh_CN");
    EXPECT_EQ(catalogue({"zh-Hans-SG"}), "zh_CN");
    EXPECT_EQ(catalogue({"zh-TW"}), "");
    EXPECT_EQ(catalogue({"zh-Hant-HK", "ja-JP"}), "ja");
}

}  // namespace
}  // namespace quirebind
