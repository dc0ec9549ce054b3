// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/ResourceDigests.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/Encryption/StreamFilters.h"
#include "Platform/PDF/Limits.h"
#include "Platform/PDF/PDFString.h"

namespace quirebind {
namespace {

/// Writes a value and all that it refers to as one text. What is reached again is named by when it
/// was reached first, so that a graph with loops has an end.
class CanonicalText {
 public:
    using BodyDigest = std::function<std::string(const SourceObject&)>;

    CanonicalText(ObjectReader& reader, BodyDigest bodyDigest)
        : reader_(reader), bodyDigest_(std::move(bodyDigest)) {}

    /// Nothing where it would be too much work.
    std::optional<std::string> of(Value root) {
        pending_.push_back({.before = {}, .value = root});
        while (!pending_.empty()) {
            const Item item = std::move(pending_.back());
            pending_.pop_back();
            spend(item.value);
            if (work_ > limits::kComparedResource) return std::nullopt;
            text_ += item.before;
            write(item);
        }
        return std::move(text_);
    }

    [[nodiscard]] std::uint64_t work() const { return work_; }

 private:
    /// A value, and the key or the closing bracket before it.
    struct Item {
        std::string before;
        Value value;
        bool isStream = false;  ///< It is a stream's dictionary.
    };

    /// The work that even the smallest value makes, in bytes looked at.
    static constexpr std::uint64_t kItem = 16;

    void spend(Value value) { work_ += kItem + value.text().size(); }

    void write(const Item& item) {
        const Value value = item.value;
        if (const auto reference = value.reference())
            writeObject(*reference);
        else if (value.isArray())
            openArray(value);
        else if (value.isDictionary())
            openDictionary(value, item.isStream ? "Length" : "");
        else
            writeSimple(value);
    }

    /// A value that no other is part of.
    void writeSimple(Value value) {
        if (value.isName())
            writeBytes('/', value.name());
        else if (isString(value))
            writeBytes('(', stringBytes(value));
        else
            text_.append(" ").append(value.text());
    }

    static bool isSimple(Value value) {
        return !value.isArray() && !value.isDictionary() && !value.reference();
    }

    void writeObject(Reference reference) {
        const auto [known, isNew] = visited_.try_emplace(reference.number, visited_.size());
        if (!isNew) {
            text_.append("@").append(std::to_string(known->second));
            return;
        }
        if (!reader_.exists(reference)) {
            text_ += " null";
            return;
        }
        const SourceObject object = reader_.read(reference.number);
        if (object.isStream) writeBytes('s', bodyDigest_(object));
        pending_.push_back({.before = {}, .value = object.value, .isStream = object.isStream});
    }

    /// With their number, so that nothing in the bytes can be taken for something else.
    void writeBytes(char kind, std::string_view bytes) {
        std::array<char, 24> prefix{kind};
        const auto number =
            std::to_chars(prefix.data() + 1, prefix.data() + prefix.size() - 1, bytes.size());
        *number.ptr = ':';
        text_.append(prefix.data(), number.ptr + 1);
        text_ += bytes;
    }

    void openArray(Value array) {
        if (writeFlat(array.text())) return;
        text_ += '[';
        const std::size_t first = pending_.size();
        ArrayReader elements(array);
        while (const auto element = elements.next()) {
            // Most arrays are of numbers or names: nothing of them has to wait.
            if (pending_.size() == first && isSimple(*element)) {
                spend(*element);
                if (work_ > limits::kComparedResource) break;
                writeSimple(*element);
            } else {
                pending_.push_back({.before = {}, .value = *element});
            }
        }
        close("]", first);
    }

    /// An array of names and numbers, in arrays or not, in one go: widths and encodings are such,
    /// and make up nearly all of most fonts. False, and nothing written, where there is more in it.
    bool writeFlat(std::string_view array) {
        const std::size_t begin = text_.size();
        for (std::size_t at = 0; at < array.size(); at = skipWhite(array, at)) {
            const bool isName = array[at] == '/';
            const std::size_t first = isName ? at + 1 : at;
            const std::size_t end = skipRegular(array, first);
            const std::string_view token = array.substr(first, end - first);
            // Strings, dictionaries, what an R refers to and escapes have to be looked at.
            const bool isMore = isName ? token.find('#') != std::string_view::npos
                                       : token == "R" || array[at] == '(' || array[at] == '<';
            if (isMore) {
                text_.resize(begin);
                return false;
            }
            work_ += kItem;
            if (isName) {
                writeBytes('/', token);
            } else if (!token.empty()) {
                text_ += ' ';
                text_ += token;
            } else {
                text_ += array[at];
            }
            at = std::max(end, at + 1);
        }
        work_ += array.size();
        return true;
    }

    void openDictionary(Value dictionary, std::string_view without) {
        text_ += '<';
        std::map<std::string, Value> sorted;
        DictionaryReader entries(dictionary);
        while (const auto entry = entries.next())
            if (!entry->key.isName(without)) sorted.emplace(entry->key.name(), entry->value);
        const std::size_t first = pending_.size();
        for (const auto& [key, value] : sorted)
            pending_.push_back(
                {.before = "/" + std::to_string(key.size()) + ":" + key, .value = value});
        close(">", first);
    }

    /// Puts what was pushed since `first` in the order in which it is taken, the bracket last.
    void close(std::string_view bracket, std::size_t first) {
        pending_.push_back({.before = std::string(bracket), .value = {}});
        std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end());
    }

    ObjectReader& reader_;
    BodyDigest bodyDigest_;
    std::string text_;
    std::uint64_t work_ = 0;
    std::vector<Item> pending_;  // the next one last
    std::map<std::uint32_t, std::size_t> visited_;
};

}  // namespace

ResourceDigests::ResourceDigests(ObjectReader& reader, KeyedHash& hash)
    : reader_(reader),
      hash_(hash),
      graphs_(limits::kComparedResources),
      bodyBytes_(reader.image().size()) {}

std::optional<std::string> ResourceDigests::of(Value resource) {
    const auto reference = resource.reference();
    if (!reference) return compute(resource);
    if (const auto known = digests_.find(reference->number); known != digests_.end())
        return known->second;
    return digests_.emplace(reference->number, compute(resource)).first->second;
}

std::optional<std::string> ResourceDigests::compute(Value resource) {
    if (graphs_.left() < limits::kComparedResource) return std::nullopt;
    CanonicalText canonical(reader_, [this](const SourceObject& stream) {
        const auto known = bodies_.find(stream.number);
        if (known != bodies_.end()) return known->second;
        return bodies_.emplace(stream.number, bodyDigest(stream)).first->second;
    });
    const auto text = canonical.of(resource);
    graphs_.spend(std::min(canonical.work(), graphs_.left()));
    if (!text) return std::nullopt;
    return hash_.of(*text);
}

std::string ResourceDigests::bodyDigest(const SourceObject& stream) {
    constexpr std::uint64_t kPiece = std::uint64_t{1} << 20U;
    const std::uint64_t length = reader_.bodyLength(stream);
    bodyBytes_.spend(length);
    if (reader_.isEncrypted()) return hash_.of(reader_.body(stream, length));
    std::string digests;
    for (std::uint64_t at = 0; at < length; at += kPiece) {
        std::string piece(static_cast<std::size_t>(std::min(kPiece, length - at)), '\0');
        reader_.image().copy(stream.bodyOffset + at, piece);
        digests += hash_.of(piece);
    }
    return digests;
}

}  // namespace quirebind
