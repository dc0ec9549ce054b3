// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Platform/PDF/Encryption/EncryptedFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Support/Process.h"

namespace quirebind::pdftest {
namespace {

using test::FixtureCipher;

constexpr std::string_view kShowsOne = "BT /F1 12 Tf 20 150 Td (one) Tj ET";

}  // namespace

test::FixtureEncryptionOptions encryptedWith(int version, int revision, std::size_t keyBytes,
                                             FixtureCipher cipher) {
    test::FixtureEncryptionOptions options;
    options.version = version;
    options.revision = revision;
    options.keyBytes = keyBytes;
    options.cipher = cipher;
    return options;
}

std::vector<test::FixtureEncryptionOptions> everyEncryption() {
    std::vector<test::FixtureEncryptionOptions> all{
        encryptedWith(1, 2, 5, FixtureCipher::rc4),
        encryptedWith(1, 3, 5, FixtureCipher::rc4),
        encryptedWith(2, 3, 5, FixtureCipher::rc4),
        encryptedWith(2, 3, 7, FixtureCipher::rc4),
        encryptedWith(2, 3, 16, FixtureCipher::rc4),
        encryptedWith(4, 4, 16, FixtureCipher::rc4),
        encryptedWith(4, 4, 16, FixtureCipher::aes128),
        encryptedWith(4, 4, 16, FixtureCipher::identity),
        encryptedWith(5, 5, 32, FixtureCipher::aes256),
        encryptedWith(5, 6, 32, FixtureCipher::aes256),
    };
    // The empty password as the owner's only.
    for (const auto& options :
         {encryptedWith(1, 2, 5, FixtureCipher::rc4), encryptedWith(2, 3, 16, FixtureCipher::rc4),
          encryptedWith(4, 4, 16, FixtureCipher::aes128),
          encryptedWith(5, 5, 32, FixtureCipher::aes256),
          encryptedWith(5, 6, 32, FixtureCipher::aes256)}) {
        all.push_back(options);
        all.back().userPassword = "user";
        all.back().ownerPassword = "";
    }
    return all;
}

std::string Writer::string(std::uint32_t number, std::string_view text,
                           std::uint32_t generation) const {
    return crypt_ != nullptr ? crypt_->string(number, generation, text)
                             : "<" + test::hexDigits(text) + ">";
}

std::string Writer::stream(std::uint32_t number, const std::string& entries, std::string_view body,
                           std::uint32_t generation) const {
    const std::string data =
        crypt_ != nullptr ? crypt_->data(number, generation, body) : test::hexDirective(body);
    return "{{object " + std::to_string(number) + " " + std::to_string(generation) + "}}\n<< " +
           entries + " /Length {{length}} >>\n{{stream}}\n" + data + "\n{{endstream}}\nendobj\n";
}

std::string Writer::encryptionObject() const {
    return crypt_ != nullptr ? "{{object 90 0}}\n" + crypt_->dictionary() + "\nendobj\n" : "";
}

std::string Writer::trailerEntries() const {
    return crypt_ != nullptr ? "/Encrypt 90 0 R /ID " + crypt_->identifier() : "";
}

std::string pageWrittenBy(const Writer& writer, const std::string& entry,
                          const std::string& objects) {
    const std::string text(kOnePage);
    const std::size_t content = text.find("{{object 4 0}}");
    const std::size_t font = text.find("{{object 5 0}}");
    const std::string page = replaced(text.substr(0, content), "/MediaBox", entry + " /MediaBox");
    return replaced(document(page + writer.stream(4, "", kShowsOne) + text.substr(font) + objects +
                             writer.encryptionObject()),
                    "/Root 1 0 R", "/Root 1 0 R " + writer.trailerEntries());
}

std::optional<bool> isLocked(const std::string& path) {
    const auto source = PDFDocument::open(URL::file(path));
    if (!source) return std::nullopt;
    return source->isLocked();
}

std::string mergeInClear(const Bench& bench, const std::string& text) {
    std::string merged = bench.mergeFixture(text);
    expectPages(merged, {200}, {"one"});
    EXPECT_EQ(test::run({"qpdf", "--is-encrypted", merged}).exitCode, 2);
    EXPECT_THAT(runOrFail({"mutool", "info", merged}), Not(::testing::HasSubstr("Encryption")));
    EXPECT_THAT(Bench::read(merged), Not(::testing::HasSubstr("/Encrypt")));
    return merged;
}

std::string contentOf(const std::string& path) {
    const std::string all =
        runOrFail({"qpdf", "--qdf", "--static-id", "--no-original-object-ids",
                   "--stream-data=preserve", "--object-streams=disable", path, "-"});
    return all.substr(0, all.rfind("\nxref\n"));
}

}  // namespace quirebind::pdftest
