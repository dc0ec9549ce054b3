// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/PDF/Copying/Role.h"
#include "Platform/PDF/Copying/Sharing/StandIns.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/SparseArray.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// For the objects of one source, the numbers of their copies; and the queue of those that have a
/// number but no copy yet. One flat entry for each object number of the source.
class ReferenceMap {
 public:
    /// An object that waits to be copied.
    struct Pending {
        std::uint32_t source = 0;
        std::uint32_t output = 0;
        Role role = Role::plain;
    };

    /// Both must outlive this.
    ReferenceMap(ObjectReader& reader, DocumentWriter& writer)
        : reader_(reader), writer_(writer), outputs_(reader.table().flatLimit()) {}

    /// Lets references to `source` become references to `output`; it is not queued.
    void assign(std::uint32_t source, std::uint32_t output) { outputs_.at(source) = output; }

    /// Lets references to `source` become references to the copy of page `index`.
    void assignPage(std::uint32_t source, std::size_t index) {
        outputs_.at(source) = kPage | static_cast<std::uint32_t>(index);
    }
    /// Which page `source` is, where it is one.
    [[nodiscard]] std::optional<std::size_t> pageIndex(std::uint32_t source) const {
        const std::uint32_t output = outputs_.get(source);
        if (!isPage(output)) return std::nullopt;
        return output & ~kPage;
    }
    /// The number of the copy of page `index`, reserved when it is first asked for: pages that are
    /// numbered one after another leave the short numbers to what all of them refer to.
    [[nodiscard]] std::uint32_t pageNumber(std::size_t index);

    /// Whether pageNumber was called for page `index`, which counts from 0.
    [[nodiscard]] bool isPageNumbered(std::size_t index) const {
        return index < pages_.size() && pages_[index] != 0;
    }

    /// Lets references to `source` become null.
    void assignNull(std::uint32_t source) { outputs_.at(source) = kNull; }

    /// Whether it is settled what references to `source` become: an object, a page or null.
    [[nodiscard]] bool isAssigned(std::uint32_t source) const { return outputs_.get(source) != 0; }

    /// The number that references to `source` become, where there is one yet. Nothing is queued.
    [[nodiscard]] std::optional<std::uint32_t> find(std::uint32_t source) const {
        const std::uint32_t output = outputs_.get(source);
        if (output == 0 || output == kNull) return std::nullopt;
        if (!isPage(output)) return output;
        const std::uint32_t index = output & ~kPage;
        if (!isPageNumbered(index)) return std::nullopt;
        return pages_[index];
    }

    /// Lets `source` have `role` however it is reached: for what a list in the document says it is.
    void setRole(std::uint32_t source, Role role) { known_[source] = role; }

    /// The number of the copy of what `reference` names, which is queued for copying when this is
    /// the first reference to it; but a structure element waits for its parent. Nothing where the
    /// reference means, or is to become, null.
    [[nodiscard]] std::optional<std::uint32_t> map(Reference reference, Role role);

    /// The same, but queues a structure element, too; it must not have been queued yet.
    [[nodiscard]] std::optional<std::uint32_t> mapElement(Reference reference);

    /// Queues a structure element that waits.
    void queueElement(std::uint32_t source) {
        queue_.push_back({source, outputs_.get(source), Role::structureElement});
    }
    /// Lets an object that was queued wait, since it is a structure element.
    void wait(std::uint32_t source) { waiting_.push_back(source); }
    /// The structure elements that have come to wait since the last call.
    [[nodiscard]] std::vector<std::uint32_t> takeWaiting() { return std::exchange(waiting_, {}); }

    /// From now on an object of no particular role, when it is first referred to, is asked for
    /// among these, which must live as long as this is used.
    void setStandIns(StandIns& standIns) { standIns_ = &standIns; }

    /// From now on references to objects that the file has lost mean null.
    void bypassLostObjects() { bypassesLost_ = true; }

    /// The next object to copy, in the order in which they were first referred to.
    [[nodiscard]] std::optional<Pending> next();

 private:
    // No object number is as large as these.
    static constexpr std::uint32_t kNull = 0xffffffff;
    static constexpr std::uint32_t kPage = 0x80000000;  // and the page's index

    [[nodiscard]] static bool isPage(std::uint32_t output) {
        return (output & kPage) != 0 && output != kNull;
    }

    [[nodiscard]] bool exists(Reference reference) {
        return !(bypassesLost_ && reader_.isLost(reference)) && reader_.exists(reference);
    }

    [[nodiscard]] std::uint32_t assignFirst(std::uint32_t source, Role role);
    [[nodiscard]] Role roleOf(std::uint32_t source, Role role) const;

    ObjectReader& reader_;
    DocumentWriter& writer_;
    SparseArray<std::uint32_t> outputs_;  // 0: none yet
    std::vector<std::uint32_t> pages_;    // numbers of their copies, by index; 0: none yet
    std::map<std::uint32_t, Role> known_;
    std::vector<Pending> queue_;
    std::size_t head_ = 0;
    std::vector<std::uint32_t> waiting_;
    StandIns* standIns_ = nullptr;  // not owned
    bool bypassesLost_ = false;
};

}  // namespace quirebind
