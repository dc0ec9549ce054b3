// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "Platform/Files/FileStamp.h"
#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/PDFDocument.h"

namespace quirebind {

/// The sources that the output in memory has borrowed long streams from. Until these are written,
/// nobody may write to such a source: the output would hold part of what it was and part of what it
/// is. Who replaces the file by another, or removes it, leaves what was lent as it was. Used by one
/// thread.
class Lenders {
 public:
    /// `source`, which is at `url` and as it was opened, is one of them if it has lent anything.
    void add(const PDFDocument& source, const URL& url);

    /// Throws Failure::invalid for a source that has been written to since it was opened.
    void refuseChanged(FileSystem& files) const;

 private:
    struct Lender {
        URL url;
        FileStamp file;
    };

    std::vector<Lender> lenders_;
};

}  // namespace quirebind
