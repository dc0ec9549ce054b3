// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/FlateEncoder.h"

#include <new>

#include <libdeflate.h>

namespace quirebind {
namespace {

/// What is compressed here came out of object streams that other programs compressed, with zlib's
/// default as a rule. This level is the fastest whose output is then no larger.
constexpr int kLevel = 5;

}  // namespace

void FlateEncoder::Free::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

FlateEncoder::FlateEncoder() : compressor_(libdeflate_alloc_compressor(kLevel)) {
    if (!compressor_) throw std::bad_alloc();
}

void FlateEncoder::encode(std::string_view plain, ByteBuffer& out) {
    const std::size_t before = out.size();
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor_.get(), plain.size());
    const auto room = out.extend(bound);
    const std::size_t written = libdeflate_zlib_compress(compressor_.get(), plain.data(),
                                                         plain.size(), room.data(), room.size());
    out.shrink(before + written);  // the bound always suffices
}

}  // namespace quirebind
