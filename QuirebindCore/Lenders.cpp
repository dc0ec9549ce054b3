// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "QuirebindCore/Lenders.h"

#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Files/SymlinkResolver.h"
#include "Platform/Files/SystemCall.h"
#include "QuirebindCore/Failure.h"

namespace quirebind {

void Lenders::add(const PDFDocument& source, const URL& url) {
    if (const auto file = source.lentFile()) lenders_.push_back({.url = url, .file = *file});
}

void Lenders::refuseChanged(FileSystem& files) const {
    SymlinkResolver resolver(files);
    for (const Lender& lender : lenders_) {
        const std::string path(lender.url.resolvingSymlinksInPath(resolver).path());
        struct stat status{};
        const int result =
            uninterrupted([&] { return files.linkStatus(AT_FDCWD, path.c_str(), status); });
        if (result < 0) continue;
        const FileStamp now(status);
        if (now.isSameFile(lender.file) && now != lender.file)
            throw PDFMerger::Failure::invalid(lender.url.lastPathComponent());
    }
}

}  // namespace quirebind
