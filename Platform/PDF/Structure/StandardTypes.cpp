// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/StandardTypes.h"

#include <algorithm>
#include <array>

namespace quirebind {
namespace {

constexpr auto kStandardTypes = std::to_array<std::string_view>({
    "Annot",    "Art",    "BibEntry", "BlockQuote", "Caption", "Code",      "Div",
    "Document", "Figure", "Form",     "Formula",    "H",       "H1",        "H2",
    "H3",       "H4",     "H5",       "H6",         "Index",   "L",         "LBody",
    "LI",       "Lbl",    "Link",     "NonStruct",  "Note",    "P",         "Part",
    "Private",  "Quote",  "RB",       "RP",         "RT",      "Reference", "Ruby",
    "Sect",     "Span",   "TBody",    "TD",         "TFoot",   "TH",        "THead",
    "TOC",      "TOCI",   "TR",       "Table",      "WP",      "WT",        "Warichu",
});
static_assert(std::ranges::is_sorted(kStandardTypes));

}  // namespace

bool isStandardType(std::string_view type) {
    return std::ranges::binary_search(kStandardTypes, type);
}

}  // namespace quirebind
