// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Syntax/Reference.h"

namespace quirebind {

/// An indirect reference and where it stands in the text that was scanned.
struct FoundReference {
    std::size_t begin = 0;
    std::size_t end = 0;
    Reference reference;
};

/// An entry of a dictionary, and where its key and its value stand. A last key without a value has
/// one of no length.
struct FoundEntry {
    std::size_t keyBegin = 0;
    std::size_t keyEnd = 0;
    std::size_t valueBegin = 0;
    std::size_t valueEnd = 0;
};

/// What is found in one value. Positions count from its beginning.
struct Found {
    std::vector<FoundReference> references;  ///< All, however deep.
    std::vector<FoundEntry> entries;         ///< Of the dictionary that the value itself is.
    bool wellFormed = true;  ///< Nothing else stands where a key should; the entries end there.
};

/// What a scan meets in a value, in the order in which it stands. Positions count from the value's
/// beginning.
///
/// Whoever scans many values uses one of these again and again: nothing is allocated then. It can
/// remember dictionaries of the last few shapes. The objects of a document are alike: what
/// tells one page from the next is mostly the digits of its references. Where nothing but digits
/// has changed, and none has come or gone, all is where it was.
class FoundParts {
 public:
    /// What is remembered of what was scanned before.
    enum class Memory : std::uint8_t {
        none,             ///< Nothing.
        shapes,           ///< Of dictionaries.
        shapesOfEntries,  ///< The same, where nobody asks for references: those that are recalled
                          ///< stay what they were.
    };

    /// `memory`: `none` for what is scanned once.
    explicit FoundParts(Memory memory = Memory::none)
        : remembered_(memory == Memory::none ? 0 : kShapes),
          readsReferences_(memory != Memory::shapesOfEntries) {}

    /// What was found in the value that was scanned last; valid until the next scan.
    [[nodiscard]] const Found& found() const { return shapes_[current_].found; }
    /// Of these, all references, however deep.
    [[nodiscard]] const std::vector<FoundReference>& references() const {
        return found().references;
    }
    /// Of these, the entries of the dictionary that the value itself is.
    [[nodiscard]] const std::vector<FoundEntry>& entries() const { return found().entries; }
    /// Whether every key of the dictionaries was a name.
    [[nodiscard]] bool wellFormed() const { return found().wellFormed; }

    /// Dictionaries of which this says the same have the same keys and values of the same kinds,
    /// but for digits in names: what is called or is named something without digits is so in all.
    /// 0 for one of which nothing can be said.
    [[nodiscard]] std::uint64_t shape() const { return shapes_[current_].serial; }

    /// Makes this what is found in the dictionary at the beginning of `text`, if it has a shape
    /// that is remembered. Returns its length, or 0 if it has not.
    [[nodiscard]] std::size_t recall(std::string_view text);

    /// Forgets what was found last and is not remembered. Returns where what is found now is to be
    /// noted, until the next call of any of these.
    [[nodiscard]] Found& renew();

    /// Forgets what was found last and is not remembered: nothing is found.
    void clear() { (void)renew(); }

    /// Remembers `dictionary`, a whole one, in which all was found that was noted since the last
    /// `renew`.
    void remember(std::string_view dictionary);

 private:
    struct Shape {
        std::string text;  ///< Empty where it is not to be recalled.
        Found found;
        std::uint64_t serial = 0;

        [[nodiscard]] bool isThatOf(std::string_view other) const;
        void readReferences(std::string_view other);
    };

    static constexpr std::size_t kShapes = 4;

    std::array<Shape, kShapes> shapes_;
    std::size_t remembered_;  // how many of them: all or none
    bool readsReferences_;    // when a dictionary is recalled
    std::size_t current_ = 0;
    std::size_t oldest_ = 0;
    std::uint64_t lastSerial_ = 0;
};

}  // namespace quirebind
