// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace quirebind {

/// Whether this is one of the standard structure types of PDF 1.7, which are what types without a
/// namespace are taken from (ISO 32000-2, 14.8.6.1 and annex L). They mean what they mean without a
/// role map.
[[nodiscard]] bool isStandardType(std::string_view type);

}  // namespace quirebind
