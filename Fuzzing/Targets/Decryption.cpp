// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Encryption dictionaries, and decrypting with a key as if one of them had given it. The bytes hold
// the dictionary, a line of three dashes, and what is encrypted.

#include <string>

#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Encryption/Decryptor.h"
#include "Platform/PDF/Encryption/StandardSecurityHandler.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace {

using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own

/// The value at the beginning of `text`; absent where there is none.
Value valueIn(std::string_view text) {
    const Extent extent = scanValue(text, 0);
    return extent.isValue() ? Value(extent.in(text)) : Value();
}

void decrypt(const Decryptor& decryptor, std::string_view data) {
    constexpr Reference kObject{7, 1};
    const Value dictionary = valueIn(data);
    WorkBudget budget(limits::kSyntax, data.size());
    if (const auto clear = decryptor.decryptStrings(dictionary, kObject, budget)) {
        const Extent extent = scanValue(*clear, 0);
        fuzzing::require(extent.isValue(), "what is decrypted is a value");
    }
    const Resolve resolve = [](Value value) { return value; };
    const StreamFilters filters(dictionary, resolve);
    const std::string clear =
        decryptor.decryptBody(std::string(data), dictionary, filters, kObject);
    fuzzing::require(clear.size() <= data.size(), "no cipher makes data longer");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzzing::textOf(data, size);
    constexpr std::string_view kLine = "\n---\n";
    const std::size_t end = text.find(kLine);
    if (end == std::string_view::npos) return 0;
    const Value dictionary = valueIn(text.substr(0, end));
    const std::string_view encrypted = text.substr(end + kLine.size());
    const Resolve resolve = [](Value value) { return value; };
    try {
        if (const auto opened = openWithoutPassword(dictionary, Value("[(id)]"), resolve))
            decrypt(*opened, encrypted);
        const std::int64_t version = dictionary.find("V").integer().value_or(0);
        const CryptFilters filters =
            version < 4 ? CryptFilters() : CryptFilters(dictionary, version < 5 ? 4 : 5, resolve);
        constexpr std::size_t kShort = 16;
        constexpr std::size_t kLong = 32;
        decrypt(Decryptor(std::string(version < 5 ? kShort : kLong, 'k'), filters, true),
                encrypted);
    } catch (const DamagedDocument&) {
        return 0;
    }
    return 0;
}
