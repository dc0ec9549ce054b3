// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Writing/ObjectPacker.h"

namespace quirebind {
namespace {

constexpr std::size_t kMostMembers = 200;
constexpr std::size_t kMostBytes = std::size_t{256} << 10U;

}  // namespace

bool ObjectPacker::full() const {
    return members_.size() >= kMostMembers || values_.size() >= kMostBytes;
}

std::uint32_t ObjectPacker::add(std::uint32_t number) {
    if (!members_.empty()) values_.append("\n");
    members_.push_back({number, values_.size()});
    return static_cast<std::uint32_t>(members_.size() - 1);
}

void ObjectPacker::writeTo(ByteBuffer& out, FrugalEncoder& encoder) {
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
    encoder.encode(plain.text(), body);

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

}  // namespace quirebind
