// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QLabel>
#include <cstdint>

namespace quirebind {

/// The sizes of text, relative to the user's own.
enum class TextStyle : std::uint8_t { title, title2, headline, body, caption };

/// The application's font in a style.
[[nodiscard]] QFont font(TextStyle style);

/// How strongly a text speaks.
enum class Emphasis : std::uint8_t { primary, secondary };

/// A text in one of the styles, which follows changes of the user's font and colours.
class TextLabel : public QLabel {
 public:
    /// Shows no text yet; what setText is given is plain text, whatever is in it.
    explicit TextLabel(TextStyle style, Emphasis emphasis = Emphasis::primary);

    /// Writes in that weight from now on; QFont::Normal leaves it to the style.
    void setBold(QFont::Weight weight);

 protected:
    void changeEvent(QEvent* event) override;

 private:
    /// Where the layout begins. Left to itself, a label begins where its text does, and a name in
    /// Latin letters would stand apart from the Hebrew below it.
    void align();
    void restyle();

    TextStyle style_;
    Emphasis emphasis_;
    QFont::Weight weight_ = QFont::Normal;
};

}  // namespace quirebind
