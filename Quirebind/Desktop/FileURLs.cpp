// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Desktop/FileURLs.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTextBoundaryFinder>
#include <string>
#include <utility>

namespace quirebind {

std::vector<URL> fileURLs(const QMimeData& data) {
    const QByteArray list = data.data(QStringLiteral("text/uri-list"));
    return fileURLs(std::string_view(list.constData(), static_cast<std::size_t>(list.size())));
}

std::vector<URL> fileURLs(std::string_view uriList) {
    std::vector<URL> urls;
    while (!uriList.empty()) {
        const std::size_t end = uriList.find_first_of(std::string_view("\r\n\0", 3));
        const std::string_view line = uriList.substr(0, end);
        uriList.remove_prefix(end == std::string_view::npos ? uriList.size() : end + 1);
        if (line.empty() || line.front() == '#') continue;  // '#' begins a comment
        URL url = URL::parse(line);
        if (url.isFileURL()) urls.push_back(std::move(url));
    }
    return urls;
}

URL fileURL(const QUrl& url) {
    return URL::file(QFile::encodeName(url.toLocalFile()).toStdString());
}

QString displayName(const URL& url) {
    return QString::fromStdString(url.lastPathComponent());
}

QString displayPath(const URL& url) {
    if (!url.isFileURL()) return QString::fromStdString(url.absoluteString());
    std::string path(url.path());
    const std::string home = QFile::encodeName(QDir::homePath()).toStdString();
    if (home.size() > 1 && path.starts_with(home + '/')) path.replace(0, home.size(), "~");
    return QString::fromStdString(path);
}

QString breakable(const QString& text, int longestRun) {
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    QString result;
    int run = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        run = text[at].isSpace() ? 0 : run + 1;
        characters.setPosition(at);
        if (run > longestRun && characters.isAtBoundary()) {
            result += QChar(0x200b);
            run = 1;
        }
        result += text[at];
    }
    return result;
}

}  // namespace quirebind
