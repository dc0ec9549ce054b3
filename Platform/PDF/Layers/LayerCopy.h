// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Layers/LayerWriter.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Copies `group`, all of `text`, an optional content group (ISO 32000-2, 8.11.2) of source number
/// `source`. To some readers groups that say the same of themselves are one group with one state.
/// So one whose name another source has, too, says which source it is from.
void copyLayer(Value group, LayerWriter& writer, std::uint32_t source, MappedText& text,
               ByteBuffer& out);

}  // namespace quirebind
