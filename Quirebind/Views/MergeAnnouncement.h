// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QWidget>

namespace quirebind {

class ContentView;

/// Tells assistive technology of its own accord that a merge runs, and what came of it: nobody who
/// listens to a window hears a button appear. There is nothing to be seen of it. A failure is told
/// by the alert, which takes the focus.
class MergeAnnouncement : public QWidget {
 public:
    /// `state` must outlive this.
    explicit MergeAnnouncement(ContentView& state);

    /// Says what the state calls for, once.
    void redraw();

 private:
    [[nodiscard]] QString text() const;
    void say(const QString& text);

    ContentView& state_;
    QString said_;
};

}  // namespace quirebind
