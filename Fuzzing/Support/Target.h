// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

/// What every target defines: whatever the bytes are, it returns. Zero says that they may be kept.
// NOLINTNEXTLINE(readability-identifier-naming): the name that the fuzzer calls
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quirebind::fuzzing {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are bytes
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the program, which is how a target says that it has found something.
inline void require(bool holds, std::string_view what) {
    if (holds) return;
    std::cerr << "violated: " << what << '\n';
    std::abort();
}

/// Takes values off the front of the bytes, and zeros once there are none left.
class Choices {
 public:
    explicit Choices(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] unsigned byte() {
        if (bytes_.empty()) return 0;
        const auto value = static_cast<unsigned char>(bytes_.front());
        bytes_.remove_prefix(1);
        return value;
    }
    /// A number below `count`.
    [[nodiscard]] std::size_t below(std::size_t count) { return byte() % count; }
    [[nodiscard]] std::string_view rest() const { return bytes_; }

 private:
    std::string_view bytes_;
};

}  // namespace quirebind::fuzzing
