// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "Tests/Support/FixtureEncoding.h"

namespace quirebind::coretest {

/// A document that is written object by object.
class WrittenDocument {
 public:
    /// Begins with a catalog, which has those entries, and a page tree of one page.
    explicit WrittenDocument(const std::string& catalog = "", const std::string& page = "",
                             const std::string& kids = "3 0 R") {
        object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
        object(2, "<</Type/Pages/Count 1/Kids[" + kids + "]>>");
        object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]" + page + ">>");
    }

    void object(std::size_t number, std::string_view body) {
        offsets_[number] = text_.size();
        text_.append(std::to_string(number)).append(" 0 obj").append(body).append("\nendobj\n");
    }

    void stream(std::size_t number, const std::string& entries, std::string_view data) {
        object(number, "<<" + entries + "/Length " + std::to_string(data.size()) + ">>stream\n" +
                           std::string(data) + "\nendstream");
    }

    /// Objects from `first` on, until the file has that size; gives the number behind.
    std::size_t fill(std::size_t first, std::size_t size,
                     const std::function<std::string(std::size_t)>& body) {
        constexpr std::size_t kEntry = 20;
        std::size_t number = first;
        while (text_.size() + kEntry * offsets_.size() < size) {
            object(number, body(number));
            ++number;
        }
        return number;
    }

    /// An object stream with one member, twice deflated.
    void packed(std::size_t stream, std::size_t member, const std::string& value) {
        const std::string pair = std::to_string(member) + " 0 ";
        this->stream(stream,
                     "/Type/ObjStm/N 1/First " + std::to_string(pair.size()) +
                         "/Filter[/FlateDecode/FlateDecode]",
                     test::encodeFlate(test::encodeFlate(pair + value)));
        packed_[member] = stream;
    }

    /// Lists an object as a member of an object stream that does not have it.
    void missing(std::size_t stream, std::size_t member) { packed_[member] = stream; }

    [[nodiscard]] std::size_t size() const { return text_.size(); }

    [[nodiscard]] std::string finished(const std::string& trailer = "") const {
        return packed_.empty() ? withTable(trailer) : withStream(trailer);
    }

 private:
    [[nodiscard]] std::string withTable(const std::string& trailer) const {
        std::string result = text_;
        const std::size_t start = result.size();
        result += "xref\n0 1\n0000000000 65535 f \n";
        for (const auto& [number, offset] : offsets_) {
            const std::string digits = std::to_string(offset);
            result += std::to_string(number) + " 1\n" + std::string(10 - digits.size(), '0') +
                      digits + " 00000 n \n";
        }
        return result + "trailer<</Root 1 0 R/Size " +
               std::to_string(offsets_.rbegin()->first + 1) + trailer + ">>\nstartxref\n" +
               std::to_string(start) + "\n%%EOF\n";
    }

    [[nodiscard]] std::string withStream(const std::string& trailer) const {
        WrittenDocument result = *this;
        const std::size_t number = std::max(offsets_.rbegin()->first, packed_.rbegin()->first) + 1;
        result.offsets_[number] = text_.size();
        std::string rows;
        std::string index;
        const auto add = [&](std::size_t each, char type, std::size_t value) {
            index += std::to_string(each) + " 1 ";
            rows += type;
            for (int i = 3; i >= 0; --i)
                rows += static_cast<char>(static_cast<unsigned char>(value >> (8U * unsigned(i))));
        };
        for (const auto& [each, offset] : result.offsets_) add(each, 1, offset);
        for (const auto& [each, stream] : packed_) add(each, 2, stream);
        result.stream(number,
                      "/Type/XRef/W[1 4 0]/Root 1 0 R/Size " + std::to_string(number + 1) +
                          "/Index[" + index + "]" + trailer,
                      rows);
        return result.text_ + "startxref\n" + std::to_string(text_.size()) + "\n%%EOF\n";
    }

    std::string text_ = "%PDF-1.7\n";
    std::map<std::size_t, std::size_t> offsets_;
    std::map<std::size_t, std::size_t> packed_;  // in which stream
};

/// `text` again and again, until it is as long.
inline std::string repeated(std::string_view text, std::size_t bytes) {
    std::string result;
    result.reserve(bytes + text.size());
    while (result.size() < bytes) result += text;
    return result;
}

inline std::string reference(std::size_t number) {
    return std::to_string(number) + " 0 R ";
}

/// References to the objects from `first` to before `end`.
inline std::string references(std::size_t first, std::size_t end) {
    std::string result;
    for (std::size_t i = first; i < end; ++i) result += reference(i);
    return result;
}

}  // namespace quirebind::coretest
