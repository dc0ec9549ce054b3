// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/Decryptor.h"

#include <cstdint>
#include <utility>

#include "Platform/PDF/Encryption/EncryptedStrings.h"
#include "Platform/PDF/Encryption/ObjectCipher.h"
#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {

Decryptor::Decryptor(std::string fileKey, CryptFilters filters, bool encryptsMetadata)
    : fileKey_(std::move(fileKey)),
      filters_(std::move(filters)),
      encryptsMetadata_(encryptsMetadata) {}

std::optional<std::string> Decryptor::decryptStrings(Value value, Reference id,
                                                     WorkBudget& budget) const {
    // To set a cipher up for an object takes as long as to go over so many bytes, and so does using
    // it on a string, however short.
    constexpr std::uint64_t kSetup = 256;
    constexpr std::uint64_t kString = 64;
    const std::string_view text = value.text();
    budget.spend(text.size() + kSetup);
    if (filters_.strings() == CryptMethod::identity) return std::nullopt;
    const auto strings = findEncryptedStrings(text);
    if (strings.empty()) return std::nullopt;
    budget.spend(kString * strings.size());
    const ObjectCipher cipher(filters_.strings(), fileKey_, id);
    std::string result;
    result.reserve(text.size());
    std::size_t at = 0;
    for (const Extent& string : strings) {
        result += text.substr(at, string.begin - at);
        appendLiteralString(cipher.decrypt(stringBytes(Value(string.in(text)), LineEnds::kept)),
                            result);
        at = string.end;
    }
    result += text.substr(at);
    return result;
}

std::string Decryptor::decryptBody(std::string body, Value dictionary, const StreamFilters& filters,
                                   Reference id) const {
    const CryptMethod method = methodFor(dictionary, filters);
    return ObjectCipher(method, fileKey_, id).decrypt(std::move(body));
}

CryptMethod Decryptor::methodFor(Value dictionary, const StreamFilters& filters) const {
    if (isCrossReferenceStream(dictionary)) return CryptMethod::identity;
    if (const auto& name = filters.cryptFilter()) return filters_.named(*name);
    const Value type = dictionary.find("Type");
    if (!encryptsMetadata_ && type.isName("Metadata")) return CryptMethod::identity;
    return type.isName("EmbeddedFile") ? filters_.embeddedFiles() : filters_.streams();
}

bool isCrossReferenceStream(Value dictionary) {
    return dictionary.find("Type").isName("XRef");
}

}  // namespace quirebind
