# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# What other programs may include: these are installed, and documented.
set(QUIREBIND_HEADERS
    QuirebindCore/PDFMerger.h
    QuirebindCore/Failure.h
    Platform/PDF/PDFDocument.h
    Platform/PDF/Links/PageLink.h
    Platform/PDF/Reading/PageSize.h
    Platform/Files/URL.h
    Platform/Files/ByteBuffer.h
    Platform/Files/FileStamp.h
    Platform/Files/GrowingMemory.h)
