// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <cstdint>

/// Every text of the window, by name. Each is a key of the translations, whose English development
/// value is the key itself; numbers are written the way the user's locale writes them.
namespace quirebind::text {

[[nodiscard]] QString applicationName();
[[nodiscard]] QString tagline();
[[nodiscard]] QString addPDFs();

[[nodiscard]] QString yourDocuments();
[[nodiscard]] QString documentCount(std::int64_t documents);
[[nodiscard]] QString pages(std::int64_t pages);
[[nodiscard]] QString up();
[[nodiscard]] QString down();
[[nodiscard]] QString remove();
[[nodiscard]] QString dropTitle();
[[nodiscard]] QString dropDescription();

[[nodiscard]] QString previewTitle();
[[nodiscard]] QString previewDescription();

[[nodiscard]] QString summary(std::int64_t documents, std::int64_t pages);
[[nodiscard]] QString privacy();
[[nodiscard]] QString showInFinder();
[[nodiscard]] QString mergePDFs();
[[nodiscard]] QString merging();

[[nodiscard]] QString alertTitle();
[[nodiscard]] QString ok();

[[nodiscard]] QString copy();
[[nodiscard]] QString zoomIn();
[[nodiscard]] QString zoomOut();
[[nodiscard]] QString fitWidth();

// Said only to assistive technology, or while a window waits to close.

[[nodiscard]] QString row(const QString& name, const QString& pages);
[[nodiscard]] QString divider();
[[nodiscard]] QString pagePosition(std::int64_t page, std::int64_t pages);
[[nodiscard]] QString closingTitle();
[[nodiscard]] QString closingDescription();
[[nodiscard]] QString keepOpen();

}  // namespace quirebind::text
