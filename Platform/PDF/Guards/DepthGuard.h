// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

namespace quirebind {

/// Counts how deep in one another the calls are in which one of these lives.
class DepthGuard {
 public:
    /// `depth` must outlive this.
    explicit DepthGuard(int& depth) : depth_(depth) { ++depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
    DepthGuard(DepthGuard&&) = delete;
    DepthGuard& operator=(DepthGuard&&) = delete;
    ~DepthGuard() { --depth_; }

 private:
    int& depth_;
};

}  // namespace quirebind
