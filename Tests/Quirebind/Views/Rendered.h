// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace quirebind::viewtest {

/// How much two colours differ in brightness, from 1 to 21 (WCAG 2.1). Counted here once more, so
/// that a mistake in the program's own counting is seen.
[[nodiscard]] inline double contrastOf(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double channel) {
            return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// What a widget looks like, enlarged, so that even thin strokes have pixels that are all theirs.
class Rendered {
 public:
    /// Draws the widget as it is now; what it leaves out is magenta.
    explicit Rendered(QWidget& widget) : picture_(widget.size() * kScale, QImage::Format_RGB32) {
        picture_.setDevicePixelRatio(kScale);
        picture_.fill(Qt::magenta);
        widget.render(&picture_);
    }

    /// The contrast between what most of a part looks like, and what differs most from it. A few
    /// pixels of some colour do not count: they are where two others meet.
    [[nodiscard]] double contrastIn(const QRect& part) const {
        std::unordered_map<QRgb, int> colours;
        each(part, [&](int x, int y) { ++colours[picture_.pixel(x, y)]; });
        const QRgb ground = std::ranges::max_element(colours, {}, [](const auto& colour) {
                                return colour.second;
                            })->first;
        double most = 1;
        for (const auto& [colour, count] : colours)
            if (count >= kFewest) most = std::max(most, contrastOf(QColor(colour), QColor(ground)));
        return most;
    }

    /// The area in which this differs from `before` by at least that contrast to what was there, in
    /// the widget's own pixels.
    [[nodiscard]] double changedBy(double least, const Rendered& before, const QRect& part) const {
        std::unordered_map<std::uint64_t, int> changes;
        each(part, [&](int x, int y) {
            const QRgb then = before.picture_.pixel(x, y);
            const QRgb now = picture_.pixel(x, y);
            if (then != now) ++changes[std::uint64_t{then} << 32 | now];
        });
        int changed = 0;
        for (const auto& [change, count] : changes) {
            const QColor then(static_cast<QRgb>(change >> 32));
            const QColor now(static_cast<QRgb>(change & 0xffffffffU));
            if (contrastOf(then, now) >= least) changed += count;
        }
        return double(changed) / (kScale * kScale);
    }

    /// The pixels themselves, several to each of the widget's own.
    [[nodiscard]] const QImage& picture() const { return picture_; }

 private:
    static constexpr int kScale = 4;
    static constexpr int kFewest = 24;

    void each(const QRect& part, auto operation) const {
        const QRect area = QRect(part.topLeft() * kScale, part.size() * kScale) & picture_.rect();
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x) operation(x, y);
    }

    QImage picture_;
};

}  // namespace quirebind::viewtest
