// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QWidget>

namespace quirebind {

/// Says what a widget is to assistive technology, where the toolkit cannot know. For widgets that
/// are described by their accessible name and description.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace quirebind
