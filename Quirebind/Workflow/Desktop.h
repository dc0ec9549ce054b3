// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Platform/Files/URL.h"

namespace quirebind {

/// A kind of file that a panel offers.
enum class ContentType : std::uint8_t { pdf };

/// What an open panel is asked for; whatever is not here is the platform's default.
struct OpenPanel {
    std::vector<ContentType> allowedContentTypes;
    bool allowsMultipleSelection = false;
    bool canChooseDirectories = true;
};

/// What a save panel is asked for.
struct SavePanel {
    std::vector<ContentType> allowedContentTypes;
    std::string nameFieldStringValue;
};

/// The desktop around a window: its file panels and its file manager. Main thread only.
class Desktop {
 public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    Desktop(Desktop&&) = delete;
    Desktop& operator=(Desktop&&) = delete;
    virtual ~Desktop() = default;

    /// Shows the panel until the user closes it. The chosen files in the panel's order; nothing
    /// where the user cancelled.
    [[nodiscard]] virtual std::optional<std::vector<URL>> runModal(const OpenPanel& panel) = 0;
    /// Shows the panel until the user answers; nothing where they cancel.
    [[nodiscard]] virtual std::optional<URL> runModal(const SavePanel& panel) = 0;

    /// Shows the files in the file manager, selected.
    virtual void activateFileViewerSelecting(std::span<const URL> urls) = 0;
};

}  // namespace quirebind
