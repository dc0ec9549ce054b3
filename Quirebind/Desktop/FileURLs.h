// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMimeData>
#include <QString>
#include <QUrl>
#include <string_view>
#include <vector>

#include "Platform/Files/URL.h"

namespace quirebind {

// Between the toolkit's file names, which are text, and ours, which are bytes.

/// The file URLs of a drag, in its order; whatever else it carries is left out. Names arrive byte
/// for byte, also those that are not UTF-8: the list is read in its written form (RFC 2483, 5),
/// since the toolkit's own reading of it knows only text.
[[nodiscard]] std::vector<URL> fileURLs(const QMimeData& data);

/// The file URLs of a text/uri-list.
[[nodiscard]] std::vector<URL> fileURLs(std::string_view uriList);

/// The location that a panel of the toolkit reports.
[[nodiscard]] URL fileURL(const QUrl& url);

/// The name that the user reads: the last path component. Bytes that are no text show as U+FFFD.
[[nodiscard]] QString displayName(const URL& url);

/// The location that the user reads: the path, from the home folder on behind a "~", or another URL
/// as it is. Bytes that are no text show as U+FFFD.
[[nodiscard]] QString displayPath(const URL& url);

/// The text with places to break the line (U+200B), between characters that the user perceives, in
/// words of more than `longestRun` UTF-16 units.
[[nodiscard]] QString breakable(const QString& text, int longestRun = 60);

}  // namespace quirebind
