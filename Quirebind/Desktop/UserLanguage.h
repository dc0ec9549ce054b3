// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>

namespace quirebind {

/// The language of the window: has all texts come in the user's, and everything laid out the way it
/// is read, for as long as this lives. Needs a QApplication, and comes before the first text is
/// taken. Main thread only.
class UserLanguage {
 public:
    /// Takes the language from the system's settings; the texts stay in English where no
    /// catalogue fits them.
    UserLanguage();

    /// The name of the catalogue, such as "de", for a user who prefers these languages, the first
    /// most; empty where the texts stay in English.
    [[nodiscard]] static QString catalogue(const QStringList& preferred);

 private:
    QTranslator toolkit_;  // Qt's own texts, those of its dialogs
    QTranslator texts_;
};

}  // namespace quirebind
