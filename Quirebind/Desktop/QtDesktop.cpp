// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Desktop/QtDesktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Desktop/ScreenRoom.h"

namespace quirebind {

namespace {

constexpr QSize kPanelSize{760, 500};

const QString& suffix() {
    static const QString text = QStringLiteral(".pdf");
    return text;
}

/// Shows only files of the types in the dialog, named in the user's language.
void allow(QFileDialog& dialog, const std::vector<ContentType>& types) {
    QStringList filters;
    for (const ContentType type : types) {
        switch (type) {
            case ContentType::pdf: {
                const QString known = QMimeDatabase()
                                          .mimeTypeForName(QStringLiteral("application/pdf"))
                                          .filterString();
                filters << (known.isEmpty() ? QStringLiteral("PDF (*.pdf)") : known);
            }
        }
    }
    dialog.setNameFilters(filters);
}

}  // namespace

void QtDesktop::keepNothing() {
    // QFileDialog saves its state with QSettings; below a device no file can be made or found.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

bool QtDesktop::run(QFileDialog& dialog) {
    if (folder_.isEmpty()) {
        const QString documents =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        folder_ = QUrl::fromLocalFile(QDir(documents).exists() ? documents : QDir::homePath());
    }
    dialog.setDirectoryUrl(folder_);
    dialog.resize(kPanelSize.boundedTo(roomOn(*dialog.screen())));  // of the toolkit's own dialog
    const bool accepted = dialog.exec() == QDialog::Accepted;
    const QList<QUrl> chosen = dialog.selectedUrls();
    if (!accepted || chosen.isEmpty()) return false;
    folder_ = chosen.constFirst().adjusted(QUrl::RemoveFilename);
    return true;
}

std::optional<std::vector<URL>> QtDesktop::runModal(const OpenPanel& panel) {
    QFileDialog dialog(window_);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    QFileDialog::FileMode mode = QFileDialog::ExistingFile;
    if (panel.canChooseDirectories)
        mode = QFileDialog::Directory;
    else if (panel.allowsMultipleSelection)
        mode = QFileDialog::ExistingFiles;
    dialog.setFileMode(mode);
    allow(dialog, panel.allowedContentTypes);
    if (!run(dialog)) return std::nullopt;
    std::vector<URL> urls;
    for (const QUrl& url : dialog.selectedUrls()) urls.push_back(fileURL(url));
    return urls;
}

std::optional<URL> QtDesktop::runModal(const SavePanel& panel) {
    QString name = QString::fromStdString(panel.nameFieldStringValue);
    for (;;) {
        QFileDialog dialog(window_);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        allow(dialog, panel.allowedContentTypes);
        dialog.selectFile(name);
        if (!run(dialog)) return std::nullopt;

        // The dialog has asked about the name as it was typed. It could add the suffix itself, but
        // some platforms' dialogs then replace a file without a word.
        QString path = dialog.selectedUrls().constFirst().toLocalFile();
        if (path.endsWith(suffix(), Qt::CaseInsensitive)) return fileURL(QUrl::fromLocalFile(path));
        path += suffix();
        const QFileInfo there(path);
        // A folder cannot be replaced, so there is nothing to ask: the merge will fail and say so.
        if (!there.exists() || there.isDir() || mayReplace(path))
            return fileURL(QUrl::fromLocalFile(path));
        name = there.fileName();
    }
}

bool QtDesktop::mayReplace(const QString& path) const {
    // The toolkit's own words, so that they come in the user's language.
    const QString question = QCoreApplication::translate(
        "QFileDialog", "%1 already exists.\nDo you want to replace it?");
    constexpr int kLongestRun = 20;  // boxes are narrow on small screens
    const QString name = breakable(QFileInfo(path).fileName(), kLongestRun);
    QMessageBox box(QMessageBox::Warning, QCoreApplication::applicationName(),
                    QString(question).replace(QStringLiteral("%1"), name),
                    QMessageBox::Yes | QMessageBox::No, window_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void QtDesktop::activateFileViewerSelecting(std::span<const URL> urls) {
    fileViewer_.show(urls);
}

}  // namespace quirebind
