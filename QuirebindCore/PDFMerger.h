// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <span>

#include "Platform/Files/URL.h"
#include "Platform/PDF/PDFDocument.h"
#include "QuirebindCore/Failure.h"

/// The merge engine: joins PDF files, page by page, into one new file.
///
/// Both operations are stateless and may be called from any thread, also at the same time. They
/// raise PDFMerger::Failure for their own refusals; `merge` raises std::system_error, with the file
/// system's own error, when the result cannot be written. Nothing else leaves them. Running out of
/// memory is `invalid` while a source is opened or copied, and `empty` before and after that.
namespace quirebind::PDFMerger {

/// Opens a source. The document is not locked and has at least one page; it is the caller's.
/// Raises `invalid`, `locked` or `empty`.
[[nodiscard]] PDFDocument open(const URL& url);

/// Joins all pages of all `sources`, in their order, into a new file at `destination`, which is
/// written in one atomic step. An existing file there is replaced, but never one of the sources:
/// that is `sourceOverwrite`. A source that is listed twice is copied twice. Sources are read as
/// they are now; one that changes meanwhile is `invalid`. On any failure nothing is written.
void merge(std::span<const URL> sources, const URL& destination);

}  // namespace quirebind::PDFMerger
