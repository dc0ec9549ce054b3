// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/PDF/IndirectObject.h"
#include "Platform/PDF/ObjectStream.h"
#include "Platform/PDF/ObjectTable.h"
#include "Platform/PDF/SourceImage.h"
#include "Platform/PDF/WorkBudget.h"

namespace quirebind {

/// One object of a source, as text. Valid until ObjectReader::trim.
struct SourceObject {
    std::uint32_t number = 0;
    Value value;  ///< For a stream, its dictionary. Null for an object that is not there.
    bool isStream = false;
    bool packed = false;           ///< It came out of an object stream.
    std::uint64_t bodyOffset = 0;  ///< Where a stream's body begins.
};

/// Fetches the objects of one source by number, from the file or out of its object streams.
///
/// Every function throws DamagedDocument where the source is damaged. Used by one thread.
class ObjectReader {
 public:
    ObjectReader(SourceImage image, ObjectTable table);

    [[nodiscard]] SourceImage& image() { return image_; }
    [[nodiscard]] const ObjectTable& table() const { return table_; }

    /// Whether this names an object that is there; a reference to any other means null
    /// (ISO 32000-2, 7.3.10).
    [[nodiscard]] bool exists(Reference reference);

    /// The object, null where none is listed. Its references, with positions counted from the
    /// beginning of its value, replace the content of `references` unless that is null.
    [[nodiscard]] SourceObject read(std::uint32_t number,
                                    std::vector<FoundReference>* references = nullptr);

    /// The object that `value` refers to, through any number of references (within a limit), or
    /// `value` itself where it is no reference.
    [[nodiscard]] Value resolve(Value value);

    /// Whether `value` means null: it is, or leads to, null or an object that is not there
    /// (ISO 32000-2, 7.3.9). An entry with such a value is as good as absent.
    [[nodiscard]] bool isAbsent(Value value);

    /// The length in bytes of a stream's body.
    [[nodiscard]] std::uint64_t bodyLength(const SourceObject& stream);

    /// Gives memory back when much is held. Ends the validity of every object read: call it where
    /// none is in use.
    void trim();

 private:
    [[nodiscard]] std::optional<Reference> readId(std::uint64_t offset);
    [[nodiscard]] SourceObject readFromFile(std::uint32_t number, std::uint64_t offset,
                                            std::vector<FoundReference>* references);
    [[nodiscard]] SourceObject readFromStream(std::uint32_t number, const ObjectLocation& location,
                                              std::vector<FoundReference>* references);
    [[nodiscard]] ObjectStream& objectStream(std::uint32_t number);
    [[nodiscard]] std::unique_ptr<ObjectStream> decodeObjectStream(std::uint32_t number);
    [[nodiscard]] Value resolveInFile(Value value);

    struct CachedStream {
        std::uint32_t number;
        std::unique_ptr<ObjectStream> stream;
    };

    SourceImage image_;
    ObjectTable table_;
    WorkBudget syntax_;
    WorkBudget decoding_;
    std::list<CachedStream> recent_;  // the most recently used first
    std::map<std::uint32_t, std::list<CachedStream>::iterator> streams_;
    std::size_t streamsCost_ = 0;
};

/// The parsed object at `offset`, with as much of the file fetched as it takes. Throws
/// DamagedDocument where there is none.
[[nodiscard]] IndirectObject readIndirectObject(SourceImage& image, std::uint64_t offset,
                                                WorkBudget& budget,
                                                std::vector<FoundReference>* references = nullptr);

}  // namespace quirebind
