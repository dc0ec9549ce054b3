// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

/// Encrypts fixtures with the standard security handler (ISO 32000-2, 7.6.4). Written for tests and
/// apart from the code that they test: this side computes what a writer computes, and qpdf says
/// whether it is right.
namespace quirebind::test {

enum class FixtureCipher : std::uint8_t { identity, rc4, aes128, aes256 };

struct FixtureEncryptionOptions {
    int version = 2;
    int revision = 3;
    std::size_t keyBytes = 16;
    /// Of everything, and from version 4 on that of the crypt filter /StdCF.
    FixtureCipher cipher = FixtureCipher::rc4;
    std::string userPassword;
    std::string ownerPassword = "owner";
    bool encryptMetadata = true;
    std::string identifier = "0123456789abcdef";
    std::int64_t permissions = -44;
    /// From version 4 on: the filters for streams, strings and embedded files. Empty: not said.
    std::string streams = "StdCF";
    std::string strings = "StdCF";
    std::string files;
};
// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const FixtureEncryptionOptions& options, std::ostream* out);

/// What encrypts the objects of one document. A fixture is written with its help:
///
///     "{{object 7 0}}\n<< /Contents " + crypt.string(7, 0, "text") + " /Length {{length}} >>\n"
///     "{{stream}}\n" + crypt.data(7, 0, "body") + "\n{{endstream}}\nendobj\n"
///     ...
///     "<< /Root 1 0 R /Encrypt " + crypt.dictionary() + " /ID " + crypt.identifier() + " >>\n"
///
/// The same options and calls give the same bytes.
class FixtureEncryption {
 public:
    explicit FixtureEncryption(FixtureEncryptionOptions options);

    /// The encryption dictionary; its strings are hexadecimal.
    [[nodiscard]] std::string dictionary() const;
    /// The value of the trailer's /ID.
    [[nodiscard]] std::string identifier() const;

    /// `data` as it stands encrypted in the object of that number and generation.
    [[nodiscard]] std::string encrypt(std::uint32_t number, std::uint32_t generation,
                                      std::string_view data) const;
    /// A string of that object, hexadecimal; in clear where /StrF is not /StdCF.
    [[nodiscard]] std::string string(std::uint32_t number, std::uint32_t generation,
                                     std::string_view text) const;
    /// The body of that object as a directive of a fixture; in clear where /StmF is not /StdCF.
    [[nodiscard]] std::string data(std::uint32_t number, std::uint32_t generation,
                                   std::string_view body) const;

    /// The file encryption key.
    [[nodiscard]] const std::string& fileKey() const { return key_; }

 private:
    void makeOldKeys();
    void makeNewKeys();
    [[nodiscard]] std::string permissionBytes() const;

    FixtureEncryptionOptions options_;
    std::string key_;
    std::string o_;
    std::string u_;
    std::string oe_;
    std::string ue_;
    std::string perms_;
};

/// The bytes as hexadecimal digits.
[[nodiscard]] std::string hexDigits(std::string_view bytes);
/// {{hex ..}}, which stands for these bytes in a fixture.
[[nodiscard]] std::string hexDirective(std::string_view bytes);

}  // namespace quirebind::test
