// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PagePictures.h"

#include <iterator>

namespace quirebind {

namespace {

std::size_t bytesOf(const QImage& picture) {
    return static_cast<std::size_t>(picture.sizeInBytes());
}

}  // namespace

void PagePictures::clear() {
    entries_.clear();
    bytes_ = 0;
}

QImage PagePictures::find(std::size_t page) const {
    const auto entry = entries_.find(page);
    return entry == entries_.end() ? QImage() : entry->second.picture;
}

bool PagePictures::isSettled(std::size_t page, QSize pixels) const {
    const auto entry = entries_.find(page);
    return entry != entries_.end() && entry->second.pixels == pixels;
}

void PagePictures::put(std::size_t page, const QImage& picture, std::size_t centre) {
    if (const auto old = entries_.find(page); old != entries_.end()) remove(old);
    entries_[page] = {picture, picture.size()};
    bytes_ += bytesOf(picture);
    while (bytes_ > kMostBytes && entries_.size() > 1) {
        const auto first = entries_.begin();
        const auto last = std::prev(entries_.end());
        const bool firstIsFurther =
            centre > first->first &&
            (last->first <= centre || centre - first->first > last->first - centre);
        remove(firstIsFurther ? first : last);
    }
}

void PagePictures::putFailure(std::size_t page, QSize pixels) {
    entries_[page].pixels = pixels;
}

void PagePictures::forgetFailures() {
    std::erase_if(entries_, [](const auto& entry) { return entry.second.picture.isNull(); });
    for (auto& [page, entry] : entries_) entry.pixels = entry.picture.size();
}

void PagePictures::remove(std::map<std::size_t, Entry>::iterator entry) {
    bytes_ -= bytesOf(entry->second.picture);
    entries_.erase(entry);
}

}  // namespace quirebind
