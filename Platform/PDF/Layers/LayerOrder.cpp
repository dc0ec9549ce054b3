// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Layers/LayerOrder.h"

#include <set>
#include <utility>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

/// Reads the arrays that stand in one another from the outside in, and writes from the inside out.
class OrderWalk {
 public:
    OrderWalk(ObjectReader& reader, const GroupCopies& copies) : reader_(reader), copies_(copies) {}

    std::string run(Value order) {
        open(order);
        for (;;) {
            if (const auto element = levels_.back().elements.next()) {
                read(*element);
            } else if (levels_.size() == 1) {
                return std::move(levels_.back().kept);
            } else {
                close();
            }
        }
    }

 private:
    struct Level {
        explicit Level(Value array) : elements(array) {}

        ArrayReader elements;
        std::string label;              ///< Kept once something behind it is.
        std::optional<Reference> left;  ///< The group just before, where it is not used.
        std::string kept;
    };

    void open(Value array) { levels_.emplace_back(array); }

    void close() {
        const std::string inner = std::move(levels_.back().kept);
        levels_.pop_back();
        Level& level = levels_.back();
        if (!inner.empty()) {
            if (level.left)
                if (const auto copy = copies_.use(*level.left)) keep(referenceText(*copy) + " ");
            keep("[" + inner + "]");
        }
        level.left.reset();
    }

    void read(Value element) {
        Level& level = levels_.back();
        if (const auto group = element.reference()) {
            if (const auto copy = copies_.find(*group)) {
                level.left.reset();
                keep(referenceText(*copy) + " ");
                return;
            }
            const Value value = reader_.resolve(element);
            if (value.isArray()) {
                // An array that is listed again would list its groups again.
                if (visited_.insert(group->number).second) nest(value);
            } else if (isString(value)) {
                level.label = value.text();
            } else {
                level.left = *group;
            }
        } else if (element.isArray()) {
            nest(element);
        } else if (isString(element)) {
            level.label = element.text();
        }
    }

    void nest(Value array) {
        if (levels_.size() < limits::kLayerOrderDepth) open(array);
    }

    void keep(const std::string& text) {
        Level& level = levels_.back();
        // What is deep inside is moved from level to level, and a label may be an object that many
        // refer to.
        room_.spend(text.size() + level.label.size());
        level.kept += std::exchange(level.label, {});
        level.kept += text;
    }

    ObjectReader& reader_;
    const GroupCopies& copies_;
    std::vector<Level> levels_;
    std::set<std::uint32_t> visited_;
    WorkBudget room_{limits::kLayerOrder, reader_.image().storedBytes()};
};

}  // namespace

std::string orderOfCopies(Value order, ObjectReader& reader, const GroupCopies& copies) {
    return OrderWalk(reader, copies).run(reader.resolve(order));
}

}  // namespace quirebind
