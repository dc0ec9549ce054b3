// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/CryptFilters.h"

#include "Platform/PDF/Guards/DamagedDocument.h"

namespace quirebind {
namespace {

constexpr std::string_view kIdentity = "Identity";

/// The method of one crypt filter. Its /Length is not asked: the version says how long keys are,
/// and files give it in bits or in bytes. A method that does not fit the version is unknown.
CryptMethod methodOf(Value filter, int version, const Resolve& resolve) {
    if (!filter.isDictionary()) return CryptMethod::unknown;
    const Value method = resolve(filter.find("CFM"));
    if (method.isNull() || method.isName("None")) return CryptMethod::identity;
    if (version == 4 && method.isName("V2")) return CryptMethod::rc4;
    if (version == 4 && method.isName("AESV2")) return CryptMethod::aes128;
    if (version == 5 && method.isName("AESV3")) return CryptMethod::aes256;
    return CryptMethod::unknown;
}

}  // namespace

CryptFilters::CryptFilters(Value dictionary, int version, const Resolve& resolve)
    : hasFilters_(true) {
    DictionaryReader filters(resolve(dictionary.find("CF")));
    while (const auto filter = filters.next())
        filters_.insert_or_assign(filter->key.name(),
                                  methodOf(resolve(filter->value), version, resolve));
    // Whatever the document says of it, this name means one thing.
    filters_[std::string(kIdentity)] = CryptMethod::identity;

    const auto methodUnder = [&](std::string_view key) {
        const Value name = resolve(dictionary.find(key));
        if (name.isNull()) return CryptMethod::identity;
        if (!name.isName() || !filters_.contains(name.name()))
            throw DamagedDocument("a crypt filter that is not defined");
        return named(name.name());
    };
    strings_ = methodUnder("StrF");
    streams_ = methodUnder("StmF");
    const Value embedded = resolve(dictionary.find("EFF"));
    embeddedFiles_ = embedded.isNull() ? streams_ : named(embedded.name());
}

CryptMethod CryptFilters::named(std::string_view name) const {
    if (!hasFilters_) return CryptMethod::rc4;
    const auto found = filters_.find(name);
    return found == filters_.end() ? CryptMethod::unknown : found->second;
}

}  // namespace quirebind
