// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ObjectPacker.h"

namespace quirebind {
namespace {

constexpr std::size_t kMostMembers = 200;
constexpr std::size_t kMostBytes = std::size_t{256} << 10U;

/// What object streams leave of what they may take: some of what is not counted, the
/// cross-reference stream for instance, may be longer than in the sources.
constexpr double kReservedPart = 0.03;
constexpr double kReserved = 1024;

}  // namespace

bool ObjectPacker::full() const {
    return members_.size() >= kMostMembers || values_.size() >= kMostBytes;
}

std::uint32_t ObjectPacker::add(std::uint32_t number) {
    if (!members_.empty()) values_.append("\n");
    members_.push_back({number, values_.size()});
    return static_cast<std::uint32_t>(members_.size() - 1);
}

void ObjectPacker::writeTo(ByteBuffer& out) {
    ByteBuffer plain;
    for (const Member& member : members_) {
        plain.append(std::uint64_t{member.number});
        plain.append(" ");
        plain.append(std::uint64_t{member.offset});
        plain.append("\n");
    }
    const std::size_t first = plain.size();
    plain.append(values_.text());
    ByteBuffer body;
    compress(plain.text(), body);

    out.append("<</Type/ObjStm/N ");
    out.append(std::uint64_t{members_.size()});
    out.append("/First ");
    out.append(std::uint64_t{first});
    out.append("/Filter/FlateDecode/Length ");
    out.append(std::uint64_t{body.size()});
    out.append(">>stream\n");
    out.append(body.text());
    out.append("\nendstream");
    members_.clear();
    values_.shrink(0);
}

void ObjectPacker::compress(std::string_view plain, ByteBuffer& body) {
    const auto size = static_cast<double>(plain.size());
    const double allowed = (1 - kReservedPart) * allowed_ - kReserved;
    if (written_ + quickRatio_ * size <= allowed) {
        quick_.encode(plain, body);
        quickRatio_ = static_cast<double>(body.size()) / size;
    }
    const bool isSmallEnough =
        body.size() != 0 && written_ + static_cast<double>(body.size()) <= allowed;
    if (!isSmallEnough) {
        body.shrink(0);
        thorough_.encode(plain, body);
    }
    written_ += static_cast<double>(body.size());
}

}  // namespace quirebind
