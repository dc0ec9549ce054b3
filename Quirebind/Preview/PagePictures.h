// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSize>
#include <cstddef>
#include <map>

namespace quirebind {

/// The drawn pages of one document that are kept, the ones nearest to what is looked at. Bounded:
/// pages far from it go when there are too many bytes.
class PagePictures {
 public:
    /// The most bytes of all pictures together, unless there is but one.
    static constexpr std::size_t kMostBytes = std::size_t{128} << 20U;

    /// Forgets everything: there is another document.
    void clear();

    /// The picture of a page at whatever size it was last drawn; a null image where there is none.
    [[nodiscard]] QImage find(std::size_t page) const;
    /// Whether the page is there at that size, or cannot be drawn at it.
    [[nodiscard]] bool isSettled(std::size_t page, QSize pixels) const;

    /// Keeps a picture; those furthest from the page `centre` give way.
    void put(std::size_t page, const QImage& picture, std::size_t centre);
    /// The page cannot be drawn at that size: an older picture stays, or none.
    void putFailure(std::size_t page, QSize pixels);
    /// What could not be drawn may be tried anew.
    void forgetFailures();

    /// What the kept pictures take, in bytes of their pixels.
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

 private:
    struct Entry {
        QImage picture;
        QSize pixels;  // that it was drawn at, or failed to be
    };

    void remove(std::map<std::size_t, Entry>::iterator entry);

    std::map<std::size_t, Entry> entries_;
    std::size_t bytes_ = 0;
};

}  // namespace quirebind
