// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/PageTree.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {
namespace {

constexpr auto kResources = static_cast<std::size_t>(PageKey::resources);

}  // namespace

/// One walk over a page tree, with a stack of its own in place of recursion.
class PageTreeWalk {
 public:
    PageTreeWalk(ObjectReader& reader, PageTree::Damage damage)
        : reader_(reader),
          bypasses_(damage == PageTree::Damage::bypassed),
          room_(limits::kPages + reader.image().storedBytes() / limits::kBytesPerPage) {}

    PageTree run(Value root) {
        openRoot(findRoot(root));
        while (!open_.empty()) {
            OpenNode& top = open_.back();
            if (top.next == top.kids.size()) {
                close();
                continue;
            }
            const Kid kid = top.kids[top.next++];
            const auto found = kid.direct == PageTree::kNone
                                   ? followKid(kid.reference)
                                   : Found{0, Value(directs_[kid.direct])};
            if (found) visit(*found, PageTree::Inheritance(tree_.nodes_[top.node].inherited));
            reader_.trim();
        }
        return std::move(tree_);
    }

 private:
    /// What is wrong with a node, from the least to the worst.
    enum class Loss : std::uint8_t {
        none,
        broken,  ///< A kid is nothing that could be a page.
        lost,    ///< What could be a page is gone.
    };

    struct Kid {
        Reference reference;
        std::uint32_t direct = PageTree::kNone;  ///< An index into directs_.
    };

    /// A node whose kids are being visited.
    struct OpenNode {
        std::uint32_t node = 0;
        std::vector<Kid> kids;
        std::size_t next = 0;
        std::optional<std::int64_t> count;
        std::size_t pagesBefore = 0;
        Loss loss = Loss::none;
    };

    /// What the walk needs of a node or a page.
    struct Entries {
        Value type;
        Value kids;
        Value count;
        Value parent;
        Value contents;
        std::array<Value, kInheritableAttributes.size()> inheritable;

        /// Null where the key is that of another entry.
        [[nodiscard]] Value* placeOf(PageKey key) {
            if (key == PageKey::type) return &type;
            if (key == PageKey::kids) return &kids;
            if (key == PageKey::count) return &count;
            if (key == PageKey::parent) return &parent;
            const auto attribute = inheritableAttribute(key);
            return attribute ? &inheritable.at(*attribute) : nullptr;
        }

        /// Whether more than its /Kids says what it is: a node has no content, and a /Count if no
        /// /Kids.
        [[nodiscard]] bool looksLikePage() const {
            if (type.isName("Page") || !contents.isNull()) return true;
            return kids.isNull() && count.isNull() && !inheritable[kResources].isNull();
        }
    };

    /// A value and the object that it is, 0 for none.
    struct Found {
        std::uint32_t object = 0;
        Value value;
        bool isStream = false;
        bool isLast = false;  ///< Nothing was read after it: parts_ are its parts.
    };

    struct Node {
        Found found;
        Entries entries;
    };

    /// In one pass: some nodes are as long as the document.
    [[nodiscard]] Entries readEntries(const Found& found) const {
        DictionaryReader reader =
            found.isLast ? DictionaryReader(found.value, parts_) : DictionaryReader(found.value);
        Entries entries;
        while (const auto entry = reader.next()) {
            const PageKey key = pageKeyOf(entry->key);
            Value* const place = entries.placeOf(key);
            if (place != nullptr)
                takeLast(*place, entry->value);
            else if (key == PageKey::other && entry->key.isName("Contents"))
                takeLast(entries.contents, entry->value);
        }
        return entries;
    }

    /// Some files leave out /Type, or get it wrong; /Kids tells a node from a page. What looks like
    /// a page is one unless there is a kid: other readers show it, by its /Type or its content.
    [[nodiscard]] bool isNode(const Entries& entries) {
        if (entries.kids.isNull() && !entries.type.isName("Pages")) return false;
        return !entries.looksLikePage() || hasKid(entries.kids);
    }

    [[nodiscard]] bool hasKid(Value kids) {
        const Value list = reader_.resolveIfSound(kids);
        ArrayReader elements(list);
        while (const auto kid = elements.next())
            if (!kid->isNull()) return true;
        return list.isDictionary();
    }

    /// Notes damage in the node that is open, unless any damage is to be refused.
    void damaged(Loss loss, const char* what) {
        if (!bypasses_ || open_.empty()) throw DamagedDocument(what);
        open_.back().loss = std::max(open_.back().loss, loss);
    }

