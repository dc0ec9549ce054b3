// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Encryption/Decryptor.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectDecryption.h"
#include "Platform/PDF/Reading/ObjectStreamCache.h"
#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/Recovery/LostObjects.h"
#include "Platform/PDF/Reading/Recovery/ObjectMender.h"
#include "Platform/PDF/Reading/SourceImage.h"
#include "Platform/PDF/Reading/SourceObject.h"
#include "Platform/PDF/Syntax/IndirectObject.h"

namespace quirebind {

/// Fetches the objects of one source by number, from the file or out of its object streams.
///
/// Every function throws DamagedDocument where the source is damaged. Used by one thread.
class ObjectReader {
 public:
    /// `table` says where in `image` the objects are.
    ObjectReader(SourceImage image, ObjectTable table);

    /// The bytes of the file.
    [[nodiscard]] SourceImage& image() { return image_; }
    /// The table that the document is read by.
    [[nodiscard]] const ObjectTable& table() const { return table_; }

    /// From now on the document is read by this table.
    void replaceTable(ObjectTable table) {
        table_ = std::move(table);
        mender_.forgetClosed();
    }

    /// From now on a reference to one of these objects is damage.
    void setLostObjects(LostObjects lost) { lost_ = std::move(lost); }

    /// From now on an object that is not where the table says is looked for in the whole file: the
    /// table has proved right for all that the document is made of, so one wrong entry is no reason
    /// to doubt the others.
    void mendWrongEntries() { mends_ = true; }

    /// Whether this names an object that is there; a reference to any other means null
    /// (ISO 32000-2, 7.3.10), unless the object is one of those that the file has lost.
    [[nodiscard]] bool exists(Reference reference);

    /// Whether this names an object that the file has lost.
    [[nodiscard]] bool isLost(Reference reference);

    /// The numbers of the objects in object stream `stream`, in its order; none where it cannot be
    /// decoded.
    [[nodiscard]] std::vector<std::uint32_t> membersOf(std::uint32_t stream);

    /// The object, null where none is listed. What its value is made of replaces the content of
    /// `parts`, unless that is null.
    [[nodiscard]] SourceObject read(std::uint32_t number, FoundParts* parts = nullptr);

    /// The object that `value` refers to, through any number of references (within a limit), or
    /// `value` itself where it is no reference.
    [[nodiscard]] Value resolve(Value value) {
        return value.reference() ? resolveReference(value) : value;
    }

    /// The same, but what is damaged means null. Throws only where the document is exhausted.
    [[nodiscard]] Value resolveIfSound(Value value);

    /// Whether `value` means null: it is, or leads to, null or an object that is not there
    /// (ISO 32000-2, 7.3.9). An entry with such a value is as good as absent.
    [[nodiscard]] bool isAbsent(Value value);

    /// The length in bytes of a stream's body.
    [[nodiscard]] std::uint64_t bodyLength(const SourceObject& stream) {
        return bodyLength(stream, stream.value.find("Length"));
    }
    /// The same, where `declared`, the value under its /Length, is known already.
    [[nodiscard]] std::uint64_t bodyLength(const SourceObject& stream, Value declared);

    /// Whether the document has asked for more work than its size allows: nothing can be read then.
    [[nodiscard]] bool isExhausted() const { return syntax_.left() == 0 || decoding_.left() == 0; }

    /// Lets whatever is read from here on be read in clear: strings, and what object streams hold.
    void decryptWith(Decryptor decryptor);
    /// Whether decryptWith was called.
    [[nodiscard]] bool isEncrypted() const { return decryption_ != nullptr; }

    /// The body, of `length` bytes, of a stream, in clear. Its filters still apply.
    [[nodiscard]] std::string body(const SourceObject& stream, std::uint64_t length);

    /// The same of an encrypted document, where the stream's `filters` are known already.
    [[nodiscard]] std::string decryptedBody(const SourceObject& stream, std::uint64_t length,
                                            const StreamFilters& filters);

    /// Gives memory back when much is held. Ends the validity of every object read: call it where
    /// none is in use.
    void trim();

 private:
    [[nodiscard]] Value resolveReference(Value value);
    [[nodiscard]] bool isListed(Reference reference);
    [[nodiscard]] std::optional<Reference> readId(std::uint64_t offset);
    [[nodiscard]] SourceObject readPacked(std::uint32_t number, FoundParts* parts);
    [[nodiscard]] SourceObject readInFile(std::uint32_t number, FoundParts* parts);
    [[nodiscard]] bool mend(std::uint32_t number);
    [[nodiscard]] SourceObject readFromFile(std::uint32_t number, std::uint64_t offset,
                                            FoundParts* parts);
    [[nodiscard]] SourceObject readClosed(std::uint32_t number, const ClosedObject& closed,
                                          FoundParts* parts);
    [[nodiscard]] SourceObject sourceObject(std::uint32_t number, std::uint64_t offset,
                                            const IndirectObject& found, FoundParts* parts);
    [[nodiscard]] SourceObject readFromStream(std::uint32_t number, const ObjectLocation& location,
                                              FoundParts* parts);
    [[nodiscard]] ObjectStream& objectStream(std::uint32_t number);
    [[nodiscard]] ObjectStream decodeObjectStream(std::uint32_t number);
    [[nodiscard]] Value resolveInFile(Value value);

    SourceImage image_;
    ObjectTable table_;
    WorkBudget syntax_;
    WorkBudget decoding_;
    std::optional<LostObjects> lost_;
    bool mends_ = false;
    std::optional<Reference> present_;  // what was last found to lead to something
    std::map<std::uint32_t, std::uint32_t> longPresent_;  // the same of all that is long
    ObjectMender mender_;
    ObjectStreamCache streams_;
    std::unique_ptr<ObjectDecryption> decryption_;  // none where nothing is encrypted
};

/// Calls `read`, which may find damage in what no page needs: that is passed over, and the answer
/// is false. Throws only where the document is exhausted.
template <typename Read>
bool attempt(ObjectReader& reader, Read read) {
    try {
        read();
        return true;
    } catch (const DamagedDocument&) {
        if (reader.isExhausted()) throw;
        return false;
    }
}

}  // namespace quirebind
