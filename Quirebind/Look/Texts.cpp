// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/Texts.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <initializer_list>
#include <limits>

namespace quirebind::text {

namespace {

QString translated(const char* key) {
    return QCoreApplication::translate("Quirebind", key);
}

/// The plural form of `key` for `count`.
QString translated(const char* key, std::int64_t count) {
    const auto plural = static_cast<int>(std::min<std::int64_t>(
        count, std::numeric_limits<int>::max()));  // the toolkit counts in int
    return QCoreApplication::translate("Quirebind", key, nullptr, plural);
}

/// Puts the numbers in for the placeholders, the first for the first.
QString format(QString text, std::initializer_list<std::int64_t> numbers) {
    const QString placeholder = QStringLiteral("%lld");
    qsizetype from = 0;
    for (const std::int64_t number : numbers) {
        const qsizetype at = text.indexOf(placeholder, from);
        if (at < 0) break;
        const QString written = QLocale().toString(static_cast<qlonglong>(number));
        text.replace(at, placeholder.size(), written);
        from = at + written.size();
    }
    return text;
}

}  // namespace

QString applicationName() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Quirebind"));
}

QString tagline() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Bring your pages together."));
}

QString addPDFs() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Add PDFs…"));
}

QString yourDocuments() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "YOUR DOCUMENTS"));
}

QString documentCount(std::int64_t documents) {
    return format(translated(QT_TRANSLATE_NOOP("Quirebind", "%lld")), {documents});
}

QString pages(std::int64_t pages) {
    return format(translated(QT_TRANSLATE_N_NOOP("Quirebind", "%lld pages"), pages), {pages});
}

QString up() {
    //: Moves the selected document one place up in the list.
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Up"));
}

QString down() {
    //: Moves the selected document one place down in the list.
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Down"));
}

QString remove() {
    //: Takes the selected document off the list; its file stays where it is.
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Remove"));
}

QString dropTitle() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Drop your PDFs here"));
}

QString dropDescription() {
    return translated(
        QT_TRANSLATE_NOOP("Quirebind", "Add two or more documents, arrange them, then merge."));
}

QString previewTitle() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "A little preview"));
}

QString previewDescription() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Select a document to inspect its pages."));
}

QString summary(std::int64_t documents, std::int64_t pages) {
    //: Either number may be one, so say it in a way that holds for every number, as in
    //: "Documents: %lld". The first number is always the documents'.
    return format(translated(QT_TRANSLATE_NOOP("Quirebind", "%lld documents · %lld pages")),
                  {documents, pages});
}

QString privacy() {
    //: Say "computer" in the place of "Mac".
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Processed privately on your Mac"));
}

QString showInFinder() {
    //: Say "file manager" in the place of "Finder".
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Show in Finder"));
}

QString mergePDFs() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Merge PDFs…"));
}

QString merging() {
    //: On the button, while the merge runs.
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Merging…"));
}

QString alertTitle() {
    //: The title of the alert; below it stands what went wrong.
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Quirebind couldn’t finish"));
}

QString ok() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "OK"));
}

QString copy() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Copy"));
}

QString zoomIn() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Zoom In"));
}

QString zoomOut() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Zoom Out"));
}

QString fitWidth() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Fit Width"));
}

QString pagePosition(std::int64_t page, std::int64_t pages) {
    //: The first number is always the page's, the second that of all pages.
    return format(translated(QT_TRANSLATE_NOOP("Quirebind", "Page %lld of %lld")), {page, pages});
}

QString row(const QString& name, const QString& pages) {
    return name + QStringLiteral(", ") + pages;
}

QString divider() {
    //: What a screen reader calls the line that makes one side wider, the other narrower.
    return translated(
        QT_TRANSLATE_NOOP("Quirebind", "Divider between the documents and the preview"));
}

QString closingTitle() {
    //: Said where a window is to be closed during a merge.
    return translated(QT_TRANSLATE_NOOP("Quirebind", "The merge is still running"));
}

QString closingDescription() {
    return translated(
        QT_TRANSLATE_NOOP("Quirebind", "This window closes as soon as the new file is written."));
}

QString keepOpen() {
    return translated(QT_TRANSLATE_NOOP("Quirebind", "Keep Window Open"));
}

}  // namespace quirebind::text
