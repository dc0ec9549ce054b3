// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Platform/PDF/Copying/DocumentPart.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Layers/LayerWriter.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Brings the optional content groups of one source along that the copied pages use (ISO 32000-2,
/// 8.11), in the state that the source's default configuration gives them. What pages say of groups
/// is copied with the pages; which of the groups were copied says which are used.
class LayerImport : public DocumentPart, public ObjectRewriter {
 public:
    /// All must outlive this.
    LayerImport(ObjectCopier& copier, const Catalog& catalog, LayerWriter& writer);

    /// Writes a group.
    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

    void finish() override;

 private:
    void readStates(Value configuration);
    void readOrder(Value configuration);
    void readRadioGroups(Value configuration);
    void readUsages(Value configuration);

    /// Calls `visit` with each reference in `array`.
    template <typename Visit>
    void forEachReference(Value array, Visit visit);

    [[nodiscard]] bool isGroup(std::uint32_t source) const { return groups_.contains(source); }
    /// The copy of the group, where it is one and is used.
    [[nodiscard]] std::optional<std::uint32_t> copyOf(Reference group) const;
    /// The same, but makes the group one that is used.
    [[nodiscard]] std::optional<std::uint32_t> use(Reference group);
    void hide(std::uint32_t source, std::uint32_t copy);
    /// What `value` is or refers to, as many others may.
    [[nodiscard]] Value valueOf(Value value);
    [[nodiscard]] std::set<std::string> intentsIn(Value value);
    [[nodiscard]] std::string copiesIn(Value array);
    [[nodiscard]] std::string namesIn(Value array);

    ObjectCopier& copier_;
    const Catalog& catalog_;
    LayerWriter& writer_;
    std::uint32_t source_;
    std::set<std::uint32_t> groups_;     // all of the source
    std::vector<std::uint32_t> listed_;  // the same in the order in which they are listed
    LayerSettings settings_;
    WorkBudget room_;  // for what is listed or named in several places
};

}  // namespace quirebind
