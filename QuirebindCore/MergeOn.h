// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/Files/FileSystem.h"
#include "QuirebindCore/PDFMerger.h"

namespace quirebind::PDFMerger {

/// The engine's operations on a given file system, so that its failures can be tried.
[[nodiscard]] PDFDocument openOn(FileSystem& files, const URL& url);
void mergeOn(FileSystem& files, std::span<const URL> sources, const URL& destination);

}  // namespace quirebind::PDFMerger
