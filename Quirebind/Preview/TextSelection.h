// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "Quirebind/Preview/RenderClient.h"
#include "Quirebind/RenderProtocol/PageText.h"

namespace quirebind {

/// Text of a document selected by dragging, over any number of pages, or by clicking several times:
/// a word or a line.
///
/// The renderer knows which text lies between two points of a page, where each is on a character.
/// So every page of the selection first needs the places of its text, to which the points are
/// moved, and then the selected part. What is still missing is asked for bit by bit; meanwhile the
/// last answer is shown.
class TextSelection {
 public:
    /// A point of a page, in points from its upper left corner.
    struct Position {
        std::size_t page = 0;
        QPointF point;

        friend bool operator==(const Position&, const Position&) = default;
    };

    /// What is selected at once: nothing yet, the word at the point, or the line.
    enum class Unit : std::uint8_t { character, word, line };

    /// Forgets everything: there is another document, of that many pages.
    void reset(std::size_t pageCount);
    /// Nothing is selected any more.
    void clear();
    /// Begins a selection at `position`, with the `unit` that is there.
    void begin(const Position& position, Unit unit = Unit::character);
    /// Moves its other end to `position`. Does nothing where none was begun.
    void extend(const Position& position);
    /// Selects the text of all pages.
    void selectAll();
    /// Whether nothing is selected. What is may still turn out to have no text.
    [[nodiscard]] bool isEmpty() const;

    /// What to ask for next, of the pages from `first` to `last`, both included; nothing where all
    /// is there. The task's document is left to the caller.
    [[nodiscard]] std::optional<RenderTask> nextTask(std::size_t first, std::size_t last) const;
    /// The same for all that is selected.
    [[nodiscard]] std::optional<RenderTask> nextTask() const;
    /// Whether that would still be asked for, of whatever document it is.
    [[nodiscard]] bool wants(const RenderTask& task) const;
    /// Takes the answer to a task of a text, a selection or a word.
    void didRead(const RenderTask& task, const PageText& text);
    /// Asks again for what came without a text.
    void forgetFailures();

    /// What to highlight on a page.
    [[nodiscard]] QList<QRectF> areasOn(std::size_t page) const;
    /// The selected text, once all of it is there.
    [[nodiscard]] std::optional<QString> text() const;
    /// The whole text of a page; null where it is not known. Valid until the next change.
    [[nodiscard]] const PageText* pageText(std::size_t page) const;

 private:
    struct Part {
        bool whole = false;
        bool word = false;
        QPointF from;
        QPointF to;
        PageText text;
    };

    [[nodiscard]] bool contains(std::size_t page) const;
    [[nodiscard]] std::size_t firstPage() const;
    [[nodiscard]] std::size_t lastPage() const;
    /// What of the page is selected; nothing while the places of its text are missing.
    [[nodiscard]] std::optional<Part> part(std::size_t page) const;
    [[nodiscard]] std::optional<RenderTask> taskFor(std::size_t page) const;

    std::size_t pageCount_ = 0;
    std::optional<Position> anchor_;
    Position focus_;
    Unit unit_ = Unit::character;  // that a click selects
    bool all_ = false;
    std::map<std::size_t, PageText> texts_;
    std::map<std::size_t, Part> parts_;
};

}  // namespace quirebind
