// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/ResourceDigests.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {
namespace {

/// What is longer than this is told by its hash.
constexpr std::size_t kLongestText = 32;

bool isSimple(Value value) {
    return !value.isArray() && !value.isDictionary() && !value.reference();
}

/// With their number, so that nothing in the bytes can be taken for something else.
void appendBytes(char kind, std::string_view bytes, std::string& text) {
    std::array<char, 24> prefix{kind};
    const auto number =
        std::to_chars(prefix.data() + 1, prefix.data() + prefix.size() - 1, bytes.size());
    *number.ptr = ':';
    text.append(prefix.data(), number.ptr + 1);
    text += bytes;
}

/// A value that no other is part of.
void appendSimple(Value value, std::string& text) {
    if (value.isName())
        appendBytes('/', value.name(), text);
    else if (isString(value))
        appendBytes('(', stringBytes(value), text);
    else
        text.append(" ").append(value.text());
}

}  // namespace

/// Digests a value from the inside out: each dictionary, array and stream becomes a text in which
/// what is in it stands as its digest. What refers to something that it is part of says how far
/// around that is, so that a graph with loops has an end.
class ResourceDigests::Walk {
 public:
    explicit Walk(ResourceDigests& digests) : digests_(digests), reader_(digests.reader_) {}

    /// Nothing where it would be too much work.
    std::optional<std::string> of(Value root) {
        levels_.emplace_back();
        pending_.push_back({.key = {}, .value = root});
        while (!pending_.empty()) {
            const Item item = std::move(pending_.back());
            pending_.pop_back();
            if (item.closes) {
                close();
                continue;
            }
            spend(item.value);
            if (isTooMuch()) return std::nullopt;
            text() += item.key;
            write(item.value);
        }
        if (isTooMuch()) return std::nullopt;
        return std::move(text());
    }

    [[nodiscard]] std::uint64_t work() const { return work_; }

 private:
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    /// A value and its key, or the end of what is open.
    struct Item {
        std::string key;
        Value value;
        bool closes = false;
        std::size_t place = 0;  ///< Among those of its dictionary.
    };
    /// What is open: a dictionary, an array, or an object that is more than a simple value.
    struct Level {
        std::string text;
        std::uint32_t object = 0;    ///< 0 for what is no object.
        std::size_t around = kNone;  ///< The outermost level that something in it refers to.
    };

    /// The work that even the smallest value makes, in bytes looked at.
    static constexpr std::uint64_t kItem = 16;

    [[nodiscard]] bool isTooMuch() const {
        return hasTooMuch_ || work_ > limits::kComparedResource;
    }
    void spend(Value value) { work_ += kItem + value.text().size(); }
    std::string& text() { return levels_.back().text; }

    void write(Value value) {
        if (const auto reference = value.reference()) {
            writeObject(*reference);
        } else if (isSimple(value)) {
            appendSimple(value, text());
        } else {
            open(0);
            fill(value, DictionaryReader(value), "");
        }
    }

    void writeObject(Reference reference) {
        const auto known = digests_.digests_.find(reference.number);
        if (known != digests_.digests_.end()) {
            hasTooMuch_ = hasTooMuch_ || !known->second;
            text() += known->second.value_or("");
            return;
        }
        const auto around = open_.find(reference.number);
        if (around != open_.end()) {
            text().append("@").append(std::to_string(levels_.size() - around->second));
            levels_.back().around = std::min(levels_.back().around, around->second);
            return;
        }
        if (!reader_.exists(reference)) {
            text() += " null";
            return;
        }
        const SourceObject object = reader_.read(reference.number, &digests_.parts_);
        spend(object.value);
        if (isSimple(object.value)) {
            appendSimple(object.value, text());
            return;
        }
        open(reference.number);
        if (object.isStream) appendBytes('s', digests_.bodyDigest(object), text());
        fill(object.value, DictionaryReader(object.value, digests_.parts_),
             object.isStream ? "Length" : "");
    }

    /// Begins the text of what is in brackets, or of an object.
    void open(std::uint32_t object) {
        if (object != 0) open_.emplace(object, levels_.size());
        levels_.push_back({.text = {}, .object = object});
        pending_.push_back({.key = {}, .value = {}, .closes = true});
    }

    void close() {
        Level done = std::move(levels_.back());
        levels_.pop_back();
        if (done.text.size() > kLongestText) done.text = "#" + digests_.hash_.of(done.text);
        text() += done.text;
        if (done.around < levels_.size())
            levels_.back().around = std::min(levels_.back().around, done.around);
        if (done.object == 0) return;
        open_.erase(done.object);
        // What is in a loop looks different from each place where the loop is entered.
        if (done.around == kNone) digests_.digests_.emplace(done.object, std::move(done.text));
    }

