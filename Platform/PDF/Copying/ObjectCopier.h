// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/EntryRewriter.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Copying/ReferenceMap.h"
#include "Platform/PDF/Copying/Sharing/StreamSharer.h"
#include "Platform/PDF/Copying/StructureKeys.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// Moves objects from a source to the output: the text between references goes over in bulk, the
/// references get the numbers of the copies, the bodies of streams go straight from the file into
/// the output. The rewriters for objects that need more than that stand upon this.
///
/// Throws DamagedDocument where the source is damaged; the output is then of no use.
class ObjectCopier {
 public:
    /// `parts` are for this alone while anything is copied; what they remember may come from an
    /// earlier source. All must outlive this.
    ObjectCopier(ObjectReader& reader, DocumentWriter& writer, SharedStreams& shared,
                 StructureKeyCounter& keys, FoundParts& parts)
        : reader_(reader),
          writer_(writer),
          map_(reader, writer),
          sharer_(reader, map_, writer, shared),
          keys_(keys, reader.table().flatLimit()),
          bodies_(reader.image().size()),
          texts_(limits::kCopied, reader.image().storedBytes()),
          parts_(parts) {}

    /// What it reads from. It outlives this.
    [[nodiscard]] ObjectReader& reader() { return reader_; }
    /// What it writes to. It outlives this.
    [[nodiscard]] DocumentWriter& writer() { return writer_; }
    /// What it numbers the copies by; a part of this.
    [[nodiscard]] ReferenceMap& map() { return map_; }

    /// From now on dictionaries and arrays of this role are written by `rewriter`, which must live
    /// as long as it is used. Streams that it does not replace, and roles without one, are copied
    /// as they are.
    void setRewriter(Role role, ObjectRewriter& rewriter) {
        rewriters_.at(static_cast<std::size_t>(role)) = &rewriter;
    }
    /// Whether setRewriter was called for the role.
    [[nodiscard]] bool hasRewriter(Role role) const { return rewriterOf(role) != nullptr; }

    /// What to do about an object that cannot be read, or refers to one that the file has lost.
    enum class Damage : std::uint8_t {
        refused,   ///< It is needed.
        bypassed,  ///< It becomes null.
    };

    /// Copies all that waits in the map's queue, and what that refers to in turn.
    void copyPending(Damage damage);

    /// Appends `value` with its references mapped; what they name gets `role`.
    void appendValue(Value value, Role role, ByteBuffer& out);

    /// Copies `value`, the next part of `text` to be copied, as something of that role.
    void copyAs(Role role, Value value, MappedText& text, ByteBuffer& out);

    /// Appends `value`, which stands alone, as something of that role.
    void appendAs(Role role, Value value, ByteBuffer& out);

    /// The object that is being copied.
    [[nodiscard]] const ReferenceMap::Pending& current() const { return current_; }

    /// Rewrites the entry that `entries` gave last if it is one that has to be rewritten wherever
    /// it stands: /StructParent or /StructParents. Says whether it was.
    bool rewriteCommonEntry(const DictionaryEntry& entry, EntryRewriter& entries);

    /// The keys under which what is copied stands in the parent tree of the output.
    [[nodiscard]] const StructureKeys& structureKeys() const { return keys_; }

 private:
    [[nodiscard]] ObjectRewriter* rewriterOf(Role role) const {
        return rewriters_.at(static_cast<std::size_t>(role));
    }
    /// What an object's own entries say it is.
    struct Kind {
        bool isPageTreeNode = false;
        bool isStructureElement = false;
        bool isLayer = false;
        bool hasStructureKey = false;  ///< It names a place in the parent tree (14.7.5.4).
    };
    [[nodiscard]] static Kind kindOf(Value value, const FoundParts& parts);

    void copyCurrent(const SourceObject& object);
    void copyObject(const SourceObject& object, const Kind& kind);
    void copyPlain(Value value, bool hasStructureKey, MappedText& text, ByteBuffer& out);
    void copyStream(const SourceObject& object);
    void appendDictionary(Value dictionary, std::uint64_t length, ByteBuffer& out);
    [[nodiscard]] std::size_t appendBody(std::uint64_t offset, std::size_t length, ByteBuffer& out);
    void copyEncryptedStream(const SourceObject& object, std::uint64_t length,
                             std::uint32_t output);
    void appendFilters(const std::vector<StreamFilters::Filter>& filters, ByteBuffer& out);

    ObjectReader& reader_;
    DocumentWriter& writer_;
    ReferenceMap map_;
    StreamSharer sharer_;
    StructureKeys keys_;
    std::array<ObjectRewriter*, kRoles> rewriters_{};
    ReferenceMap::Pending current_;
    WorkBudget bodies_;  // they do not overlap, so together they fit the file
    WorkBudget texts_;   // nor do the objects without them
    FoundParts& parts_;  // of the object being copied
};

}  // namespace quirebind
