// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/PDF/DocumentWriter.h"
#include "Platform/PDF/ObjectReader.h"
#include "Platform/PDF/SparseArray.h"

namespace quirebind {

/// What an object is for, which says how it is rewritten when it is copied. It is known from how
/// the object was reached, not from its /Type, which files leave out or get wrong.
enum class Role : std::uint8_t {
    plain,  ///< Copied as it is, with its references mapped.
};

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

    ReferenceMap(ObjectReader& reader, DocumentWriter& writer)
        : reader_(reader), writer_(writer), outputs_(reader.table().flatLimit()) {}

    /// Lets references to `source` become references to `output`; it is not queued.
    void assign(std::uint32_t source, std::uint32_t output) { outputs_.at(source) = output; }

    /// Lets references to `source` become null.
    void assignNull(std::uint32_t source) { outputs_.at(source) = kNull; }

    [[nodiscard]] bool isAssigned(std::uint32_t source) const { return outputs_.get(source) != 0; }

    /// The number of the copy of what `reference` names, which is queued for copying when this is
    /// the first reference to it. Nothing where the reference means, or is to become, null.
    [[nodiscard]] std::optional<std::uint32_t> map(Reference reference, Role role);

    /// The next object to copy, in the order in which they were first referred to.
    [[nodiscard]] std::optional<Pending> next();

 private:
    static constexpr std::uint32_t kNull = 0xffffffff;

    ObjectReader& reader_;
    DocumentWriter& writer_;
    SparseArray<std::uint32_t> outputs_;  // 0: none yet
    std::vector<Pending> queue_;
    std::size_t head_ = 0;
};

}  // namespace quirebind
