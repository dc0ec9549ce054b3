// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The file viewer of macOS, built only there; FileViewer.cpp is that of all other desktops.

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <string>

#include "Quirebind/Desktop/FileViewer.h"

namespace quirebind {

/// The Finder is asked by the system's own command, which waits for nothing.
void FileViewer::show(std::span<const URL> urls) {
    QStringList arguments(QStringLiteral("-R"));
    for (const URL& url : urls)
        arguments << QFile::decodeName(QByteArray::fromStdString(std::string(url.path())));
    QProcess::startDetached(QStringLiteral("/usr/bin/open"), arguments);
}

}  // namespace quirebind
