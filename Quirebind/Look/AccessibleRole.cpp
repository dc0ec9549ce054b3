// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <memory>

#include "Quirebind/Desktop/HandOver.h"

namespace quirebind {

namespace {

constexpr const char* kProperty = "quirebindAccessibleRole";

/// The toolkit deletes these itself.
class Interface : public QAccessibleWidget {
 public:
    Interface(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}
    ~Interface() override = default;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) return nullptr;
    const QVariant role = widget->property(kProperty);
    if (!role.isValid()) return nullptr;
    return handOver(
        std::make_unique<Interface>(widget, static_cast<QAccessible::Role>(role.toInt())));
}

}  // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(kProperty, static_cast<int>(role));
    QAccessible::installFactory(makeInterface);  // does nothing the second time
}

}  // namespace quirebind
