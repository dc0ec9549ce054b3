// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "QuirebindCore/PDFMerger.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Files/AtomicWrite.h"
#include "Platform/Files/FileStamp.h"
#include "Platform/Files/SymlinkResolver.h"
#include "Platform/Files/SystemCall.h"
#include "QuirebindCore/Lenders.h"
#include "QuirebindCore/MergeOn.h"

namespace quirebind::PDFMerger {
namespace {

/// Two spellings of one location have this in common, as far as links and dots make the difference.
URL normalized(SymlinkResolver& resolver, const URL& url) {
    return url.resolvingSymlinksInPath(resolver).standardizedFileURL();
}

struct Existing {
    FileStamp file;
    bool hasOtherNames = false;  ///< Other hard links.
};

std::optional<Existing> regularFileAt(FileSystem& files, const URL& location) {
    struct stat status{};
    const bool isRegular =
        files.linkStatus(AT_FDCWD, std::string(location.path()).c_str(), status) == 0 &&
        S_ISREG(status.st_mode);
    if (!isRegular) return std::nullopt;
    return Existing{.file = FileStamp(status), .hasOtherNames = status.st_nlink > 1};
}

std::optional<FileStamp> folderOf(FileSystem& files, const URL& location) {
    const std::string path(location.path());
    struct stat status{};
    if (files.linkStatus(AT_FDCWD, path.substr(0, path.rfind('/') + 1).c_str(), status) != 0)
        return std::nullopt;
    return FileStamp(status);
}

/// Whether these are one name of one folder; upper and lower case may be the same in it.
bool isSameName(FileSystem& files, const URL& a, const URL& b) {
    const auto isSameLetter = [](char one, char other) {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; };
        return lower(one) == lower(other);
    };
    if (!std::ranges::equal(a.lastPathComponent(), b.lastPathComponent(), isSameLetter))
        return false;
    const auto folderOfA = folderOf(files, a);
    const auto folderOfB = folderOf(files, b);
    return folderOfA && folderOfB && folderOfA->isSameFile(*folderOfB);
}

/// A folder may be mounted at two places, and a system may take upper and lower case for the same:
/// then one file has two locations that do not look alike. A file that has other names keeps its
/// bytes under these when one of them is replaced.
void refuseToOverwrite(FileSystem& files, std::span<const URL> sources, const URL& destination) {
    SymlinkResolver resolver(files);
    const URL target = normalized(resolver, destination);
    const auto replaced = regularFileAt(files, target);
    for (const URL& source : sources) {
        const URL location = normalized(resolver, source);
        if (location == target) throw Failure::sourceOverwrite();
        const auto existing = replaced ? regularFileAt(files, location) : std::nullopt;
        if (!existing || !existing->file.isSameFile(replaced->file)) continue;
        if (!existing->hasOtherNames || isSameName(files, location, target))
            throw Failure::sourceOverwrite();
    }
}

/// The document, which may have changed while it was read.
PDFDocument opened(FileSystem& files, const URL& url) {
    auto document = PDFDocument::open(url, files);
    if (!document) throw Failure::invalid(url.lastPathComponent());
    if (document->isLocked()) throw Failure::locked(url.lastPathComponent());
    if (document->pageCount() < 1) throw Failure::empty();
    return std::move(*document);
}

void refuseChanged(const PDFDocument& document, const URL& url) {
    if (!document.isUnchangedOnDisk()) throw Failure::invalid(url.lastPathComponent());
}

struct Output {
    PDFDocument document = PDFDocument::borrowing();
    Lenders lenders;
};

void appendSource(Output& output, FileSystem& files, const URL& url) {
    const PDFDocument source = opened(files, url);
    const std::size_t pageCount = source.pageCount();
    for (std::size_t index = 0; index < pageCount; ++index) {
        const auto page = source.pageAtIndex(index);
        if (!page || !output.document.insertPage(*page, output.document.pageCount()))
            throw Failure::invalid(url.lastPathComponent());
    }
    refuseChanged(source, url);
    output.lenders.add(source, url);
}

/// All sources in one document. Running out of memory is the failure of the source being copied.
Output joined(FileSystem& files, std::span<const URL> sources) {
    Output output;
    for (const URL& url : sources) {
        try {
            appendSource(output, files, url);
        } catch (const std::bad_alloc&) {
            throw Failure::invalid(url.lastPathComponent());
        }
    }
    return output;
}

/// What is borrowed is looked at for the last time when it is written; the destination is not
/// touched before all of it is known to be what it was.
void write(ByteBuffer data, FileSystem& files, const URL& destination, const Lenders& lenders) {
    const std::size_t all = data.size();
    const auto written = [&](std::size_t count) {
        if (count == all) lenders.refuseChanged(files);
        data.spend(count);
    };
    try {
        writeAtomically(data.bytes(), destination, files, written);
    } catch (const std::system_error& error) {
        lenders.refuseChanged(files);  // a file that was shortened cannot be written from
        // Nor can one that cannot be read any more, which "Bad address" would not tell anybody.
        if (error.code() == std::errc::bad_address) throwSystemError(EIO);
        throw;
    }
}

}  // namespace

PDFDocument openOn(FileSystem& files, const URL& url) {
    PDFDocument document = opened(files, url);
    refuseChanged(document, url);
    return document;
}

void mergeOn(FileSystem& files, std::span<const URL> sources, const URL& destination) {
    try {
        refuseToOverwrite(files, sources, destination);
        Output output = joined(files, sources);
        if (output.document.pageCount() < 1) throw Failure::empty();
        auto data = std::move(output.document).dataRepresentation();
        if (!data) throw Failure::empty();
        write(std::move(*data), files, destination, output.lenders);
    } catch (const std::bad_alloc&) {
        throw Failure::empty();
    }
}

PDFDocument open(const URL& url) {
    try {
        return openOn(FileSystem::native(), url);
    } catch (const std::bad_alloc&) {
        throw Failure::invalid(url.lastPathComponent());
    }
}

void merge(std::span<const URL> sources, const URL& destination) {
    mergeOn(FileSystem::native(), sources, destination);
}

}  // namespace quirebind::PDFMerger
