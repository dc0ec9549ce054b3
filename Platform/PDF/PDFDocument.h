// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/FileStamp.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/Links/PageLink.h"
#include "Platform/PDF/Reading/PageSize.h"

namespace quirebind {

class FileDescriptor;
class FileSystem;
class LinkReader;
class SourceDocument;

/// A page of an opened document. A plain value that keeps nothing open: once its document is closed
/// it can no longer be inserted anywhere.
class PDFPage {
 private:
    friend class PDFDocument;
    PDFPage(std::weak_ptr<SourceDocument> document, std::size_t index)
        : document_(std::move(document)), index_(index) {}

    std::weak_ptr<SourceDocument> document_;
    std::size_t index_ = 0;
};

/// A PDF document: either opened from a file, and then only read, or created empty, and then only
/// written to, by inserting pages of opened ones.
///
/// Move-only; the destructor closes the file. One thread at a time may use a document, and
/// documents whose pages have been inserted into one another count as one. Anything that needs
/// memory may throw std::bad_alloc. Inserting pages of forms throws std::system_error where the
/// system gives no random numbers. Nothing else is thrown.
class PDFDocument {
 public:
    /// An empty document, to insert pages into.
    PDFDocument();
    /// One that does not copy long streams, such as scanned pages, but borrows them from the files
    /// of the documents whose pages are inserted, where the system can do that. From then on until
    /// its bytes have been written, nobody may write to these files (`lentFile` tells whether that
    /// happened). Where one may have been shortened, the bytes must not be looked at but through
    /// ByteBuffer::view or by write(2): that would raise a signal.
    [[nodiscard]] static PDFDocument borrowing();
    /// Takes the document over. `other` may then only be destroyed or assigned to.
    PDFDocument(PDFDocument&& other) noexcept;
    /// Likewise; the document that was here before is closed.
    PDFDocument& operator=(PDFDocument&& other) noexcept;
    PDFDocument(const PDFDocument&) = delete;
    PDFDocument& operator=(const PDFDocument&) = delete;
    ~PDFDocument();

    /// Opens the document at `url`; nothing when there is no file that can be read as a PDF.
    [[nodiscard]] static std::optional<PDFDocument> open(const URL& url);
    /// The same, on a given file system, which must outlive the document.
    [[nodiscard]] static std::optional<PDFDocument> open(const URL& url, FileSystem& files);

    /// The same of a file that is open to be read already; its descriptor is the document's from
    /// then on.
    [[nodiscard]] static std::optional<PDFDocument> open(FileDescriptor file, FileSystem& files);

    /// Where an opened document comes from; nothing where its file was open already.
    [[nodiscard]] std::optional<URL> documentURL() const;

    /// Whether the document is encrypted and does not open with the empty password
    /// (ISO 32000-2, 7.6). Nothing else can be learnt of it then.
    [[nodiscard]] bool isLocked() const;

    /// The pages of an opened document, or those that were inserted into a created one; none where
    /// it is locked.
    [[nodiscard]] std::size_t pageCount() const;

    /// Whether an opened document has a form to be filled in (12.7.3); false where it is locked.
    [[nodiscard]] bool hasForm() const;

    /// Page `index`, counting from 0, of an opened document; nothing beyond its pages.
    [[nodiscard]] std::optional<PDFPage> pageAtIndex(std::size_t index) const;

    /// How large page `index` of an opened document is shown: its crop box, turned upright
    /// (14.11.2). Nothing beyond its pages.
    [[nodiscard]] std::optional<PageSize> pageSize(std::size_t index) const;

    /// The links on page `index` of an opened document that lead to a place inside it, whether
    /// there is such a place or not. None beyond its pages.
    [[nodiscard]] std::vector<PageLink> pageLinks(std::size_t index) const;

    /// Where a link of this document leads to; nothing where there is no such place.
    [[nodiscard]] std::optional<PagePosition> positionOf(const PageLink& link) const;

    /// Inserts a copy of `page`, with all that the page needs, so that it becomes page `index` of
    /// this document (at most pageCount, which appends). What belongs to the page's document as a
    /// whole, its outline and metadata for instance, stays behind. References from one page to
    /// another lead to the copy of that page, in whatever order they are inserted; to a page that
    /// is never inserted, they are dead. Inserting a page again makes another copy of it and begins
    /// another copy of its document.
    ///
    /// False where that cannot be: the page's document is closed or damaged, `index` is beyond the
    /// end, or this document was opened from a file. A document that a damaged page was inserted
    /// into cannot be serialised any more.
    [[nodiscard]] bool insertPage(const PDFPage& page, std::size_t index);

    /// Whether the file of an opened document is still what it was when it was opened.
    [[nodiscard]] bool isUnchangedOnDisk() const;

    /// What the file of an opened document was, if a `borrowing` one has borrowed from it.
    [[nodiscard]] std::optional<FileStamp> lentFile() const;

    /// The created document as the bytes of a PDF file, the same for the same insertions. The
    /// document is given up for it: there is one buffer, and it changes hands. Nothing for an
    /// opened document, or where an insertion failed.
    [[nodiscard]] std::optional<ByteBuffer> dataRepresentation() &&;

 private:
    struct State;
    [[nodiscard]] LinkReader& linkReader() const;
    explicit PDFDocument(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace quirebind
