// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Articles/ArticleImport.h"

#include <set>

namespace quirebind {

void ArticleImport::finish() {
    ObjectReader& reader = copier_.reader();
    attempt(reader, [&] {
        std::set<std::uint32_t> listed;
        ArrayReader threads(reader.resolve(catalog_.find("Threads")));
        while (const auto element = threads.next()) {
            const auto thread = element->reference();
            if (!thread || !listed.insert(thread->number).second) continue;
            // Only the first bead of a thread has to say to which it belongs, and not all writers
            // list beads in their pages.
            const Value first = reader.resolve(*element).find("F");
            const bool isUsed =
                isCopied(*element) || isCopied(first) || isCopied(reader.resolve(first).find("P"));
            if (!isUsed) continue;
            if (const auto copy = copier_.map().map(*thread, Role::plain))
                threads_.push_back(*copy);
        }
    });
}

bool ArticleImport::isCopied(Value value) const {
    const auto reference = value.reference();
    return reference && copier_.map().find(reference->number);
}

}  // namespace quirebind
