// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/Recovery/ScanWindow.h"
#include "Platform/PDF/Reading/SourceImage.h"
#include "Platform/PDF/Syntax/IndirectObject.h"
#include "Platform/PDF/Syntax/Version.h"

namespace quirebind {

/// An object that a scan found: one definition of possibly many.
struct ScannedObject {
    /// What of it makes a difference for how the file is read.
    enum class Kind : std::uint8_t {
        other,                 ///< Anything else, also without a /Type.
        catalog,               ///< /Catalog
        pageTreeNode,          ///< /Pages
        page,                  ///< /Page
        objectStream,          ///< /ObjStm
        crossReferenceStream,  ///< /XRef
    };
    std::uint64_t offset = 0;
    std::uint32_t number = 0;
    std::uint16_t generation = 0;
    Kind kind = Kind::other;  ///< As /Type says.
};

/// What stands in a file, in the order in which it stands there.
struct FileScan {
    std::vector<ScannedObject> objects;
    std::vector<std::uint64_t> trailers;  ///< Where their dictionaries begin.
    std::vector<std::uint64_t> tables;    ///< Where the keyword xref stands.
    std::uint64_t lastStartxref = 0;      ///< 0 for none.
    std::optional<Version> version;       ///< Of the first header, wherever it is.
};

/// Finds all objects of a file without its cross-reference sections, in one pass and in memory that
/// does not grow with the file but with the number of objects.
///
///  1. Outside objects, the keywords obj (behind two numbers), trailer, xref, startxref and %PDF-
///     count, wherever they stand; a comment that begins a line is passed over.
///  2. An object's value is parsed, so that nothing within it is taken for an object. Where it is
///     broken, the search goes on behind the keyword; the object counts all the same.
///  3. The body of a stream is passed over: by /Length, where that is written in the dictionary and
///     leads to the body's end, otherwise by the search for an end.
///  4. Where /Length is a reference it is looked up at the end, and what was found inside a body
///     that is longer than the search had made it, a document within the document say, is dropped.
///
/// Throws DamagedDocument where the file cannot be read, or asks for more work or memory than its
/// size allows. Used for one file, once.
class FileScanner {
 public:
    /// `image` must outlive this.
    explicit FileScanner(SourceImage& image);

    /// Scans the whole file; may be called once. Throws DamagedDocument beyond the limits.
    [[nodiscard]] FileScan scan();

 private:
    /// A stream whose /Length is a reference, as the search for its end found it.
    struct OpenBody {
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
        std::uint32_t length = 0;  ///< The number of the object that says it.
    };
    struct Integer {
        std::uint32_t number = 0;
        std::uint32_t order = 0;  ///< In the file, counting integers.
        std::int64_t value = 0;
    };

    /// Each of these reads from at_ on and moves it.
    void readGap();
    void readComment(std::string_view text);
    void readTrailer();
    void readObject(Reference id);
    [[nodiscard]] std::optional<IndirectObject> parseObject(std::uint64_t offset);
    void note(ScannedObject& object, const IndirectObject& parsed);
    void skipBody(Value dictionary);
    void dropInnerObjects();
    [[nodiscard]] std::uint64_t declaredEnd(const OpenBody& body);

    ScanWindow window_;
    WorkBudget budget_;
    FileScan result_;
    std::vector<OpenBody> openBodies_;
    std::vector<Integer> integers_;
    std::uint64_t at_ = 0;
};

}  // namespace quirebind
