// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/FlateEncoder.h"

#include <new>

#include <libdeflate.h>

namespace quirebind {
namespace {

constexpr int kQuick = 1;
/// The lowest level whose output is no larger than that of zlib's default.
constexpr int kThorough = 5;

}  // namespace

void FlateEncoder::Free::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

void FlateEncoder::encode(std::string_view plain, ByteBuffer& out) {
    if (!compressor_) {
        const int level = effort_ == Effort::quick ? kQuick : kThorough;
        compressor_.reset(libdeflate_alloc_compressor(level));
        if (!compressor_) throw std::bad_alloc();
    }
    const std::size_t before = out.size();
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor_.get(), plain.size());
    const auto room = out.extend(bound);
    const std::size_t written = libdeflate_zlib_compress(compressor_.get(), plain.data(),
                                                         plain.size(), room.data(), room.size());
    out.shrink(before + written);  // the bound always suffices
}

}  // namespace quirebind
