// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Follows a value that may be an indirect reference to the value itself.
using Resolve = std::function<Value(Value)>;

/// The filters of a stream, taken apart: the crypt filter, which says how the body is encrypted
/// (ISO 32000-2, 7.4.10), and the others, which remain when it is not. A view of the stream's
/// dictionary and of what that refers to.
///
///     /Filter [/Crypt /FlateDecode]   /DecodeParms [<< /Name /Identity >> null]
///
/// Real files use the abbreviations of inline images here, too (8.9.7): /DP, and /F, which is a
/// file (7.11) otherwise.
class StreamFilters {
 public:
    /// A filter as the dictionary names it.
    struct Filter {
        Value name;        ///< Maybe a reference.
        Value parameters;  ///< Likewise; absent or null where there are none.
    };

    /// Takes the entries of `dictionary` apart. `resolve` is not kept; what it throws leaves this.
    StreamFilters(Value dictionary, const Resolve& resolve);

    /// The name of the stream's own crypt filter, where it has one.
    [[nodiscard]] const std::optional<std::string>& cryptFilter() const { return cryptFilter_; }
    /// All filters but crypt filters, in the order in which they are to be undone.
    [[nodiscard]] const std::vector<Filter>& others() const { return others_; }

    /// Whether the stream's entry with that key is about its filters.
    [[nodiscard]] bool isFilterEntry(Value key) const;

 private:
    std::optional<std::string> cryptFilter_;
    std::vector<Filter> others_;
    bool isAbbreviated_ = false;  // /F is no file
};

}  // namespace quirebind
