// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Cross-reference sections, and the scan that takes their place where they are damaged.

#include "Fuzzing/Support/MemoryFileSystem.h"
#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Reading/CrossReferenceReader.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"
#include "Platform/PDF/Reading/Recovery/TableOfFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own
    fuzzing::MemoryFileSystem files(fuzzing::textOf(data, size));
    auto image = SourceImage::open(URL::file("/source.pdf"), files);
    if (!image) return 0;
    try {
        const CrossReference read = CrossReferenceReader(*image).read();
        (void)read.table.find(1);
    } catch (const DamagedDocument&) {
        image->trim();
    }
    try {
        const FileScan scan = FileScanner(*image).scan();
        for (const ScannedObject& object : scan.objects)
            fuzzing::require(object.offset < size, "an object is in the file");
        const ObjectTable table = tableOfFile(scan, size);
        for (const ScannedObject& object : scan.objects) (void)isListed(object, table);
    } catch (const DamagedDocument&) {
        return 0;
    }
    return 0;
}
