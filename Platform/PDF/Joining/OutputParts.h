// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/PDF/Copying/PageEntries.h"
#include "Platform/PDF/Copying/Sharing/SharedStreams.h"
#include "Platform/PDF/Copying/StructureKeys.h"
#include "Platform/PDF/Forms/FormWriter.h"
#include "Platform/PDF/Layers/LayerWriter.h"
#include "Platform/PDF/OutputIntents/OutputIntents.h"
#include "Platform/PDF/Structure/Marking.h"
#include "Platform/PDF/Structure/StructureWriter.h"
#include "Platform/PDF/Syntax/FoundParts.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// What the sources of one output add to, besides its pages.
struct OutputParts {
    DocumentWriter writer;
    // What the sources' objects are read into: sources of the same maker are alike.
    PageEntries pageEntries;
    FoundParts objectParts{FoundParts::Memory::shapes};
    SharedStreams sharedStreams;
    StructureKeyCounter structureKeys;
    LayerWriter layers;
    std::vector<std::uint32_t> threads;
    CommonOutputIntents outputIntents;
    StructureWriter structure;
    MarkingWriter marking;
    FormWriter forms;
};

}  // namespace quirebind
