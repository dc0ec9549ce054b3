// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace quirebind::PDFMerger {

/// Why the engine refuses. A plain value.
class Failure : public std::exception {
 public:
    /// What a caller may tell apart.
    enum class Kind : std::uint8_t {
        invalid,          ///< A source cannot be read as a PDF, or not all of it can.
        locked,           ///< A source needs a password.
        empty,            ///< There is no page: in a source, or in the result.
        sourceOverwrite,  ///< The destination is one of the sources.
    };

    /// Makes one that is Kind::invalid. `name` is the file name of the source, the last component
    /// of its path.
    [[nodiscard]] static Failure invalid(std::string name);
    /// Likewise Kind::locked.
    [[nodiscard]] static Failure locked(std::string name);
    /// Kind::empty, which names no source.
    [[nodiscard]] static Failure empty();
    /// Kind::sourceOverwrite, which names none, either.
    [[nodiscard]] static Failure sourceOverwrite();

    /// Which of the kinds it is.
    [[nodiscard]] Kind kind() const { return kind_; }
    /// The file name of the source; empty for the kinds that are about no particular one.
    [[nodiscard]] const std::string& name() const { return name_; }

    /// The sentence for the user, in English. It contains the name byte for byte.
    [[nodiscard]] const std::string& errorDescription() const { return description_; }
    /// The same, for whoever catches a std::exception.
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
    Failure(Kind kind, std::string name, std::string description);

    Kind kind_;
    std::string name_;
    std::string description_;
};

}  // namespace quirebind::PDFMerger
