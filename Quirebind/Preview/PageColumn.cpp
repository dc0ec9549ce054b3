// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PageColumn.h"

#include <algorithm>
#include <utility>

namespace quirebind {

namespace {

constexpr double kLongestSide = 100;  // in shortest ones
constexpr double kNarrowestPage = 40;

PageSize sensible(PageSize size) {
    size.width = std::max(size.width, size.height / kLongestSide);
    size.height = std::max(size.height, size.width / kLongestSide);
    return size;
}

}  // namespace

void PageColumn::setSizes(std::vector<PageSize> sizes) {
    sizes_ = std::move(sizes);
    std::ranges::transform(sizes_, sizes_.begin(), sensible);
    layOut();
}

void PageColumn::setSizes(std::size_t first, const std::vector<PageSize>& sizes) {
    for (std::size_t i = 0; i < sizes.size() && first + i < sizes_.size(); ++i)
        sizes_[first + i] = sensible(sizes[i]);
    layOut();
}

void PageColumn::setWidth(double width) {
    width_ = width;
    if (widest_ > 0) scale_ = std::max(width_ - 2 * kMargin, kNarrowestPage) / widest_;
}

void PageColumn::layOut() {
    tops_.resize(sizes_.size() + 1);
    double top = 0;
    widest_ = 0;
    for (std::size_t i = 0; i < sizes_.size(); ++i) {
        tops_[i] = top;
        top += sizes_[i].height;
        widest_ = std::max(widest_, sizes_[i].width);
    }
    tops_.back() = top;
    setWidth(width_);
}

double PageColumn::height() const {
    if (sizes_.empty()) return 0;
    return pageTop(count() - 1) + pageHeight(count() - 1) + kMargin;
}

double PageColumn::pageTop(std::size_t page) const {
    return kMargin + tops_[page] * scale_ + kGap * static_cast<double>(page);
}

double PageColumn::pageLeft(std::size_t page) const {
    return (width_ - pageWidth(page)) / 2;
}

double PageColumn::pageWidth(std::size_t page) const {
    return sizes_[page].width * scale_;
}

double PageColumn::pageHeight(std::size_t page) const {
    return sizes_[page].height * scale_;
}

std::size_t PageColumn::pageAt(double y) const {
    std::size_t first = 0;
    std::size_t last = count();
    while (last - first > 1) {
        const std::size_t middle = first + (last - first) / 2;
        (pageTop(middle) <= y ? first : last) = middle;
    }
    return first;
}

PageColumn::Anchor PageColumn::anchorAt(double y) const {
    if (sizes_.empty()) return {};
    const std::size_t page = pageAt(y);
    return {page, (y - pageTop(page)) / (pageHeight(page) + kGap)};
}

double PageColumn::positionOf(const Anchor& anchor) const {
    if (anchor.page >= count()) return 0;
    return pageTop(anchor.page) + anchor.fraction * (pageHeight(anchor.page) + kGap);
}

}  // namespace quirebind
