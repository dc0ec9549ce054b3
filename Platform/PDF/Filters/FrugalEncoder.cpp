// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/FrugalEncoder.h"

#include <algorithm>

namespace quirebind {
namespace {

/// What is left of what is allowed: some of what nobody counts, the numbers of objects for
/// instance, is longer than in the sources.
constexpr double kReservedPart = 0.03;
constexpr double kReserved = 1024;

}  // namespace

void FrugalEncoder::encode(std::string_view plain, ByteBuffer& out) {
    const auto plainSize = static_cast<double>(plain.size());
    const double allowed = (1 - kReservedPart) * allowed_ - kReserved;
    const std::size_t begin = out.size();
    const auto written = [&] { return static_cast<double>(out.size() - begin); };
    bool isSmallEnough = written_ + quickRatio_ * plainSize <= allowed;
    if (isSmallEnough) {
        quick_.encode(plain, out);
        quickRatio_ = written() / std::max(plainSize, 1.0);
        isSmallEnough = written_ + written() <= allowed;
    }
    if (!isSmallEnough) {
        out.shrink(begin);
        thorough_.encode(plain, out);
    }
    written_ += written();
}

}  // namespace quirebind
