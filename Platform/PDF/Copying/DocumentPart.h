// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

namespace quirebind {

/// Something that belongs to all copied pages of one source together, and that the sources of an
/// output share: their form, their layers, their structure.
class DocumentPart {
 public:
    DocumentPart() = default;
    DocumentPart(const DocumentPart&) = delete;
    DocumentPart& operator=(const DocumentPart&) = delete;
    DocumentPart(DocumentPart&&) = delete;
    DocumentPart& operator=(DocumentPart&&) = delete;
    virtual ~DocumentPart() = default;

    /// Adds to the output what its pages need of this. Called once, when all of the source's pages
    /// are copied and the source can still be read. What it queues is copied afterwards; of that
    /// an object that is damaged becomes null. Throws DamagedDocument only where the source is
    /// exhausted; other damage means that there is no such part.
    virtual void finish() = 0;
};

}  // namespace quirebind