    /// A kid that is null is damage only where all the rest may be damaged, too.
    void noteNull() {
        if (bypasses_) damaged(Loss::broken, "");
    }

    Found read(Reference reference) {
        if (!reader_.exists(reference)) return {};
        const SourceObject object = reader_.read(reference.number, &parts_);
        return {reference.number, object.value, object.isStream, true};
    }

    /// What `value` leads to.
    Found follow(Value value) {
        Found found{0, value};
        for (int i = 0; i < limits::kReferenceChain; ++i) {
            const auto reference = found.value.reference();
            if (!reference) return found;
            found = read(*reference);
        }
        throw DamagedDocument("a chain of references without an end");
    }

    /// Nothing where the kid is null or gone.
    std::optional<Found> followKid(Reference reference) {
        try {
            Found found = read(reference);
            if (found.value.reference()) found = follow(found.value);
            if (!found.value.isNull()) return found;
            noteNull();
        } catch (const DamagedDocument&) {
            if (!bypasses_ || reader_.isExhausted()) throw;
            damaged(Loss::lost, "a page that is gone");
        }
        return std::nullopt;
    }

    /// What is at the root of the tree that `start` is in. Some catalogs name a node further down,
    /// or a page.
    Node findRoot(Value start) {
        const Found found = follow(start);
        if (!found.value.isDictionary()) throw DamagedDocument("a catalog without a page tree");
        Node root{found, readEntries(found)};
        std::set<std::uint32_t> visited{found.object};
        for (;;) {
            const Node parent = parentOf(root);
            if (!isNode(parent.entries) || !visited.insert(parent.found.object).second) return root;
            if (!bypasses_) throw DamagedDocument("a page tree that does not begin at its root");
            if (visited.size() > limits::kPageTreeDepth)
                throw DamagedDocument("too deep a page tree");
            root = parent;
        }
    }

    Node parentOf(const Node& node) {
        try {
            const Found found = follow(node.entries.parent);
            return {found, readEntries(found)};
        } catch (const DamagedDocument&) {
            if (!bypasses_ || reader_.isExhausted()) throw;
            return {};
        }
    }

    void openRoot(const Node& root) {
        PageTree::Inheritance nothing{};
        nothing.fill(PageTree::kNone);
        if (isNode(root.entries)) {
            visit(root.found, root.entries, nothing);
            return;
        }
        // A page in the place of the tree is the only one; a dictionary of any other kind is none.
        if (!bypasses_ || !root.entries.type.isName("Page"))
            throw DamagedDocument("a page where the page tree should be");
        tree_.nodes_.push_back({0, nothing});
        addPage(root.found);
    }

    /// Adds the page, or opens the node.
    void visit(const Found& found, const PageTree::Inheritance& inherited) {
        const std::uint64_t shape = found.isLast && !found.isStream ? parts_.shape() : 0;
        if (shape != 0 && shape == pageShape_) {
            addPage(found);
            return;
        }
        const Entries entries = readEntries(found);
        // Of what has /Kids that are an object, only these tell.
        if (entries.kids.isNull() && !isNode(entries)) pageShape_ = shape;
        visit(found, entries, inherited);
    }

    void visit(const Found& found, const Entries& entries, const PageTree::Inheritance& inherited) {
        // Where objects run into one another, a page may have become part of a stream.
        if (!found.value.isDictionary() || (bypasses_ && found.isStream)) {
            damaged(Loss::broken, "a page that is no dictionary");
            return;
        }
        if (!isNode(entries)) {
            addPage(found);
            return;
        }
        if (open_.size() == limits::kPageTreeDepth) throw DamagedDocument("too deep a page tree");
        if (found.object != 0 && !onPath_.insert(found.object).second) {
            damaged(Loss::broken, "a page tree that leads back into itself");
            return;
        }
        if (tree_.nodes_.size() == room_) throw DamagedDocument("too many nodes");
        openNode(found.object, entries, inherited);
    }

    void addPage(const Found& found) {
        if (tree_.pages_.size() == room_) throw DamagedDocument("too many pages");
        PageTree::Page page;
        page.object = found.object;
        page.node = open_.empty() ? 0 : open_.back().node;
        if (found.object == 0) {
            page.direct = static_cast<std::uint32_t>(tree_.directPages_.size());
            tree_.directPages_.emplace_back(found.value.text());
        }
        tree_.pages_.push_back(page);
    }

