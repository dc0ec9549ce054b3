// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Encrypted fixtures are what they are meant to be: qpdf opens them with either password, and with
// no other, and finds in them what was put there.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/FixtureEncryption.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::test {

namespace {

using ::testing::HasSubstr;

std::string encryptedFixture(const FixtureEncryption& crypt) {
    return fixturePDF(R"(
{{header 1.7}}
{{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
endobj
{{object 3 0}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 300 2 R /Note )" +
                      crypt.string(3, 0, "a string (in brackets)") + R"( >>
endobj
{{object 300 2}}
<< /Length {{length}} >>
{{stream}}
)" + crypt.data(300, 2, "0 0 10 10 re f % the body") +
                      R"(
{{endstream}}
endobj
{{object 9 0}}
)" + crypt.dictionary() +
                      R"(
endobj
{{xref}}
trailer
<< /Size {{size}} /Root 1 0 R /Encrypt 9 0 R /ID )" +
                      crypt.identifier() + R"( >>
{{startxref}}
%%EOF
)");
}

class EncryptedFixture : public ::testing::TestWithParam<FixtureEncryptionOptions> {
 protected:
    /// What qpdf decrypts the fixture to.
    static RunResult decrypted(const TemporaryFolder& folder, const std::string& password) {
        return run({"qpdf", "--password=" + password, "--decrypt", "--qdf",
                    "--object-streams=disable", folder / "encrypted.pdf", "-"});
    }
};

TEST_P(EncryptedFixture, isReadByQPDFWithEitherPassword) {
    FixtureEncryptionOptions options = GetParam();
    options.userPassword = "the user's";
    options.ownerPassword = "the owner's";
    const TemporaryFolder folder;
    folder.write("encrypted.pdf", encryptedFixture(FixtureEncryption(options)));
    std::vector<std::string> passwords{options.userPassword};
    // For shorter keys of revision 3 qpdf understands step c of algorithm 3 in another way.
    const bool agreed = options.revision != 3 || options.keyBytes == 16;
    if (agreed) passwords.push_back(options.ownerPassword);
    for (const std::string& password : passwords) {
        const RunResult result = decrypted(folder, password);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_THAT(result.out, HasSubstr("/Note (a string \\(in brackets\\))"));
        EXPECT_THAT(result.out, HasSubstr("\n0 0 10 10 re f % the body\n"));
    }
    EXPECT_THAT(decrypted(folder, "").err, HasSubstr("invalid password"));
}

TEST_P(EncryptedFixture, isReadByQPDFWithoutAPassword) {
    const TemporaryFolder folder;
    folder.write("encrypted.pdf", encryptedFixture(FixtureEncryption(GetParam())));
    const RunResult result = decrypted(folder, "");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("/Note (a string \\(in brackets\\))"));
    EXPECT_THAT(result.out, HasSubstr("\n0 0 10 10 re f % the body\n"));
}

TEST_P(EncryptedFixture, isEncrypted) {
    const std::string bytes = encryptedFixture(FixtureEncryption(GetParam()));
    EXPECT_EQ(bytes.find("brackets"), std::string::npos);
    EXPECT_EQ(bytes.find(hexDigits("brackets")), std::string::npos);
    EXPECT_EQ(bytes.find("the body"), std::string::npos);
}

FixtureEncryptionOptions with(int version, int revision, std::size_t keyBytes, FixtureCipher cipher,
                              bool encryptMetadata = true) {
    FixtureEncryptionOptions options;
    options.version = version;
    options.revision = revision;
    options.keyBytes = keyBytes;
    options.cipher = cipher;
    options.encryptMetadata = encryptMetadata;
    return options;
}

INSTANTIATE_TEST_SUITE_P(
    All, EncryptedFixture,
    ::testing::Values(with(1, 2, 5, FixtureCipher::rc4), with(1, 3, 5, FixtureCipher::rc4),
                      with(2, 3, 5, FixtureCipher::rc4), with(2, 3, 10, FixtureCipher::rc4),
                      with(2, 3, 16, FixtureCipher::rc4), with(4, 4, 16, FixtureCipher::rc4),
                      with(4, 4, 16, FixtureCipher::rc4, false),
                      with(4, 4, 16, FixtureCipher::aes128),
                      with(4, 4, 16, FixtureCipher::aes128, false),
                      with(5, 5, 32, FixtureCipher::aes256), with(5, 6, 32, FixtureCipher::aes256),
                      with(5, 6, 32, FixtureCipher::aes256, false)));

}  // namespace
}  // namespace quirebind::test
