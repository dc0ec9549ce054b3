// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/MappedText.h"

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

void MappedText::copyTo(std::size_t end, Role role, ByteBuffer& out) {
    for (; next_ < references_.size() && references_[next_].begin < end; ++next_) {
        const FoundReference& found = references_[next_];
        out.append(text_.substr(at_, found.begin - at_));
        at_ = found.end;
        if (const auto number = map_.map(found.reference, role)) {
            appendReference(*number, out);
        } else {
            out.append("null");
        }
    }
    out.append(text_.substr(at_, end - at_));
    at_ = end;
}

void MappedText::skipTo(std::size_t end) {
    at_ = end;
    while (next_ < references_.size() && references_[next_].begin < end) ++next_;
}

std::size_t MappedText::beginOf(Value part) const {
    return static_cast<std::size_t>(part.text().data() - text_.data());
}

}  // namespace quirebind
