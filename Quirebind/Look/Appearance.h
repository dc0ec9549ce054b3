// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>

namespace quirebind {

class ControlStyle;

/// Gives the whole application its look: the control style, which moves nothing where the desktop
/// says so, and colours that follow the desktop between light and dark while the program runs. A
/// palette that the platform's theme provides is kept, but for the accent. Main thread only.
class Appearance : public QObject {
    Q_OBJECT

 public:
    /// Needs the QApplication.
    Appearance();

 private:
    /// The desktop's portal tells of a change; the bus calls this by its name.
    Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
    void apply();
    void listen();
    void askForScheme();
    void askForMotion();

    ControlStyle* style_ = nullptr;  // the application's
    QPalette platform_;              // what the platform's theme provided
    bool themed_ = false;            // whether it did
    bool prefersDark_ = false;
    bool reducesMotion_ = false;
    bool animates_ = true;
};

}  // namespace quirebind
