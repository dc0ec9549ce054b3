// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/FilePieces.h"

namespace quirebind {

std::span<char> FilePieces::allocate(std::size_t size, bool isInOrder) {
    const std::span piece(static_cast<char*>(memory_.allocate(size, 1)), size);
    held_ += size;
    ++count_;
    if (isInOrder) ++inOrder_;
    return piece;
}

void FilePieces::release() {
    memory_.release();
    held_ = 0;
    if (count_ >= kEnough) count_ = inOrder_ = 0;
}

}  // namespace quirebind
