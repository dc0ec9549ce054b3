// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/PDF/Copying/EntryRewriter.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Structure/AttributeClasses.h"
#include "Platform/PDF/Structure/ContentItems.h"
#include "Platform/PDF/Structure/ElementCopies.h"
#include "Platform/PDF/Structure/ElementIDs.h"
#include "Platform/PDF/Structure/ElementPages.h"
#include "Platform/PDF/Structure/ElementSelection.h"
#include "Platform/PDF/Structure/StructureTypes.h"

namespace quirebind {

/// Writes the structure elements of one source (ISO 32000-2, 14.7.2, table 355), with the names and
/// identifiers that the output has for theirs. An element's parent is the one that lists it.
class ElementRewriter : public ObjectRewriter {
 public:
    /// What the elements of one source have in common. All must outlive this.
    struct Context {
        ObjectCopier& copier;
        ElementCopies& copies;
        const ContentItems& items;
        ElementPages& pages;
        StructureTypes& types;
        AttributeClasses& classes;
        SourceIDs& ids;
        std::uint32_t root;    ///< Of the output.
        std::string language;  ///< The bytes of the source's own /Lang.
    };

    /// Nothing is written yet.
    explicit ElementRewriter(Context context)
        : context_(std::move(context)),
          room_(limits::kSharedInStructure, context_.copier.reader().image().storedBytes()) {}

    /// From now on only what is selected is written.
    void restrictTo(const ElementSelection& selection) { selection_ = &selection; }

    /// References to the copies of the elements that the source's root lists. They are queued.
    [[nodiscard]] std::string topElements(Value root);

    /// Writes the elements found so far that stand in others directly; false where there are none.
    bool writeDirect();

    /// Something in the structure tree that is an object.
    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    /// An element being written.
    struct Element {
        std::uint32_t number = 0;
        std::uint32_t parent = 0;
        int depth = 0;
        ElementPlace place;
        std::string_view text;  ///< What offsets count from.
        ElementSelection::Verdict verdict;
        bool hasNamespace = false;
        Value page;  ///< Its /Pg and its /K: of repeated keys the last, which alone is written.
        Value kids;
    };

    [[nodiscard]] ElementSelection::Verdict verdictOf(const ElementPlace& place) const;
    void write(Value value, Element element, MappedText& text, ByteBuffer& out);
    void writeEntry(const DictionaryEntry& entry, const Element& element, EntryRewriter& entries,
                    MappedText& text, ByteBuffer& out);
    [[nodiscard]] std::optional<std::uint32_t> missingPage(const Element& element);
    [[nodiscard]] bool hasNumberedContent(Value kids);
    void writeType(Value type, const Element& element, EntryRewriter& entries);
    void writeID(Value id, const Element& element, EntryRewriter& entries);
    void writeReferences(Value references, EntryRewriter& entries);
    void writeClasses(Value classes, EntryRewriter& entries);
    void writeKids(Value kids, const Element& element, EntryRewriter& entries);
    void appendKids(Value kids, const Element& element, ByteBuffer& out);
    void appendKid(Value kid, const Element& element, ByteBuffer& out);
    [[nodiscard]] Value inlined(Value value);

    Context context_;
    const ElementSelection* selection_ = nullptr;
    ByteBuffer kids_;
    std::vector<bool> knowsPage_;  // by the output's number: an element, or one around it, says it
    WorkBudget room_;              // for what many elements share
};

}  // namespace quirebind
