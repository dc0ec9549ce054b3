// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Reading/SparseArray.h"
#include "Platform/PDF/Structure/ElementPlace.h"
#include "Platform/PDF/Structure/ElementSelection.h"

namespace quirebind {

/// The structure elements of one source that are copied. Whatever the source's tree is like, the
/// copies make one: an element is a kid of the first that lists it, and of no other.
///
/// Only parents let elements be copied. One that something else refers to gets its number, and
/// waits for a parent to come.
class ElementCopies {
 public:
    /// An element that stands in its parent directly. It becomes an object.
    struct Direct {
        std::uint32_t number = 0;
        std::uint32_t parent = 0;
        int depth = 0;  ///< Of such elements in one another.
        ElementPlace place;
        std::string text;
    };

    /// `copier` must outlive this.
    explicit ElementCopies(ObjectCopier& copier)
        : copier_(copier), parents_(copier.reader().table().flatLimit()) {}

    /// From now on only what is selected is copied, and nothing without a parent.
    void restrictTo(const ElementSelection& selection) { selection_ = &selection; }

    /// Queues what `kid` refers to as a kid of the output's element `parent`; gives the number of
    /// its copy. Nothing where it has a parent already or is to be, or has become, something else.
    [[nodiscard]] std::optional<std::uint32_t> copy(Reference kid, std::uint32_t parent);

    /// The same for an element that is no object; its number and text are set here.
    [[nodiscard]] std::uint32_t copyDirect(Value element, Direct direct);

    /// The number of the copy of an element that something other than its parent refers to;
    /// nothing where that is none.
    [[nodiscard]] std::optional<std::uint32_t> find(Reference element);

    /// The number of the parent that an element got.
    [[nodiscard]] std::uint32_t parentOf(std::uint32_t source) const {
        return parents_.get(source);
    }

    /// The direct elements that have come since the last call.
    [[nodiscard]] std::vector<Direct> takeDirect() { return std::exchange(direct_, {}); }

    /// Queues, with the output's root for a parent, the elements that waited in vain: their source
    /// lists them for some content, but not in its tree. Says whether there are any.
    bool copyWaiting(std::uint32_t root);

 private:
    static constexpr std::uint32_t kWaits = 0xffffffff;
    static constexpr std::uint32_t kOther = 0xfffffffe;  // says of itself that it is no element

    void noteWaiting();
    [[nodiscard]] bool isElement(Reference reference);

    ObjectCopier& copier_;
    const ElementSelection* selection_ = nullptr;
    SparseArray<std::uint32_t> parents_;  // by the source's number; 0 for what is no element yet
    std::vector<std::uint32_t> waiting_;
    std::vector<Direct> direct_;
};

}  // namespace quirebind
