// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Tests/Support/FixtureLexer.h"
#include "Tests/Support/FixtureSections.h"

namespace quirebind::test {

/// What a pass over a fixture learns, for the next pass to refer to.
struct FixtureSymbols {
    struct Object {
        std::size_t piece = 0;  ///< Which piece of the fixture defines it.
        std::uint64_t offset = 0;
        std::optional<std::uint64_t> streamLength;

        friend bool operator==(const Object&, const Object&) = default;
    };

    /// By number; those of one number in the order of the fixture.
    std::map<std::uint64_t, std::vector<Object>> objects;
    std::map<std::string, std::uint64_t, std::less<>> labels;

    friend bool operator==(const FixtureSymbols&, const FixtureSymbols&) = default;
};

/// One pass over the pieces of a fixture, which writes the file by what the pass before it learned.
/// Numbers that the text refers to ahead change the places of what follows them, so passes are
/// repeated until two learn the same.
class FixtureExpander {
 public:
    /// Both must outlive the expander.
    FixtureExpander(std::span<const FixturePiece> pieces, const FixtureSymbols& known)
        : pieces_(pieces), known_(&known) {}

    /// Throws std::invalid_argument for what is wrong in any pass.
    void run();

    [[nodiscard]] const std::string& bytes() const { return out_; }
    [[nodiscard]] const FixtureSymbols& symbols() const { return learned_; }
    /// Throws std::invalid_argument if the text referred to something unknown: not in earlier
    /// passes, but in the last one.
    void requireResolved() const;

 private:
    /// What the piece at hand is part of.
    enum class Place : std::uint8_t {
        document,
        stream,
        objectStreamHead,
        objectStreamMember,
        xrefStreamHead
    };
    struct Rule;
    struct Reference {
        std::string base;
        std::int64_t delta = 0;
    };
    using DictionaryEntries = std::vector<std::pair<std::string, std::string>>;

    static std::span<const Rule> rules();

    void expand(const FixtureDirective& directive);
    void copy(std::string_view text);
    /// Where text goes at the moment.
    std::string& target() { return place_ == Place::document ? out_ : captured_; }
    [[nodiscard]] std::uint64_t here() const { return out_.size() - origin_; }

    static Reference parseReference(std::string_view text, std::size_t line);
    [[nodiscard]] const FixtureSymbols::Object* knownObject(std::uint64_t number) const;
    std::uint64_t resolveOffset(std::string_view text, std::size_t line);
    /// The value and what is to be added to it. If there is no value, `lacking` is remembered.
    std::uint64_t shifted(std::optional<std::uint64_t> value, std::int64_t delta, std::size_t line,
                          const std::string& lacking);
    /// `stream` with its line end, which must not be a lone carriage return (ISO 32000-2, 7.3.8.1).
    [[nodiscard]] std::string streamKeyword() const {
        return eol_ == "\r" ? "stream\r\n" : "stream" + eol_;
    }
    void recordStreamLength(std::uint64_t length);

    // One for each directive.
    void header(const FixtureDirective& directive);
    void eol(const FixtureDirective& directive);
    void label(const FixtureDirective& directive);
    void offset(const FixtureDirective& directive);
    void hex(const FixtureDirective& directive);
    void fill(const FixtureDirective& directive);
    void comment(const FixtureDirective& directive);
    void object(const FixtureDirective& directive);
    void stream(const FixtureDirective& directive);
    void endStream(const FixtureDirective& directive);
    void length(const FixtureDirective& directive);
    void objectStream(const FixtureDirective& directive);
    void member(const FixtureDirective& directive);
    void endObjectStream(const FixtureDirective& directive);
    void freeObject(const FixtureDirective& directive);
    void entry(const FixtureDirective& directive);
    void omit(const FixtureDirective& directive);
    void xref(const FixtureDirective& directive);
    void xrefStream(const FixtureDirective& directive);
    void endXrefStream(const FixtureDirective& directive);
    void prev(const FixtureDirective& directive);
    void size(const FixtureDirective& directive);
    void startXref(const FixtureDirective& directive);

    void beginObject(const FixtureDirective& directive);
    void open(Place place, const FixtureDirective& directive);
    /// The rest of an object after `N G obj`: dictionary, data, `endobj`.
    void writeStreamObject(DictionaryEntries generated, std::string_view data,
                           std::size_t defaultColumns);

    std::span<const FixturePiece> pieces_;
    const FixtureSymbols* known_;
    FixtureSymbols learned_;
    FixtureSections sections_;
    std::string out_;
    std::string eol_ = "\n";
    std::size_t piece_ = 0;
    std::uint64_t origin_ = 0;
    bool hasHeader_ = false;
    std::optional<std::uint64_t> object_;  ///< The number of the latest object.
    std::optional<std::pair<std::size_t, std::string>> unresolved_;  ///< Line and what.

    Place place_ = Place::document;
    std::string captured_;      ///< What was written since the current place began.
    FixtureDirective opening_;  ///< The directive that opened a stream of any kind.
    std::string head_;          ///< An object stream's further dictionary entries.
    std::vector<std::pair<std::uint64_t, std::string>> members_;
};

}  // namespace quirebind::test
