// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Desktop/FileTransfer.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QStringList>
#include <QVariantMap>
#include <memory>
#include <utility>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Desktop/HandOver.h"

namespace quirebind {

namespace {

constexpr int kPatience = 3000;  // milliseconds

/// The key of the transfer, which the drag carries as this type.
QByteArray keyOf(const QMimeData& data) {
    const QByteArray key = data.data(QStringLiteral("application/vnd.portal.filetransfer"));
    return {key.constData()};  // up to the zero byte that some programs end it with
}

bool isConfined() {
    return QFile::exists(QStringLiteral("/.flatpak-info"));
}

QDBusMessage questionFor(const QByteArray& key) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Documents"),
        QStringLiteral("/org/freedesktop/portal/documents"),
        QStringLiteral("org.freedesktop.portal.FileTransfer"), QStringLiteral("RetrieveFiles"));
    question << QString::fromUtf8(key) << QVariantMap();
    return question;
}

std::vector<URL> fileURLs(const QStringList& paths) {
    std::vector<URL> urls;
    urls.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString& path : paths) urls.push_back(URL::file(path.toStdString()));
    return urls;
}

}  // namespace

bool FileTransfer::isNeeded(const QMimeData& data) {
    return !keyOf(data).isEmpty() && (isConfined() || quirebind::fileURLs(data).empty());
}

void FileTransfer::retrieve(const QMimeData& data, Use use) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    std::vector<URL> listed = quirebind::fileURLs(data);
    if (!bus.isConnected()) {
        use(listed);
        return;
    }
    auto watcher = std::make_unique<QDBusPendingCallWatcher>(
        bus.asyncCall(questionFor(keyOf(data)), kPatience), &context_);
    QObject::connect(
        watcher.get(), &QDBusPendingCallWatcher::finished, &context_,
        [use = std::move(use), listed = std::move(listed)](QDBusPendingCallWatcher* answered) {
            answered->deleteLater();
            const QDBusPendingReply<QStringList> files = *answered;
            use(files.isError() ? listed : fileURLs(files.value()));
        });
    handOver(std::move(watcher));  // the context owns it
}

}  // namespace quirebind
