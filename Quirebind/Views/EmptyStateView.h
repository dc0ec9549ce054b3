// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QWidget>

#include "Quirebind/Look/Symbol.h"
#include "Quirebind/Look/TextLabel.h"

namespace quirebind {

/// What a region shows while it has nothing to show: a large symbol, a title and a description,
/// centred.
class EmptyStateView : public QWidget {
 public:
    /// `symbolName` is that of one of our own symbols (see `symbol`). Nothing of it changes later.
    EmptyStateView(const QString& symbolName, const QString& title, const QString& description);

    /// As high as its texts need to be at the width that it has.
    [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
    void resizeEvent(QResizeEvent* event) override;

 private:
    SymbolView symbol_;
    TextLabel title_;
    TextLabel description_;
};

}  // namespace quirebind
