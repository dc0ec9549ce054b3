// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/TreeReader.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"

namespace quirebind {
namespace {

class TreeWalk {
 public:
    TreeWalk(ObjectReader& reader, std::string_view pairs, const TreeVisit& visit)
        : reader_(reader), pairs_(pairs), visit_(visit) {}

    void run(Value root) {
        push(root);
        while (!pending_.empty()) {
            const std::string node = std::move(pending_.back());
            pending_.pop_back();
            bool goesOn = true;
            attempt(reader_, [&] { goesOn = readNode(reader_.resolve(Value(node))); });
            if (!goesOn) return;
        }
    }

 private:
    void push(Value node) {
        if (const auto reference = node.reference())
            if (!visited_.insert(reference->number).second) return;
        room_.spend(node.text().size());  // nodes that stand in one another directly
        pending_.emplace_back(node.text());
    }

    bool readNode(Value node) {
        if (!visitPairs(node)) return false;
        const std::size_t before = pending_.size();
        ArrayReader kids(reader_.resolve(node.find("Kids")));
        while (const auto kid = kids.next()) push(*kid);
        std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(before), pending_.end());
        return true;
    }

    /// An array that several nodes refer to is visited once, too.
    bool visitPairs(Value node) {
        const Value pairs = node.find(pairs_);
        if (const auto reference = pairs.reference())
            if (!visited_.insert(reference->number).second) return true;
        ArrayReader elements(reader_.resolve(pairs));
        while (const auto key = elements.next()) {
            const auto value = elements.next();
            if (!value) return true;
            if (!visit_(*key, *value)) return false;
        }
        return true;
    }

    ObjectReader& reader_;
    std::string_view pairs_;
    const TreeVisit& visit_;
    std::vector<std::string> pending_;
    std::set<std::uint32_t> visited_;
    WorkBudget room_{limits::kTreeNodes, reader_.image().storedBytes()};
};

}  // namespace

void visitTree(ObjectReader& reader, Value root, std::string_view pairs, const TreeVisit& visit) {
    TreeWalk(reader, pairs, visit).run(root);
}

}  // namespace quirebind
