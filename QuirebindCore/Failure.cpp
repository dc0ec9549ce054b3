// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "QuirebindCore/Failure.h"

#include <utility>

namespace quirebind::PDFMerger {

Failure::Failure(Kind kind, std::string name, std::string description)
    : kind_(kind), name_(std::move(name)), description_(std::move(description)) {}

Failure Failure::invalid(std::string name) {
    std::string description = "Could not read every page of " + name + ".";
    return {Kind::invalid, std::move(name), std::move(description)};
}

Failure Failure::locked(std::string name) {
    std::string description = name + " is locked. Unlock it in Preview before adding it.";
    return {Kind::locked, std::move(name), std::move(description)};
}

Failure Failure::empty() {
    return {Kind::empty, {}, "Add PDFs containing at least one page."};
}

Failure Failure::sourceOverwrite() {
    return {Kind::sourceOverwrite,
            {},
            "Choose a different output file to preserve your original PDFs."};
}

}  // namespace quirebind::PDFMerger
