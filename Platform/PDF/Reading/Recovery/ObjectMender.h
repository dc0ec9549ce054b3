// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/SourceImage.h"
#include "Platform/PDF/Syntax/UnclosedObject.h"

namespace quirebind {

/// What is done about single objects that cannot be read, in a source whose table is right on the
/// whole. Used by one thread.
class ObjectMender {
 public:
    /// Where the object really is in the file, if anywhere. The first time, that takes a scan of
    /// the whole file.
    [[nodiscard]] ObjectLocation find(std::uint32_t number, SourceImage& image);

    /// Closes the dictionaries that the object at `offset` leaves open, and keeps what comes of it.
    /// Null where that is not what is wrong with it, or where too many were closed. What is looked
    /// at is spent from `budget`.
    const ClosedObject* close(std::uint32_t number, std::uint64_t offset, SourceImage& image,
                              WorkBudget& budget);

    /// The object if it was closed before, else null.
    [[nodiscard]] const ClosedObject* closed(std::uint32_t number) const {
        const auto known = closed_.find(number);
        return known == closed_.end() ? nullptr : &known->second;
    }

    /// From now on no object counts as closed.
    void forgetClosed() { closed_.clear(); }

 private:
    std::optional<ObjectTable> found_;  // the objects of the file, once they were looked for
    std::map<std::uint32_t, ClosedObject> closed_;
};

}  // namespace quirebind
