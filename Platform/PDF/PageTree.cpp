// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/PageTree.h"

#include <map>
#include <set>
#include <utility>

#include "Platform/PDF/DamagedDocument.h"
#include "Platform/PDF/Limits.h"

namespace quirebind {

/// One walk over a page tree, with a stack of its own in place of recursion.
class PageTreeWalk {
 public:
    explicit PageTreeWalk(ObjectReader& reader)
        : reader_(reader), room_(limits::kPages + reader.image().size() / limits::kBytesPerPage) {}

    PageTree run(Value root) {
        const auto reference = root.reference();
        if (!reference) throw DamagedDocument("a catalog without a page tree");
        PageTree::Inheritance nothing{};
        nothing.fill(PageTree::kNone);
        visit(*reference, nothing, 0);
        while (!open_.empty()) {
            OpenNode& top = open_.back();
            if (top.next == top.kids.size()) {
                onPath_.erase(tree_.nodes_[top.node].object);
                open_.pop_back();
                continue;
            }
            const Reference kid = top.kids[top.next++];
            const std::uint32_t parent = top.node;
            visit(kid, PageTree::Inheritance(tree_.nodes_[parent].inherited), parent);
            reader_.trim();
        }
        return std::move(tree_);
    }

 private:
    /// A node whose kids are being visited.
    struct OpenNode {
        std::uint32_t node = 0;
        std::vector<Reference> kids;
        std::size_t next = 0;
    };

    /// What the walk needs of a node or a page.
    struct Entries {
        Value type;
        Value kids;
        std::array<Value, kInheritableAttributes.size()> inheritable;
    };

    /// In one pass: some nodes are as long as the document.
    static Entries readEntries(Value dictionary) {
        Entries entries;
        DictionaryReader reader(dictionary);
        while (const auto entry = reader.next()) {
            Value* place = nullptr;
            if (entry->key.isName("Type")) place = &entries.type;
            if (entry->key.isName("Kids")) place = &entries.kids;
            for (std::size_t i = 0; i < kInheritableAttributes.size(); ++i)
                if (entry->key.isName(kInheritableAttributes[i])) place = &entries.inheritable[i];
            if (place != nullptr && place->text().empty()) *place = entry->value;
        }
        return entries;
    }

    /// Adds the page, or opens the node, that `reference` names.
    void visit(Reference reference, const PageTree::Inheritance& inherited, std::uint32_t parent) {
        if (!reader_.exists(reference)) return;
        const Value dictionary = reader_.read(reference.number).value;
        if (dictionary.isNull()) return;
        if (!dictionary.isDictionary()) throw DamagedDocument("a page that is no dictionary");
        const Entries entries = readEntries(dictionary);
        // Some files leave out /Type; /Kids tells a node from a page.
        if (entries.kids.isNull() && !entries.type.isName("Pages")) {
            if (open_.empty()) throw DamagedDocument("a page where the page tree should be");
            if (tree_.pages_.size() == room_) throw DamagedDocument("too many pages");
            tree_.pages_.push_back({reference.number, parent});
            return;
        }
        if (open_.size() == limits::kPageTreeDepth) throw DamagedDocument("too deep a page tree");
        if (!onPath_.insert(reference.number).second)
            throw DamagedDocument("a page tree that leads back into itself");
        if (tree_.nodes_.size() == room_) throw DamagedDocument("too many nodes");
        openNode(reference.number, entries, inherited);
    }

    void openNode(std::uint32_t object, const Entries& entries,
                  const PageTree::Inheritance& inherited) {
        PageTree::Node node{object, inherited};
        const PageTree::Inheritance& own = ownValues(object, entries);
        for (std::size_t i = 0; i < own.size(); ++i)
            if (own[i] != PageTree::kNone) node.inherited[i] = own[i];
        OpenNode opened;
        opened.node = static_cast<std::uint32_t>(tree_.nodes_.size());
        ArrayReader reader(reader_.resolve(entries.kids));
        while (const auto kid = reader.next()) {
            if (kid->isNull()) continue;
            const auto reference = kid->reference();
            if (!reference) throw DamagedDocument("a page that is no object of its own");
            opened.kids.push_back(*reference);
        }
        tree_.nodes_.push_back(node);
        open_.push_back(std::move(opened));
    }

    /// The node's own inheritable values, kept once however often the node is listed.
    const PageTree::Inheritance& ownValues(std::uint32_t object, const Entries& entries) {
        const auto [place, isNew] = ownValues_.try_emplace(object);
        PageTree::Inheritance& own = place->second;
        if (!isNew) return own;
        own.fill(PageTree::kNone);
        for (std::size_t i = 0; i < own.size(); ++i) {
            const Value value = entries.inheritable[i];
            if (reader_.isAbsent(value)) continue;
            own[i] = static_cast<std::uint32_t>(tree_.values_.size());
            tree_.values_.emplace_back(value.text());
        }
        return own;
    }

    ObjectReader& reader_;
    std::uint64_t room_;  // for pages, and for nodes
    PageTree tree_;
    std::vector<OpenNode> open_;
    std::set<std::uint32_t> onPath_;  // the nodes in open_
    std::map<std::uint32_t, PageTree::Inheritance> ownValues_;
};

PageTree PageTree::read(ObjectReader& reader, Value root) {
    return PageTreeWalk(reader).run(root);
}

}  // namespace quirebind
