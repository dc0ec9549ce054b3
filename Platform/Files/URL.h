// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace quirebind {

class FileSystem;
class SymlinkResolver;

/// The location of a document: a file's path, or another URL (a web link, say).
///
/// A file URL keeps its path exactly as it was given: bytes, not text, so any name that the file
/// system allows. Any other URL is kept as it is, never fetched, and simply cannot be opened.
/// A plain value; two URLs are equal when they are of the same kind and have the same bytes.
class URL {
 public:
    /// The file URL of `path`, absolute or relative to the working folder.
    [[nodiscard]] static URL file(std::string path);

    /// Reads a URL from its written form, such as one line of a text/uri-list. "file:" URLs become
    /// file URLs with their percent escapes undone, whichever host they name, without query and
    /// fragment; everything else is kept as it is, also what has no scheme at all. Something that
    /// only begins like a percent escape stands for itself.
    [[nodiscard]] static URL parse(std::string_view text);

    /// Whether it is a file's path, and no other URL.
    [[nodiscard]] bool isFileURL() const { return isFile_; }

    /// The path of a file URL, as given; empty for any other URL.
    [[nodiscard]] std::string_view path() const;

    /// The written form, which parse() reads back: of a file URL "file://" (before a relative path
    /// "file:") and the escaped path, of another URL its own text.
    [[nodiscard]] std::string absoluteString() const;

    /// The name after the last separator, trailing separators left aside; "/" for the root. Of
    /// another URL, the last component of its path with percent escapes undone, without query and
    /// fragment.
    [[nodiscard]] std::string lastPathComponent() const;

    /// The absolute path with every symbolic link in it followed. Where a component does not exist
    /// or cannot be read, the rest of the path stays as it is, so that the location of a file yet
    /// to be written remains usable. Other URLs are returned unchanged.
    [[nodiscard]] URL resolvingSymlinksInPath() const;

    /// The same, asking `files`. The working folder is still the process's own.
    [[nodiscard]] URL resolvingSymlinksInPath(FileSystem& files) const;
    /// The same, with a resolver that is used for several paths.
    [[nodiscard]] URL resolvingSymlinksInPath(SymlinkResolver& resolver) const;

    /// The path without ".", ".." and empty components, in letters only: the file system is not
    /// asked. A relative path stays relative and keeps the ".." that it begins with; "." is what is
    /// left of one that leads nowhere. Other URLs are returned unchanged.
    [[nodiscard]] URL standardizedFileURL() const;

    /// The same kind and the same bytes; the file system is not asked.
    friend bool operator==(const URL&, const URL&) = default;

 private:
    URL(bool isFile, std::string text);

    bool isFile_ = true;
    std::string text_;  // the path of a file URL, else the whole URL
};

}  // namespace quirebind
