// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Layers/UnlistedLayers.h"

#include "Platform/PDF/Layers/LayerCopy.h"

namespace quirebind {

void UnlistedLayers::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    if (groups_.empty()) source_ = writer_.nextSource();
    groups_.push_back(copier_.current().output);
    copyLayer(value, writer_, source_, text, out);
}

}  // namespace quirebind
