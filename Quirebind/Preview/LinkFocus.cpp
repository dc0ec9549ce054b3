// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/LinkFocus.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace quirebind {

namespace {

/// Downwards, and from left to right in a line. Of those that begin at one point only one is ever
/// reached.
auto place(const LinkFocus::Link& link) {
    return std::tuple(link.page, link.area.y, link.area.x);
}

}  // namespace

bool LinkFocus::move(std::vector<Link> inSight, bool forwards) {
    std::ranges::sort(inSight, {}, place);
    const auto [first, last] = current_
                                   ? std::ranges::equal_range(inSight, place(*current_), {}, place)
                                   : std::ranges::subrange(inSight.end(), inSight.end());
    const bool anew = first == last;  // from none
    current_.reset();
    if (inSight.empty()) return false;
    if (forwards) {
        const auto next = anew ? inSight.begin() : last;
        if (next != inSight.end()) current_ = std::move(*next);
    } else {
        const auto end = anew ? inSight.end() : first;
        if (end != inSight.begin()) current_ = std::move(*std::prev(end));
    }
    return current_.has_value();
}

}  // namespace quirebind
