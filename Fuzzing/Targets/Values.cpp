// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The lexer and what is asked of values.

#include <algorithm>
#include <string>
#include <vector>

#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Encryption/EncryptedStrings.h"
#include "Platform/PDF/Syntax/IndirectObject.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/Value.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

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

/// What the scan has noted of a dictionary is what reading it finds.
void requireSameEntries(Value value, const FoundParts& parts) {
    if (!value.isDictionary()) {
        fuzzing::require(parts.entries().empty(), "only a dictionary has entries");
        return;
    }
    DictionaryReader read(value);
    DictionaryReader noted(value, parts);
    for (;;) {
        const auto one = read.next();
        const auto other = noted.next();
        fuzzing::require(one.has_value() == other.has_value(), "there are as many entries");
        if (!one) break;
        fuzzing::require(one->key.text() == other->key.text(), "an entry has its key");
        fuzzing::require(one->value.text() == other->value.text(), "an entry has its value");
    }
    fuzzing::require(read.wellFormed() == noted.wellFormed(), "both break off or none");
}

/// A dictionary of a shape that is remembered has the parts that a scan finds.
void requireSameShape(std::string_view dictionary, FoundParts& remembered) {
    std::string other(dictionary);
    for (char& c : other)
        if (isDigit(c)) c = c == '9' ? '0' : static_cast<char>(c + 1);
    FoundParts parts;
    (void)scanValue(other, 0, &parts);
    (void)scanValue(other, 0, &remembered);
    const auto sameReference = [](const FoundReference& a, const FoundReference& b) {
        return a.begin == b.begin && a.end == b.end && a.reference == b.reference;
    };
    fuzzing::require(std::ranges::equal(parts.references(), remembered.references(), sameReference),
                     "its references are found");
    requireSameEntries(Value(other), remembered);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;  // every key is looked up
    const std::string_view text = fuzzing::textOf(data, size).substr(0, kLongest);
    FoundParts parts(FoundParts::Memory::shapes);
    const Extent extent = scanValue(text, 0, &parts);
    fuzzing::require(extent.looked <= text.size(), "nothing behind the text is looked at");
    if (extent.isValue()) {
        const std::string_view found = extent.in(text);
        for (const FoundReference& reference : parts.references())
            fuzzing::require(reference.begin < reference.end && reference.end <= found.size(),
                             "a reference is in its value");
        requireSameEntries(Value(found), parts);
        requireSameShape(found, parts);
        ask(Value(found));
        for (const Extent& string : findEncryptedStrings(found))
            fuzzing::require(string.end <= found.size(), "a string is in its value");
    }
    (void)parseIndirectObject(text, true);
    return 0;
}
