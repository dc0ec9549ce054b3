// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Desktop/FileViewer.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <set>
#include <utility>

#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileSystem.h"
#include "Platform/Files/OpenToRead.h"
#include "Quirebind/Desktop/HandOver.h"

namespace quirebind {

namespace {

constexpr int kPatience = 3000;  // milliseconds

/// Calls, and runs `otherwise` unless that is answered without an error in time.
void call(const QDBusMessage& message, QObject& context, const std::function<void()>& otherwise) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        otherwise();
        return;
    }
    auto watcher =
        std::make_unique<QDBusPendingCallWatcher>(bus.asyncCall(message, kPatience), &context);
    QObject::connect(watcher.get(), &QDBusPendingCallWatcher::finished, &context,
                     [otherwise](QDBusPendingCallWatcher* answered) {
                         answered->deleteLater();
                         if (answered->isError()) otherwise();
                     });
    handOver(std::move(watcher));  // the context owns it
}

QString folderOf(const std::string& path) {
    return QFileInfo(QFile::decodeName(QByteArray::fromStdString(path))).absolutePath();
}

}  // namespace

void FileViewer::show(std::span<const URL> urls) {
    QStringList uris;
    std::vector<std::string> paths;
    for (const URL& url : urls) {
        uris << QString::fromStdString(url.absoluteString());
        paths.emplace_back(url.path());
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message << uris << QString();
    call(message, context_, [this, paths = std::move(paths)] { askPortal(paths); });
}

void FileViewer::askPortal(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        const std::function<void()> otherwise = [path] { openFolders({path}); };
        const FileDescriptor file = openToRead(URL::file(path), FileSystem::native());
        if (file.number() < 0) {  // the file is gone; its folder may still be there
            otherwise();
            continue;
        }
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.portal.Desktop"),
            QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.OpenURI"), QStringLiteral("OpenDirectory"));
        message << QString() << QVariant::fromValue(QDBusUnixFileDescriptor(file.number()))
                << QVariantMap();
        call(message, context_, otherwise);
    }
}

void FileViewer::openFolders(const std::vector<std::string>& paths) {
    std::set<QString> folders;
    for (const std::string& path : paths) folders.insert(folderOf(path));
    for (const QString& folder : folders) QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

}  // namespace quirebind
