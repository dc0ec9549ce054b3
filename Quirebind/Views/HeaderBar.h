// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>
#include <QWidget>

#include "Quirebind/Look/Symbol.h"
#include "Quirebind/Look/TextLabel.h"

namespace quirebind {

class ContentView;

/// The strip across the top: the program's icon, name and tagline, and the add button.
class HeaderBar : public QWidget {
 public:
    /// `state` must outlive this.
    explicit HeaderBar(ContentView& state);

    /// Where the focus begins, and goes when what had it is gone. Belongs to this.
    [[nodiscard]] QPushButton& addButton() { return addButton_; }

 private:
    SymbolView icon_;
    TextLabel title_;
    TextLabel tagline_;
    QPushButton addButton_;
};

}  // namespace quirebind
