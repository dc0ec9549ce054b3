// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>
#include <QWidget>

#include "Quirebind/Look/TextLabel.h"
#include "Quirebind/Views/ActivityIndicator.h"

namespace quirebind {

class ContentView;

/// The strip across the bottom: what will be merged, and the button that merges it; beside each
/// other, or one below the other where long words in large letters would make the window too wide.
class MergeBar : public QWidget {
 public:
    /// `state` must outlive this.
    explicit MergeBar(ContentView& state);

    /// Counts, and offers what can be done now: merging, or showing what was merged.
    void redraw();

    [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
    bool event(QEvent* event) override;

 private:
    /// How wide the parts have to be, those that are hidden included: what appears is not to make
    /// the window wider.
    [[nodiscard]] int textsWidth() const;
    [[nodiscard]] int buttonsWidth() const;
    void arrange();

    ContentView& state_;
    TextLabel summary_;
    TextLabel privacy_;
    QPushButton showInFinder_;
    ActivityIndicator activity_;
    QPushButton mergeButton_;
};

}  // namespace quirebind
