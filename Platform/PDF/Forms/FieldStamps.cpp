// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FieldStamps.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

/// What says how an annotation looks, and where; no strings, which would have to be encrypted. The
/// state of a field's appearance may stand in its parent's value (12.5.5).
constexpr std::array<std::string_view, 6> kCopied{"Rect", "AP", "AS", "F", "OC", "Parent"};

class FieldStamps {
 public:
    explicit FieldStamps(SourceDocument& document)
        : document_(document),
          reader_(document.reader()),
          room_(limits::kDrawnFieldText, reader_.image().storedBytes()) {}

    std::string write() {
        for (const PageTree::Page& page : document_.pageTree().pages()) {
            attempt(reader_, [&] { addFieldsOf(page); });
            reader_.trim();
        }
        if (entries_.empty()) return {};
        writeSection();
        return std::move(update_);
    }

 private:
    struct Entry {
        std::uint64_t offset = 0;
        std::uint32_t generation = 0;
    };

    void addFieldsOf(const PageTree::Page& page) {
        const Value dictionary = document_.pageTree().dictionaryOf(page, reader_);
        ArrayReader annotations(reader_.resolve(dictionary.find("Annots")));
        while (const auto element = annotations.next()) {
            const auto reference = element->reference();
            if (!reference || entries_.contains(reference->number)) continue;
            if (entries_.size() == limits::kDrawnFields) return;
            attempt(reader_, [&] { addField(reference->number); });
        }
    }

    void addField(std::uint32_t number) {
        const SourceObject object = reader_.read(number);
        if (!reader_.resolve(object.value.find("Subtype")).isName("Widget")) return;
        const Value appearance = reader_.resolve(object.value.find("AP"));
        if (appearance.find("N").isNull() || room_.left() == 0) return;
        const std::size_t before = update_.size();
        begin(number, object.generation);
        update_ += "<</Type/Annot/Subtype/Stamp";
        for (const std::string_view key : kCopied)
            if (const Value value = object.value.find(key); !value.isNull())
                update_.append("/").append(key).append(" ").append(value.text());
        if (const Value state = object.value.find("V"); state.isName())
            update_.append("/V").append(state.text());
        update_ += ">>\nendobj\n";
        room_.spend(update_.size() - before);
    }

    void begin(std::uint32_t number, std::uint32_t generation) {
        update_ += "\n";
        entries_.insert_or_assign(number, Entry{position(), generation});
        update_ += std::to_string(number) + " " + std::to_string(generation) + " obj\n";
    }

    /// Where what comes next will be.
    [[nodiscard]] std::uint64_t position() { return reader_.image().size() + update_.size(); }

    void writeSection() {
        std::uint64_t newest = document_.sectionOffset().value_or(0);
        const bool isTable = beginsTable(newest);
        const auto size = Value(document_.trailer()).find("Size").integer().value_or(0);
        std::uint64_t count =
            std::max<std::uint64_t>(static_cast<std::uint64_t>(std::max<std::int64_t>(size, 0)),
                                    std::uint64_t{entries_.rbegin()->first} + 1);
        std::uint64_t start = 0;
        if (isTable) {
            start = position();
            writeTable();
            update_ += "trailer\n<<" + trailerEntries(count, newest) + ">>\n";
        } else {
            const auto number =
                static_cast<std::uint32_t>(std::min<std::uint64_t>(count++, limits::kObjectNumber));
            begin(number, 0);
            start = entries_.at(number).offset;
            writeStream(trailerEntries(count, newest));
        }
        update_ += "startxref\n" + std::to_string(start) + "\n%%EOF\n";
    }

    /// Whether a table begins at `offset`, which is moved over white space before it.
    [[nodiscard]] bool beginsTable(std::uint64_t& offset) {
        constexpr std::size_t kLook = 1024;
        const std::string_view text = reader_.image().view(offset, kLook);
        const std::size_t keyword = skipWhite(text, 0);
        if (!text.substr(keyword).starts_with(kTable)) return false;
        offset += keyword;
        return true;
    }

    [[nodiscard]] std::string trailerEntries(std::uint64_t count, std::uint64_t previous) const {
        std::string entries =
            "/Size " + std::to_string(count) + "/Prev " + std::to_string(previous);
        for (const std::string_view key : {"Root", "Encrypt", "ID"})
            if (const Value value = Value(document_.trailer()).find(key); !value.isNull())
                entries.append("/").append(key).append(" ").append(value.text());
        return entries;
    }

    void writeTable() {
        update_ += std::string(kTable) + "\n";
        for (const auto& [number, entry] : entries_) {
            if (entry.offset > kLargestInTable) throw DamagedDocument("no room for an offset");
            std::array<char, 32> line{};
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): numbers of a fixed width
            const int length = std::snprintf(line.data(), line.size(), "%010llu %05u n\r\n",
                                             static_cast<unsigned long long>(entry.offset),
                                             entry.generation % 100'000);
            update_ += std::to_string(number) + " 1\n";
            update_.append(line.data(), static_cast<std::size_t>(length));
        }
    }

    void writeStream(const std::string& trailerEntries) {
        std::string index;
        std::string rows;
        const auto append = [&rows](std::uint64_t value, int bytes) {
            for (int i = bytes; i-- > 0;)
                rows += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
        };
        for (const auto& [number, entry] : entries_) {
            index += std::to_string(number) + " 1 ";
            append(1, 1);
            append(entry.offset, 8);
            append(entry.generation, 2);
        }
        update_ += "<</Type/XRef/W[1 8 2]/Index[" + index + "]/Length " +
                   std::to_string(rows.size()) + trailerEntries + ">>\nstream\n" + rows +
                   "\nendstream\nendobj\n";
    }

    static constexpr std::string_view kTable = "xref";
    static constexpr std::uint64_t kLargestInTable = 9'999'999'999;

    SourceDocument& document_;
    ObjectReader& reader_;
    WorkBudget room_;  // for the update: fields that overlap in the file are written apart
    std::string update_;
    std::map<std::uint32_t, Entry> entries_;
};

}  // namespace

std::string stampsForFields(SourceDocument& document) {
    if (!document.sectionOffset() || document.catalog().find("AcroForm").isNull()) return {};
    return FieldStamps(document).write();
}

}  // namespace quirebind
