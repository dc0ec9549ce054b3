// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuirebindCore/MergeOn.h"
#include "QuirebindCore/PDFMerger.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::coretest {

using Kind = PDFMerger::Failure::Kind;

/// What an operation of the engine refused with; nothing where it did not refuse. Any other
/// exception comes out.
template <typename Operation>
std::optional<PDFMerger::Failure> failureOf(const Operation& operation) {
    try {
        operation();
    } catch (const PDFMerger::Failure& failure) {
        return failure;
    }
    return std::nullopt;
}

inline std::optional<PDFMerger::Failure> failureOfOpening(const std::string& path) {
    return failureOf([&] { static_cast<void>(PDFMerger::open(URL::file(path))); });
}

inline std::vector<URL> urls(const std::vector<std::string>& paths) {
    std::vector<URL> result;
    result.reserve(paths.size());
    for (const std::string& path : paths) result.push_back(URL::file(path));
    return result;
}

inline void merge(const std::vector<std::string>& sources, const std::string& destination) {
    PDFMerger::merge(urls(sources), URL::file(destination));
}

inline std::optional<PDFMerger::Failure> failureOfMerging(const std::vector<std::string>& sources,
                                                          const std::string& destination) {
    return failureOf([&] { merge(sources, destination); });
}

/// Expects a refusal of that kind about that source.
inline void expectFailure(const std::optional<PDFMerger::Failure>& failure, Kind kind,
                          const std::string& name = "") {
    if (!failure) {
        ADD_FAILURE() << "there was no refusal";
        return;
    }
    EXPECT_EQ(failure->kind(), kind) << failure->errorDescription();
    EXPECT_EQ(failure->name(), name);
}

/// Writes a document of so many pages, which show "<label>-1" and so on; gives its path.
inline std::string addPages(const TemporaryFolder& folder, const std::string& label, int pages) {
    folder.write(label + ".pdf", test::simplePDF(pages, {.label = label}));
    return folder / label + ".pdf";
}

/// Writes a document that nobody can open without the password; gives its path.
inline std::string addLocked(const TemporaryFolder& folder, const std::string& label, int pages) {
    const std::string plain = addPages(folder, "plain-" + label, pages);
    std::string locked = folder / label + ".pdf";
    const auto result =
        test::run({"qpdf", "--encrypt", "user", "owner", "256", "--", plain, locked});
    if (!result.succeeded()) throw std::runtime_error("qpdf: " + result.err);
    return locked;
}

}  // namespace quirebind::coretest
