// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <string>

#include "Platform/Files/URL.h"
#include "Platform/PDF/PDFDocument.h"

/// The merge engine: joins PDF files, page by page, into one new file.
///
/// Both operations are stateless and may be called from any thread, also at the same time. They
/// raise PDFMerger::Failure for their own refusals; `merge` raises std::system_error, with the file
/// system's own error, when the result cannot be written. Nothing else leaves them. Running out of
/// memory is `invalid` while a source is opened or copied, and `empty` before and after that.
namespace quirebind::PDFMerger {

/// Why the engine refuses. A plain value.
class Failure : public std::exception {
 public:
    /// What a caller may tell apart.
    enum class Kind : std::uint8_t {
        invalid,          ///< A source cannot be read as a PDF, or not all of it can.
        locked,           ///< A source needs a password.
        empty,            ///< There is no page: in a source, or in the result.
        sourceOverwrite,  ///< The destination is one of the sources.
    };

    /// A failure of each kind. `name` is the file name of the source, the last component of its
    /// path.
    /// @{
    [[nodiscard]] static Failure invalid(std::string name);
    [[nodiscard]] static Failure locked(std::string name);
    [[nodiscard]] static Failure empty();
    [[nodiscard]] static Failure sourceOverwrite();
    /// @}

    /// Which of the kinds it is.
    [[nodiscard]] Kind kind() const { return kind_; }
    /// The file name of the source; empty for the kinds that are about no particular one.
    [[nodiscard]] const std::string& name() const { return name_; }

    /// The sentence for the user, in English. It contains the name byte for byte.
    [[nodiscard]] const std::string& errorDescription() const { return description_; }
    /// The same, for whoever catches a std::exception.
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
    Failure(Kind kind, std::string name, std::string description);

    Kind kind_;
    std::string name_;
    std::string description_;
};

/// Opens a source. The document is not locked and has at least one page; it is the caller's.
/// Raises `invalid`, `locked` or `empty`.
[[nodiscard]] PDFDocument open(const URL& url);

/// Joins all pages of all `sources`, in their order, into a new file at `destination`, which is
/// written in one atomic step. An existing file there is replaced, but never one of the sources:
/// that is `sourceOverwrite`. A source that is listed twice is copied twice. Sources are read as
/// they are now; one that changes meanwhile is `invalid`. On any failure nothing is written.
void merge(std::span<const URL> sources, const URL& destination);

}  // namespace quirebind::PDFMerger
