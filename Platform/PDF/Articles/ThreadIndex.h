// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The articles of one source as actions name them besides by reference: by their number in the
/// document, or by their title (ISO 32000-2, table 209). Read when it is first asked.
class ThreadIndex {
 public:
    /// Both must outlive this.
    ThreadIndex(ObjectReader& reader, const Catalog& catalog)
        : reader_(reader), catalog_(catalog) {}

    /// The thread that an integer or a string means; nothing where there is none. Throws
    /// DamagedDocument where the titles are longer than any file's are.
    [[nodiscard]] std::optional<Reference> find(Value thread);

 private:
    void readThreads();
    void readTitles();

    ObjectReader& reader_;
    const Catalog& catalog_;
    bool hasThreads_ = false;
    bool hasTitles_ = false;
    std::vector<std::optional<Reference>> threads_;
    std::map<std::string, Reference> titles_;  // the first thread of each
};

}  // namespace quirebind
