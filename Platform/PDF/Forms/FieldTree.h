// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Reading/SparseArray.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The trees of fields in one source's form (ISO 32000-2, 12.7.4.1):
///
///     /Fields  [root root ...]
///     field    << /T (name) /Kids [field field ...] >>       /Parent leads back
///     field    << /T (name) /Kids [widget widget ...] >>
///
/// In files /Fields also lists fields that have a parent, and /Kids lead back up, to the same field
/// again, to pages or nowhere. What is made of them here is trees: each field that is an object is
/// reached once, by its parent rather than by /Fields. Other readers walk through the output
/// without asking, and are not to go astray in it because one of the sources did.
class FieldTree {
 public:
    /// A reference to a field, or a field that stands in /Fields directly, which has a number that
    /// no object has.
    struct Root {
        std::uint32_t number = 0;
        std::string text;
    };

    /// What is told of the fields while they are walked through; no view outlives the call.
    struct Visitor {
        /// A root, which comes before the fields below it. The number is that of Root.
        std::function<void(std::uint32_t number, Value field)> root;
        /// A field with a name that has none above it, and its name (in UTF-8).
        std::function<void(std::uint32_t number, const std::string& name)> firstName;
        /// A field whose /Kids, as they are written in the source, are to be these.
        std::function<void(std::uint32_t number, std::string kids)> kids;
    };

    /// All must outlive this. Nothing is copied yet.
    FieldTree(ObjectCopier& copier, const Visitor& visitor)
        : copier_(copier), visitor_(visitor), marks_(copier.reader().table().flatLimit()) {}

    /// Walks through all fields that `fields`, an array, leads to; gives the roots in their order.
    /// Throws DamagedDocument only where the source is exhausted.
    [[nodiscard]] std::vector<Root> walk(Value fields);

    /// Whether `number` is that of a root which is no object.
    [[nodiscard]] static bool isDirect(std::uint32_t number);

 private:
    struct Node {
        Reference field;
        std::size_t depth = 0;
        bool hasName = false;  ///< Or one above it has.
    };

    struct Entries {
        Value name;
        Value parent;
        Value kids;
    };

    // What is known of an object: it is listed in /Fields, a field that was reached, or an array of
    // kids that was read.
    static constexpr std::uint8_t kListed = 1;
    static constexpr std::uint8_t kReached = 2;
    static constexpr std::uint8_t kArray = 4;

    [[nodiscard]] std::vector<Root> collect(Value fields);
    [[nodiscard]] bool visitRoot(const Root& root, bool withParent);
    void walkPending();
    void visit(std::uint32_t number, const Entries& entries, Node node);
    void visitKids(std::uint32_t number, Value kids, const Node& node);
    [[nodiscard]] bool isNewKid(Reference kid, std::size_t depth);
    /// The field; absent where there is none.
    [[nodiscard]] Value fieldAt(Reference reference);
    [[nodiscard]] static Entries entriesOf(Value field);
    [[nodiscard]] bool isReached(std::uint32_t number) const;
    /// Says whether the object had no such mark.
    bool mark(std::uint32_t number, std::uint8_t mark);

    ObjectCopier& copier_;
    const Visitor& visitor_;
    std::vector<Node> pending_;        // the next one last
    SparseArray<std::uint8_t> marks_;  // by object number
};

}  // namespace quirebind
