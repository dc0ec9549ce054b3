// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The filters of a stream, taken apart: the crypt filter, which says how the body is encrypted
/// (ISO 32000-2, 7.4.10), and the others, which remain when it is not. A view of the stream's
/// dictionary and of what that refers to.
///
///     /Filter [/Crypt /FlateDecode]   /DecodeParms [<< /Name /Identity >> null]
class StreamFilters {
 public:
    struct Filter {
        Value name;        ///< Maybe a reference.
        Value parameters;  ///< Likewise; absent or null where there are none.
    };

    StreamFilters(Value dictionary, const Resolve& resolve);

    /// The name of the stream's own crypt filter, where it has one.
    [[nodiscard]] const std::optional<std::string>& cryptFilter() const { return cryptFilter_; }
    /// All filters but crypt filters.
    [[nodiscard]] const std::vector<Filter>& others() const { return others_; }

    /// Whether a stream's entry with that key is about its filters.
    [[nodiscard]] static bool isFilterEntry(Value key);

 private:
    std::optional<std::string> cryptFilter_;
    std::vector<Filter> others_;
};

}  // namespace quirebind
