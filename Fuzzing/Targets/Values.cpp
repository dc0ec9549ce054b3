// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The lexer and what is asked of values.

#include <string>
#include <vector>

#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Encryption/EncryptedStrings.h"
#include "Platform/PDF/IndirectObject.h"
#include "Platform/PDF/PDFString.h"
#include "Platform/PDF/Value.h"
#include "Platform/PDF/ValueScanner.h"

namespace {

using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own

void ask(Value value) {
    (void)value.integer();
    (void)value.boolean();
    (void)value.reference();
    (void)value.name();
    (void)value.isName("Type");
    (void)stringBytes(value);
    DictionaryReader entries(value);
    while (const auto entry = entries.next()) {
        fuzzing::require(!entry->key.text().empty(), "a key is not empty");
        (void)entry->value.integer();
        (void)value.find(entry->key.name());
    }
    ArrayReader elements(value);
    while (const auto element = elements.next()) (void)element->reference();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;  // every key is looked up
    const std::string_view text = fuzzing::textOf(data, size).substr(0, kLongest);
    std::vector<FoundReference> references;
    const Extent extent = scanValue(text, 0, &references);
    fuzzing::require(extent.looked <= text.size(), "nothing behind the text is looked at");
    if (extent.isValue()) {
        const std::string_view found = extent.in(text);
        for (const FoundReference& reference : references)
            fuzzing::require(reference.begin < reference.end && reference.end <= found.size(),
                             "a reference is in its value");
        ask(Value(found));
        for (const Extent& string : findEncryptedStrings(found))
            fuzzing::require(string.end <= found.size(), "a string is in its value");
    }
    (void)parseIndirectObject(text, true);
    return 0;
}
