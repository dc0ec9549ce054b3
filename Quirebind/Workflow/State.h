// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <utility>

#include "Quirebind/Workflow/MainThread.h"

namespace quirebind {

/// The cells of a window's state.
enum class Field : std::uint8_t { files, selection, error, output, merging, targeted };

/// Is told of every write of a cell, when the cell has its new value.
class StateObserver {
 public:
    StateObserver() = default;
    StateObserver(const StateObserver&) = delete;
    StateObserver& operator=(const StateObserver&) = delete;
    StateObserver(StateObserver&&) = delete;
    StateObserver& operator=(StateObserver&&) = delete;
    virtual ~StateObserver() = default;

    /// The cell `field` was written. Main thread only; called by the write itself, which has not
    /// returned yet.
    virtual void didWrite(Field field) = 0;
};

/// One cell of a window's state: a value, every write of which is told to an observer, also where
/// the new value equals the old. Main thread only, which is checked.
template <typename T>
class State {
 public:
    /// `mainThread` and `observer` must outlive the cell.
    State(Field field, T initial, const MainThread& mainThread, StateObserver& observer)
        : field_(field), value_(std::move(initial)), mainThread_(mainThread), observer_(observer) {}

    /// Valid until the next write.
    [[nodiscard]] const T& get() const {
        mainThread_.check();
        return value_;
    }

    /// Puts `value` in the place of the one before, and tells the observer.
    void set(T value) {
        mainThread_.check();
        value_ = std::move(value);
        observer_.didWrite(field_);
    }

    /// Lets `change` alter the value in place; that is one write.
    template <typename Change>
    void change(Change change) {
        mainThread_.check();
        change(value_);
        observer_.didWrite(field_);
    }

 private:
    Field field_;
    T value_;
    const MainThread& mainThread_;
    StateObserver& observer_;
};

}  // namespace quirebind
