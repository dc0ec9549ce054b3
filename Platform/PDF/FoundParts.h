// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quirebind {

/// Names an indirect object of a source (ISO 32000-2, 7.3.10).
struct Reference {
    std::uint32_t number = 0;
    std::uint32_t generation = 0;

    friend bool operator==(const Reference&, const Reference&) = default;
};

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

/// What a scan meets in a value, in the order in which it stands. Positions count from the value's
/// beginning.
///
/// Whoever scans many values uses one of these again and again: nothing is allocated then. It can
/// remember dictionaries of the last few shapes. The objects of a document are alike: what
/// tells one page from the next is mostly the digits of its references. Where nothing but digits
/// has changed, and none has come or gone, all is where it was.
class FoundParts {
 public:
    enum class Memory : std::uint8_t { none, shapes };

    /// `memory`: `none` for what is scanned once.
    explicit FoundParts(Memory memory = Memory::none)
        : remembered_(memory == Memory::shapes ? kShapes : 0) {}

    [[nodiscard]] const std::vector<FoundReference>& references() const {  ///< All, however deep.
        return shapes_[current_].references;
    }
    /// Of the dictionary that the value itself is.
    [[nodiscard]] const std::vector<FoundEntry>& entries() const {
        return shapes_[current_].entries;
    }
    /// Whether there was no other thing where a key should stand; the entries end there.
    [[nodiscard]] bool wellFormed() const { return shapes_[current_].wellFormed; }

    /// Dictionaries of which this says the same have the same keys and values of the same kinds,
    /// but for digits in names: what is called or is named something without digits is so in all.
    /// 0 for one of which nothing can be said.
    [[nodiscard]] std::uint64_t shape() const { return shapes_[current_].serial; }

    /// Makes this what is found in the dictionary at the beginning of `text`, if it has a shape
    /// that is remembered. Returns its length, or 0 if it has not.
    [[nodiscard]] std::size_t recall(std::string_view text);

    /// Forgets what was found last and is not remembered, for what is found now.
    void clear();
    void add(const FoundReference& reference) { shapes_[current_].references.push_back(reference); }
    void add(const FoundEntry& entry) { shapes_[current_].entries.push_back(entry); }
    void endLastEntry(std::size_t begin, std::size_t end) {
        shapes_[current_].entries.back().valueBegin = begin;
        shapes_[current_].entries.back().valueEnd = end;
    }
    void breakOff() { shapes_[current_].wellFormed = false; }

    /// Remembers `dictionary`, a whole one, in which all that was added since the last `clear` was
    /// found.
    void remember(std::string_view dictionary);

 private:
    struct Shape {
        std::string text;  ///< Empty where it is not to be recalled.
        std::vector<FoundReference> references;
        std::vector<FoundEntry> entries;
        bool wellFormed = true;
        std::uint64_t serial = 0;

        [[nodiscard]] bool isThatOf(std::string_view other) const;
        [[nodiscard]] bool readReferences(std::string_view other);
    };

    static constexpr std::size_t kShapes = 4;

    std::array<Shape, kShapes> shapes_;
    std::size_t remembered_;  // how many of them: all or none
    std::size_t current_ = 0;
    std::size_t oldest_ = 0;
    std::uint64_t lastSerial_ = 0;
};

}  // namespace quirebind
