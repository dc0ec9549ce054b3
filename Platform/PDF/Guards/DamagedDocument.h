// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <stdexcept>

namespace quirebind {

/// Thrown inside the document library when a source breaks the syntax, exceeds a limit, or cannot
/// be read from disk. It never leaves PDFDocument. The text is for developers; users see none of
/// it.
class DamagedDocument : public std::runtime_error {
 public:
    /// From a text that says what is wrong.
    using std::runtime_error::runtime_error;
};

}  // namespace quirebind
