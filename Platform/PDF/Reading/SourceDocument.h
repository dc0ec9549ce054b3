// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Files/FileStamp.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/PageTree.h"
#include "Platform/PDF/Syntax/Version.h"

namespace quirebind {

/// Is told when a source is about to close, while it can still be read.
class SourceObserver {
 public:
    SourceObserver() = default;
    SourceObserver(const SourceObserver&) = delete;
    SourceObserver& operator=(const SourceObserver&) = delete;
    SourceObserver(SourceObserver&&) = delete;
    SourceObserver& operator=(SourceObserver&&) = delete;
    virtual ~SourceObserver() = default;
    /// Called on the thread that closes the source, from its destructor: once, and the last time
    /// that it may be used.
    virtual void sourceWillClose() noexcept = 0;
};

/// What to do where a file is not as it says that it is.
enum class Recovery : std::uint8_t {
    attempted,  ///< It is read by what stands in it.
    refused,    ///< It is damaged: for finding out whether a file is sound.
};

/// An opened document: the reading side of PDFDocument. Used by one thread.
class SourceDocument {
 public:
    /// Throws DamagedDocument where the file cannot be read as a PDF.
    SourceDocument(const URL& url, FileSystem& files, Recovery recovery = Recovery::attempted);
    /// The same of a file that is open to be read already, wherever it is.
    SourceDocument(FileDescriptor file, FileSystem& files);
    SourceDocument(const SourceDocument&) = delete;
    SourceDocument& operator=(const SourceDocument&) = delete;
    SourceDocument(SourceDocument&&) = delete;
    SourceDocument& operator=(SourceDocument&&) = delete;
    ~SourceDocument();

    /// Different for every document ever opened in this process, so that another document at the
    /// same address or of the same URL is never taken for this one.
    [[nodiscard]] std::uint64_t serial() const { return serial_; }
    /// Where the file is; nothing where it was open already.
    [[nodiscard]] const std::optional<URL>& url() const { return url_; }
    /// Whether it does not open without a password. Its version is that of its header then.
    [[nodiscard]] bool isLocked() const { return locked_; }
    /// The header's or the catalog's, whichever is higher (ISO 32000-2, 7.5.2).
    [[nodiscard]] Version version() const { return version_; }
    /// Where the newest cross-reference section is; nothing where the file was read without any.
    [[nodiscard]] std::optional<std::uint64_t> sectionOffset() const { return sectionOffset_; }
    /// The trailer dictionary, as text; empty where the file was read without any.
    [[nodiscard]] const std::string& trailer() const { return trailer_; }
    /// Empty while the document is locked.
    [[nodiscard]] const PageTree& pageTree() const { return pageTree_; }
    /// The catalog; without entries while the document is locked.
    [[nodiscard]] const Catalog& catalog() const { return catalog_; }
    /// Objects that stand for the document as a whole; no page needs them.
    [[nodiscard]] const std::vector<std::uint32_t>& documentObjects() const {
        return documentObjects_;
    }
    /// Its objects; a part of this.
    [[nodiscard]] ObjectReader& reader() { return *reader_; }

    /// Whether the file on disk is still what was opened.
    [[nodiscard]] bool unchanged() const { return reader_->image().unchanged(); }
    /// See PDFDocument::lentFile.
    [[nodiscard]] std::optional<FileStamp> lentFile() const { return reader_->image().lentFile(); }

    /// Lets `observer` be told of the end, if it still lives then.
    void addObserver(std::weak_ptr<SourceObserver> observer);

 private:
    void readStructure(SourceImage image, Recovery recovery);
    bool unlock(Value trailer);
    void rebuildStructure(SourceImage image);
    void readPages(Value trailer, PageTree::Damage damage);

    std::uint64_t serial_;
    std::optional<URL> url_;
    bool locked_ = false;
    Version version_;
    std::optional<std::uint64_t> sectionOffset_;
    std::string trailer_;
    Catalog catalog_;
    std::vector<std::uint32_t> documentObjects_;
    PageTree pageTree_;
    std::unique_ptr<ObjectReader> reader_;
    std::vector<std::weak_ptr<SourceObserver>> observers_;
};

}  // namespace quirebind
