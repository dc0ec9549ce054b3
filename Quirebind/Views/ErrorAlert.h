// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QPushButton>
#include <QString>
#include <QTextEdit>

#include "Quirebind/Look/Symbol.h"
#include "Quirebind/Look/TextLabel.h"

namespace quirebind {

class ContentView;

/// The sheet that shows a failure: a title, the failure's text as it stands, and a button. A text
/// of many lines scrolls. Modal to its window only, and shown without waiting.
class ErrorAlert : public QDialog {
 public:
    /// `state` must outlive this; belongs to `window`.
    ErrorAlert(ContentView& state, QWidget& window);

    /// Shown exactly while the state holds an error.
    void redraw();

 private:
    /// Scrolls down only, and is as high as its text up to a limit. Not a label, which breaks lines
    /// between words only and would cut off a long name.
    class Message : public QTextEdit {
     public:
        /// Empty at first; the reader can select its text, and not change it.
        Message();
        /// Shows that as plain text, from its beginning.
        void setText(const QString& text);
        [[nodiscard]] QSize sizeHint() const override;
        [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

     protected:
        void changeEvent(QEvent* event) override;
        void wheelEvent(QWheelEvent* event) override;

     private:
        [[nodiscard]] int textHeight() const;
        /// Begins lines where the layout does, whichever way their text runs.
        void align();
        /// Writes in the colour for texts on a window, which it has no background in front of.
        void recolour();
    };

    ContentView& state_;
    SymbolView icon_;
    TextLabel title_;
    Message message_;
    QPushButton ok_;
    QString shown_;
};

}  // namespace quirebind
