// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QString>
#include <QWidget>
#include <cstdint>

namespace quirebind {

/// What a symbol is drawn in.
enum class Tint : std::uint8_t {
    text,              ///< the colour of a button's text, in each of its states
    secondary,         ///< the colour of secondary text
    secondaryOnPaper,  ///< the same on a page, which is white in every scheme
    accent,            ///< teal
};

/// One of our own symbols, drawn in one colour at whatever size and scale it is asked for. The
/// colour is that of the palette at the moment of drawing. Names are those of the files in
/// Resources/symbols.
[[nodiscard]] QIcon symbol(const QString& name, Tint tint);

/// Shows a symbol as high as the user's font, or some times as high. It is for the eye only:
/// assistive technology is told what stands beside it.
class SymbolView : public QWidget {
 public:
    /// `name` and `tint` as for `symbol`; `scale`: the height in heights of the user's font.
    SymbolView(const QString& name, Tint tint, double scale);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    QIcon icon_;
    double scale_;
};

}  // namespace quirebind
