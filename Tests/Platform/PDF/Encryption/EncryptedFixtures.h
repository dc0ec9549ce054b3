// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/FixtureEncryption.h"

/// Documents of which there is an encrypted form and a plain one.
namespace quirebind::pdftest {

/// The options for a key of that length and a crypt filter of that cipher.
[[nodiscard]] test::FixtureEncryptionOptions encryptedWith(int version, int revision,
                                                           std::size_t keyBytes,
                                                           test::FixtureCipher cipher);

/// Every kind of encryption there is.
[[nodiscard]] std::vector<test::FixtureEncryptionOptions> everyEncryption();

/// What a fixture's author writes strings and bodies with: encrypted, or as they are where there is
/// no encryption.
class Writer {
 public:
    Writer() = default;
    /// `crypt` outlives the writer.
    explicit Writer(const test::FixtureEncryption& crypt) : crypt_(&crypt) {}

    /// A string of object `number`.
    [[nodiscard]] std::string string(std::uint32_t number, std::string_view text,
                                     std::uint32_t generation = 0) const;
    /// Object `number`, a stream of that body. `entries` go into its dictionary.
    [[nodiscard]] std::string stream(std::uint32_t number, const std::string& entries,
                                     std::string_view body, std::uint32_t generation = 0) const;
    /// Where there is encryption, an object 90 with its dictionary, for the trailer.
    [[nodiscard]] std::string encryptionObject() const;
    /// The trailer's entries for it.
    [[nodiscard]] std::string trailerEntries() const;

 private:
    const test::FixtureEncryption* crypt_ = nullptr;
};

/// A fixture: one page that shows "one", with `entry` on it, and further objects (of which 6 and on
/// are free to take), with a classic table.
[[nodiscard]] std::string pageWrittenBy(const Writer& writer, const std::string& entry,
                                        const std::string& objects = "");

/// Whether the document at `path` is locked; nothing where it cannot be opened.
[[nodiscard]] std::optional<bool> isLocked(const std::string& path);

/// Merges the document. Expects that other readers find the page in the result, and no encryption.
[[nodiscard]] std::string mergeInClear(const Bench& bench, const std::string& text);

/// Every object of the file, with the bodies of streams as they stand, in a form that does not
/// depend on how they are spelt: by qpdf.
[[nodiscard]] std::string contentOf(const std::string& path);

}  // namespace quirebind::pdftest
