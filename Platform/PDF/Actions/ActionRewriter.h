// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "Platform/PDF/Articles/ThreadIndex.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Forms/FormChanges.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Links/Destinations.h"
#include "Platform/PDF/Reading/Catalog.h"

namespace quirebind {

/// Writes actions (ISO 32000-2, 12.6): one that goes to a destination in its own document goes to
/// the copy of that page, or of that article; what follows an action follows its copy. A web
/// address that counts from the document's own base says all itself.
class ActionRewriter : public ObjectRewriter {
 public:
    /// All must outlive this; `catalog` is that of the source that `copier` copies from.
    ActionRewriter(ObjectCopier& copier, Destinations& destinations, const Catalog& catalog)
        : copier_(copier),
          destinations_(destinations),
          catalog_(catalog),
          threads_(copier.reader(), catalog),
          room_(limits::kDestinations, copier.reader().image().storedBytes()) {}

    /// Lets actions on all fields be on those of this source only; `form` must outlive this.
    void setForm(FormChanges& form) { form_ = &form; }

    /// An action or an array of them.
    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    /// A kind of action, as far as it matters.
    struct Kind {
        bool goesTo = false;
        bool goesToThread = false;
        bool hides = false;
        bool opensAddress = false;
        std::optional<std::size_t> page;  ///< Where it goes: the document's first page, or last.
        bool meansWholeForm = false;      ///< What it does to fields it does to all of them.
    };

    [[nodiscard]] Kind kindOf(Value action);
    void rewriteAction(Value action, MappedText& text, ByteBuffer& out);
    [[nodiscard]] bool rewriteByKind(const Kind& kind, const DictionaryEntry& entry,
                                     EntryRewriter& entries);
    [[nodiscard]] std::optional<std::size_t> namedPage(Value action);
    void appendPage(std::size_t page, Value action, MappedText& text, ByteBuffer& out);
    void appendRootList(Value action, MappedText& text, ByteBuffer& out);
    void rewriteFlags(Value flags, EntryRewriter& entries);
    void rewriteThread(Value thread, EntryRewriter& entries);
    void rewriteAddress(Value address, EntryRewriter& entries);
    void rewriteStructureDestination(Value destination, EntryRewriter& entries);

    ObjectCopier& copier_;
    Destinations& destinations_;
    const Catalog& catalog_;
    ThreadIndex threads_;
    FormChanges* form_ = nullptr;
    std::optional<std::string> base_;  // of web addresses, once it is known
    WorkBudget room_;                  // for web addresses as they are written
    int depth_ = 0;                    // of the direct actions that stand in one another
};

}  // namespace quirebind