    void openNode(std::uint32_t object, const Entries& entries,
                  const PageTree::Inheritance& inherited) {
        PageTree::Node node{object, inherited};
        const PageTree::Inheritance own = ownValues(object, entries);
        for (std::size_t i = 0; i < own.size(); ++i)
            if (own[i] != PageTree::kNone) node.inherited[i] = own[i];
        OpenNode opened;
        opened.node = static_cast<std::uint32_t>(tree_.nodes_.size());
        opened.pagesBefore = tree_.pages_.size();
        tree_.nodes_.push_back(node);
        open_.push_back(std::move(opened));
        readKids(entries);
    }

    /// Fills the node that was just opened.
    void readKids(const Entries& entries) {
        OpenNode& node = open_.back();
        Value kids;
        try {
            node.count = reader_.resolve(entries.count).integer();
            kids = reader_.resolve(entries.kids);
        } catch (const DamagedDocument&) {
            if (!bypasses_ || reader_.isExhausted()) throw;
        }
        if (!kids.isArray()) {
            const bool promises = node.count.value_or(0) > 0 || !kids.isNull();
            if (promises) damaged(Loss::lost, "a node without kids");
            if (kids.isDictionary()) addKid(node, entries.kids);
            return;
        }
        ArrayReader reader(kids);
        while (const auto kid = reader.next()) addKid(node, *kid);
    }

    void addKid(OpenNode& node, Value kid) {
        if (const auto reference = kid.reference()) {
            node.kids.push_back({*reference});
        } else if (kid.isDictionary()) {
            directRoom_.spend(kid.text().size());
            node.kids.push_back({{}, static_cast<std::uint32_t>(directs_.size())});
            directs_.emplace_back(kid.text());
        } else if (kid.isNull()) {
            noteNull();
        } else {
            damaged(Loss::broken, "a page that is no dictionary");
        }
    }

    /// Leaves the node whose kids have all been visited, and lets the one above it know.
    void close() {
        const OpenNode node = std::move(open_.back());
        open_.pop_back();
        if (const std::uint32_t object = tree_.nodes_[node.node].object; object != 0)
            onPath_.erase(object);
        const Loss loss = lossOf(node);
        if (!open_.empty()) {
            open_.back().loss = std::max(open_.back().loss, loss);
            return;
        }
        if (loss == Loss::lost) throw DamagedDocument("a page tree that has lost pages");
        if (tree_.pages_.empty() && (bypasses_ || node.count.value_or(0) > 0))
            throw DamagedDocument("a page tree of which nothing is left");
    }

    /// What is wrong with the tree below a node. What its /Count promises decides, unless it is
    /// more than the file can hold.
    [[nodiscard]] Loss lossOf(const OpenNode& node) const {
        if (!bypasses_ || !node.count || *node.count <= 0) return node.loss;
        const auto promised = static_cast<std::uint64_t>(*node.count);
        if (promised > room_) return node.loss;
        const std::size_t pages = tree_.pages_.size() - node.pagesBefore;
        return promised <= pages ? Loss::none : Loss::lost;
    }

    /// The node's own inheritable values, kept once however often the node is listed.
    PageTree::Inheritance ownValues(std::uint32_t object, const Entries& entries) {
        if (const auto known = ownValues_.find(object); known != ownValues_.end())
            return known->second;
        PageTree::Inheritance own{};
        own.fill(PageTree::kNone);
        for (std::size_t i = 0; i < own.size(); ++i) {
            const Value value = entries.inheritable[i];
            if (reader_.isAbsent(value)) continue;
            own[i] = static_cast<std::uint32_t>(tree_.values_.size());
            tree_.values_.emplace_back(value.text());
        }
        if (object != 0) ownValues_.emplace(object, own);
        return own;
    }

    ObjectReader& reader_;
    bool bypasses_;
    std::uint64_t room_;  // for pages, and for nodes
    PageTree tree_;
    FoundParts parts_{FoundParts::Memory::shapesOfEntries};  // of what was read last
    std::uint64_t pageShape_ = 0;                            // that of the last page
    std::vector<OpenNode> open_;
    std::vector<std::string> directs_;  // kids that are no objects of their own
    WorkBudget directRoom_{limits::kDirectNodes, reader_.image().storedBytes()};
    std::set<std::uint32_t> onPath_;  // the nodes in open_
    std::map<std::uint32_t, PageTree::Inheritance> ownValues_;
};

PageTree PageTree::read(ObjectReader& reader, Value root, Damage damage) {
    return PageTreeWalk(reader, damage).run(root);
}

}  // namespace quirebind
