// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QString>

#include "Quirebind/Views/Symbol.h"
#include "Quirebind/Views/TextLabel.h"

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
    /// Scrolls down only, and is as high as its text up to a limit.
    class Message : public QScrollArea {
     public:
        Message();
        void setText(const QString& text);
        [[nodiscard]] QSize sizeHint() const override;
        [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

     private:
        TextLabel label_;
    };

    ContentView& state_;
    SymbolView icon_;
    TextLabel title_;
    Message message_;
    QPushButton ok_;
    QString shown_;
};

}  // namespace quirebind
