// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/Reference.h"

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"

namespace quirebind {
namespace {

/// What "N G R" names. A number that no table can list is still a reference: to nothing.
Reference referenceTo(std::uint64_t number, std::uint64_t generation) {
    return {number > limits::kObjectNumber ? 0 : static_cast<std::uint32_t>(number),
            generation > 65535 ? 65536 : static_cast<std::uint32_t>(generation)};
}

/// What nearly all references have behind their number.
constexpr std::string_view kUsualRest = " 0 R";

/// Whether that stands at `at`, and nothing that goes on.
inline bool isUsualRest(std::string_view text, std::size_t at) {
    const std::size_t end = at + kUsualRest.size();
    if (end > text.size() || text[end - 1] != 'R') return false;  // tells nearly always
    return text.substr(at, kUsualRest.size()) == kUsualRest &&
           (end == text.size() || !isRegular(text[end]));
}

}  // namespace

bool readReference(std::string_view text, std::size_t& at, Reference& reference,
                   std::size_t& looked) {
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    looked = at;
    if (!readUnsigned(text, looked, number)) return false;
    const std::size_t gap = looked;
    if (isUsualRest(text, gap)) {
        looked = gap + kUsualRest.size();
        at = looked;
        reference = referenceTo(number, 0);
        return true;
    }
    looked = skipWhite(text, gap);
    if (looked == gap || looked >= text.size() || !isDigit(text[looked])) return false;
    if (!readUnsigned(text, looked, generation)) return false;
    const std::size_t secondGap = looked;
    looked = skipWhite(text, secondGap);
    if (looked == secondGap || looked >= text.size() || text[looked] != 'R') return false;
    ++looked;
    if (looked < text.size() && isRegular(text[looked])) return false;
    reference = referenceTo(number, generation);
    at = looked;
    return true;
}

}  // namespace quirebind
