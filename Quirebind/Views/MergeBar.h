// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>
#include <QWidget>

#include "Quirebind/Views/ActivityIndicator.h"
#include "Quirebind/Views/TextLabel.h"

namespace quirebind {

class ContentView;

/// The strip across the bottom: what will be merged, and the button that merges it.
class MergeBar : public QWidget {
 public:
    /// `state` must outlive this.
    explicit MergeBar(ContentView& state);

    void redraw();

    [[nodiscard]] QPushButton& mergeButton() { return mergeButton_; }

 private:
    ContentView& state_;
    TextLabel summary_;
    TextLabel privacy_;
    QPushButton showInFinder_;
    ActivityIndicator activity_;
    QPushButton mergeButton_;
};

}  // namespace quirebind
