// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Desktop/UserLanguage.h"

#include <QFile>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace quirebind {

namespace {

QString fileName(const QString& catalogue) {
    return QStringLiteral(":/translations/quirebind_%1.qm").arg(catalogue);
}

/// The catalogue that a speaker of that language reads, whether there is one or not.
QString catalogueOf(const QLocale& locale) {
    // Chinese is told apart by its script, not by its country: who reads traditional characters is
    // not given simplified ones.
    if (locale.language() == QLocale::Chinese) {
        const bool simplified = locale.script() == QLocale::SimplifiedHanScript;
        return simplified ? QStringLiteral("zh_CN") : QStringLiteral("zh_TW");
    }
    return locale.name().section(QLatin1Char('_'), 0, 0);
}

}  // namespace

QString UserLanguage::catalogue(const QStringList& preferred) {
    for (const QString& name : preferred) {
        const QLocale locale(name);
        // The texts are in English as they are. Without this, QTranslator would go on to whatever
        // the user reads less well.
        if (locale.language() == QLocale::English) return {};
        const QString found = catalogueOf(locale);
        if (QFile::exists(fileName(found))) return found;
    }
    return {};
}

UserLanguage::UserLanguage() {
    const QString language = catalogue(QLocale::system().uiLanguages());
    if (language.isEmpty() || !texts_.load(fileName(language))) return;
    const QLocale locale(language);
    // Not every system has it; its dialogs are in English then.
    if (toolkit_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkit_);
    QCoreApplication::installTranslator(&texts_);
    // The toolkit takes the direction from its own catalogue. The other direction is left as it is,
    // which -reverse may have turned.
    if (locale.textDirection() == Qt::RightToLeft)
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
}

}  // namespace quirebind