    /// Writes what is in `value`, which is not simple and was opened: `entries` if it is a
    /// dictionary.
    void fill(Value value, DictionaryReader entries, std::string_view without) {
        const std::size_t first = pending_.size();
        if (value.isDictionary())
            fillDictionary(entries, without);
        else if (!value.isArray())
            pending_.push_back({.key = {}, .value = value});  // an object that is a reference
        else if (!writeFlat(value.text()))
            fillArray(ArrayReader(value));
        std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end());
    }

    void fillArray(ArrayReader elements) {
        text() += '[';
        const std::size_t first = pending_.size();
        while (const auto element = elements.next()) {
            // Most arrays are of numbers or names: nothing of them has to wait.
            if (pending_.size() == first && isSimple(*element)) {
                spend(*element);
                if (isTooMuch()) break;
                appendSimple(*element, text());
            } else {
                pending_.push_back({.key = {}, .value = *element});
            }
        }
    }

    void fillDictionary(DictionaryReader entries, std::string_view without) {
        text() += '<';
        const auto first = static_cast<std::ptrdiff_t>(pending_.size());
        while (const auto entry = entries.next()) {
            if (entry->key.isName(without) || entry->value.text().empty()) continue;
            Item& item = pending_.emplace_back();
            appendBytes('/', entry->key.name(), item.key);
            item.value = entry->value;
            item.place = pending_.size();
        }
        const std::span items(pending_.begin() + first, pending_.end());
        // Of repeated keys the last counts.
        std::ranges::sort(items, [](const Item& one, const Item& other) {
            return std::tie(one.key, other.place) < std::tie(other.key, one.place);
        });
        const auto repeated = std::ranges::unique(items, {}, &Item::key);
        pending_.resize(pending_.size() - repeated.size());
    }

    /// An array of names and numbers, in arrays or not, in one go: widths and encodings are such,
    /// and make up nearly all of most fonts. False, and nothing written, where there is more in it.
    bool writeFlat(std::string_view array) {
        const std::size_t begin = text().size();
        for (std::size_t at = 0; at < array.size(); at = skipWhite(array, at)) {
            const bool isName = array[at] == '/';
            const std::size_t first = isName ? at + 1 : at;
            const std::size_t end = skipRegular(array, first);
            const std::string_view token = array.substr(first, end - first);
            // Strings, dictionaries, what an R refers to and escapes have to be looked at.
            const bool isMore = isName ? token.find('#') != std::string_view::npos
                                       : token == "R" || array[at] == '(' || array[at] == '<';
            if (isMore) {
                text().resize(begin);
                return false;
            }
            work_ += kItem;
            if (isName) {
                appendBytes('/', token, text());
            } else if (!token.empty()) {
                text() += ' ';
                text() += token;
            } else {
                text() += array[at];
            }
            at = std::max(end, at + 1);
        }
        work_ += array.size();
        return true;
    }

    ResourceDigests& digests_;
    ObjectReader& reader_;
    std::uint64_t work_ = 0;
    bool hasTooMuch_ = false;    // in it is what is too much by itself
    std::vector<Item> pending_;  // the next one last
    std::vector<Level> levels_;
    std::map<std::uint32_t, std::size_t> open_;  // the levels that are objects
};

ResourceDigests::ResourceDigests(ObjectReader& reader, KeyedHash& hash)
    : reader_(reader),
      hash_(hash),
      graphs_(limits::kComparedResources),
      bodyBytes_(reader.image().size()) {}

std::optional<std::string> ResourceDigests::of(Value resource) {
    if (graphs_.left() < limits::kComparedResource) return std::nullopt;
    Walk walk(*this);
    auto digest = walk.of(resource);
    graphs_.spend(std::min(walk.work(), graphs_.left()));
    const auto reference = resource.reference();
    if (!digest && reference) digests_.emplace(reference->number, std::nullopt);
    return digest;
}

bool ResourceDigests::isOfNothing(std::string_view digest) {
    return digest == " " || digest == " null" || digest.starts_with('@');
}

const std::string& ResourceDigests::bodyDigest(const SourceObject& stream) {
    const auto known = bodies_.find(stream.number);
    if (known != bodies_.end()) return known->second;
    return bodies_.emplace(stream.number, computeBodyDigest(stream)).first->second;
}

std::string ResourceDigests::computeBodyDigest(const SourceObject& stream) {
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
