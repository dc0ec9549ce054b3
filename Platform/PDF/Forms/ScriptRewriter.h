// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Forms/FieldRenames.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectReader.h"

namespace quirebind {

/// Writes the scripts of actions (ISO 32000-2, 12.6.4.17), which are text strings or streams of
/// such text: the names of fields in them follow the fields. A stream in which one changes becomes
/// a string.
class ScriptRewriter : public ObjectRewriter {
 public:
    /// Both must outlive this.
    ScriptRewriter(ObjectReader& reader, const FieldRenames& renames);

    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;
    [[nodiscard]] std::optional<std::string> replaceStream(const SourceObject& stream) override;

 private:
    [[nodiscard]] std::optional<std::string> renamed(std::string_view bytes) const;
    [[nodiscard]] std::string decode(const SourceObject& stream);

    ObjectReader& reader_;
    const FieldRenames& renames_;
    WorkBudget budget_;
};

}  // namespace quirebind
