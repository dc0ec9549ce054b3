// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Copying/DocumentPart.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Forms/FieldTree.h"
#include "Platform/PDF/Forms/FormChanges.h"
#include "Platform/PDF/Forms/FormWriter.h"
#include "Platform/PDF/Forms/ResourceDigests.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Links/PageCopies.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Brings the interactive form of one source along (ISO 32000-2, 12.7.3): all fields that its
/// /Fields lead to. Widgets that they do not lead to are plain annotations of their pages.
///
/// 1. When the import begins, the root fields are looked at: which names clash with those of the
///    sources before, and what of the form's defaults they need (`changes`).
/// 2. While pages are copied, fields come with their widgets, rewritten by FieldRewriter.
/// 3. At the end the roots are added to the output's form, and with them all fields that are on no
///    page; then what refers to fields and what they use by name.
class FormImport : public DocumentPart {
 public:
    /// Nothing is copied yet. Fills `changes` in. All must outlive this. Throws DamagedDocument
    /// only where the source is exhausted.
    FormImport(ObjectCopier& copier, const PageCopies& pages, const Catalog& catalog,
               FormWriter& writer, FormChanges& changes);

    void finish() override;

 private:
    /// The name of a root, and the field that has it.
    struct Name {
        std::uint32_t field = 0;
        std::string root;
    };
    /// A resource that the output does not have yet.
    struct Resource {
        std::string category;
        std::string spelling;
        std::string value;
    };

    /// An object of the output; none where the number is 0.
    struct Object {
        std::uint32_t number = 0;
        std::string text;
    };

    void readResources();
    void readCategory(const std::string& category, Value resources, ResourceDigests& digests,
                      WorkBudget& room);
    void readDefaults();
    void readRoots();
    void takeDefaults(std::uint32_t number, Value field);

    void addRoot(const FieldTree::Root& root, FormFields& fields);
    void writeObject(std::uint32_t number, std::string_view text);
    void addRootList(const FormFields& fields);
    void addCalculationOrder(FormFields& fields);
    void addResource(const Resource& resource);

    [[nodiscard]] Value entry(std::string_view key) const { return Value(form_).find(key); }

    ObjectCopier& copier_;
    const PageCopies& pages_;
    FormWriter& writer_;
    FormChanges& changes_;
    std::string form_;
    Object longAppearance_;  // the form's /DA, where that is long
    std::vector<FieldTree::Root> roots_;
    std::vector<Name> names_;
    std::vector<Resource> resources_;
};

}  // namespace quirebind
