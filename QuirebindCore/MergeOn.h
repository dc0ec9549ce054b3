// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <span>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/PDFDocument.h"

namespace quirebind::PDFMerger {

/// PDFMerger::open on a given file system, which must outlive the document, so that the failures of
/// files can be tried. Running out of memory is std::bad_alloc here.
[[nodiscard]] PDFDocument openOn(FileSystem& files, const URL& url);
/// PDFMerger::merge on a given file system.
void mergeOn(FileSystem& files, std::span<const URL> sources, const URL& destination);

}  // namespace quirebind::PDFMerger
