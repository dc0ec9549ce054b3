// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Layers/LayerWriter.h"

namespace quirebind {

/// Notes the optional content groups of a source that does not list any (ISO 32000-2, table 98), as
/// it should, for instance since its pages were taken out of another document. Alone they are
/// shown. In a document that lists those of others some readers would hide what is in them.
class UnlistedLayers : public ObjectRewriter {
 public:
    /// Both must outlive this.
    UnlistedLayers(ObjectCopier& copier, LayerWriter& writer) : copier_(copier), writer_(writer) {}

    /// Writes a group.
    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

    /// Adds those that were written to the output's.
    void finish() { writer_.addShown(groups_); }

 private:
    ObjectCopier& copier_;
    LayerWriter& writer_;
    std::uint32_t source_ = 0;           // once there is one
    std::vector<std::uint32_t> groups_;  // objects of the output
};

}  // namespace quirebind
