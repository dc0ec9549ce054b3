// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <cstdint>

/// Every text of the window, by name. Each is a key of the translations, whose English development
/// value is the key itself; numbers are written the way the user's locale writes them. The language
/// is that of UserLanguage at the moment of the call. What translators have to know stands beside
/// the key, in Texts.cpp.
namespace quirebind::text {

// The header, and the title of the window.

/// The program's name, which is also the title of its windows.
[[nodiscard]] QString applicationName();
/// What it is for, below the name.
[[nodiscard]] QString tagline();
/// The button that lets the user choose files to add.
[[nodiscard]] QString addPDFs();

// The list of documents.

/// The caption above the list.
[[nodiscard]] QString yourDocuments();
/// The number beside the caption, and nothing else.
[[nodiscard]] QString documentCount(std::int64_t documents);
/// How long one document is, in the plural form that goes with the number.
[[nodiscard]] QString pages(std::int64_t pages);
/// The button that moves the selected document one place up.
[[nodiscard]] QString up();
/// The button that moves it one place down.
[[nodiscard]] QString down();
/// The button that takes it off the list.
[[nodiscard]] QString remove();
/// In the place of an empty list: the invitation to drop files.
[[nodiscard]] QString dropTitle();
/// Below that: what to do then.
[[nodiscard]] QString dropDescription();

// The preview.

/// In its place while nothing is selected.
[[nodiscard]] QString previewTitle();
/// Below that: how something comes to be shown.
[[nodiscard]] QString previewDescription();

// The merge bar.

/// What would be merged: so many documents, with so many pages together.
[[nodiscard]] QString summary(std::int64_t documents, std::int64_t pages);
/// That documents stay on this computer.
[[nodiscard]] QString privacy();
/// The button that shows the merged file in the file manager.
[[nodiscard]] QString showInFinder();
/// The button that merges.
[[nodiscard]] QString mergePDFs();
/// The same button while a merge runs; also what assistive technology is told then.
[[nodiscard]] QString merging();

// The alert.

/// That something failed; also told of a page of the preview that cannot be drawn.
[[nodiscard]] QString alertTitle();
/// The button that closes the alert.
[[nodiscard]] QString ok();

// The menus of the preview.

/// Puts the selected text on the clipboard.
[[nodiscard]] QString copy();
/// Shows pages larger.
[[nodiscard]] QString zoomIn();
/// Shows pages smaller.
[[nodiscard]] QString zoomOut();
/// Shows pages as wide as the view.
[[nodiscard]] QString fitWidth();

// Said only to assistive technology.

/// A row of the list: the document's name, and its length as `pages` says it.
[[nodiscard]] QString row(const QString& name, const QString& pages);
/// What lies between the documents and the preview and makes one wider, the other narrower.
[[nodiscard]] QString divider();
/// Which page of how many, counting from 1.
[[nodiscard]] QString pagePosition(std::int64_t page, std::int64_t pages);

// While a window waits to close.

/// Why it is still there.
[[nodiscard]] QString closingTitle();
/// When it will go.
[[nodiscard]] QString closingDescription();
/// The button that keeps it from closing.
[[nodiscard]] QString keepOpen();

}  // namespace quirebind::text
