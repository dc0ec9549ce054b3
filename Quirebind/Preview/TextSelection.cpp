// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/TextSelection.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quirebind {

namespace {

/// The texts of this many pages are kept while nothing of them is selected.
constexpr std::size_t kMostTexts = 64;
constexpr double kInside = 0.5;  // points

/// The line of text that is nearest to a point. Needs one.
const QRectF& lineAt(const QList<QRectF>& areas, const QPointF& point) {
    const auto distance = [&point](const QRectF& area) {
        const double x = point.x() - std::clamp(point.x(), area.left(), area.right());
        const double y = point.y() - std::clamp(point.y(), area.top(), area.bottom());
        return x * x + 4 * y * y;  // lines are told apart by their height on the page first
    };
    return *std::ranges::min_element(areas, {}, distance);
}

double marginOf(const QRectF& area) {
    return std::min(kInside, area.width() / 2);
}

/// The place on a line of text that is nearest to a point.
QPointF onText(const QList<QRectF>& areas, const QPointF& point) {
    const QRectF& line = lineAt(areas, point);
    const double margin = marginOf(line);
    return {std::clamp(point.x(), line.left() + margin, line.right() - margin), line.center().y()};
}

QPointF beginOf(const QRectF& area) {
    return {area.left() + marginOf(area), area.center().y()};
}

QPointF endOf(const QRectF& area) {
    return {area.right() - marginOf(area), area.center().y()};
}

}  // namespace

void TextSelection::reset(std::size_t pageCount) {
    clear();
    texts_.clear();
    pageCount_ = pageCount;
}

void TextSelection::clear() {
    anchor_.reset();
    all_ = false;
    parts_.clear();
    if (texts_.size() > kMostTexts) texts_.clear();
}

void TextSelection::begin(const Position& position, Unit unit) {
    clear();
    unit_ = unit;
    anchor_ = position;
    focus_ = position;
}

void TextSelection::extend(const Position& position) {
    if (!anchor_) return;
    focus_ = position;
    std::erase_if(parts_, [this](const auto& entry) { return !contains(entry.first); });
}

void TextSelection::selectAll() {
    clear();
    all_ = pageCount_ > 0;
}

bool TextSelection::isEmpty() const {
    return !all_ && (!anchor_ || (*anchor_ == focus_ && unit_ == Unit::character));
}

std::size_t TextSelection::firstPage() const {
    return all_ ? 0 : std::min(anchor_->page, focus_.page);
}

std::size_t TextSelection::lastPage() const {
    return all_ ? pageCount_ - 1 : std::max(anchor_->page, focus_.page);
}

bool TextSelection::contains(std::size_t page) const {
    return !isEmpty() && page >= firstPage() && page <= lastPage();
}

std::optional<TextSelection::Part> TextSelection::part(std::size_t page) const {
    const PageText* text = pageText(page);
    if (text == nullptr) return std::nullopt;
    const bool begins = !all_ && page == firstPage();
    const bool ends = !all_ && page == lastPage();
    if (text->areas.isEmpty() || (!begins && !ends)) return Part{true, false, {}, {}, {}};
    if (*anchor_ == focus_) {
        const QPointF point = onText(text->areas, focus_.point);
        const QRectF& line = lineAt(text->areas, focus_.point);
        if (unit_ == Unit::word) return Part{false, true, point, endOf(line), {}};
        return Part{false, false, beginOf(line), endOf(line), {}};
    }
    Position first = *anchor_;
    Position last = focus_;
    if (first.page > last.page) std::swap(first, last);
    const QPointF from =
        begins ? onText(text->areas, first.point) : beginOf(text->areas.constFirst());
    const QPointF to = ends ? onText(text->areas, last.point) : endOf(text->areas.constLast());
    return Part{false, false, from, to, {}};
}

std::optional<RenderTask> TextSelection::taskFor(std::size_t page) const {
    const auto needed = part(page);
    if (!needed) return RenderTask{RenderTask::Kind::text, nullptr, page, {}, {}, {}};
    if (needed->whole) return std::nullopt;
    const auto known = parts_.find(page);
    if (known != parts_.end() && known->second.word == needed->word &&
        known->second.from == needed->from && known->second.to == needed->to)
        return std::nullopt;
    const auto kind = needed->word ? RenderTask::Kind::word : RenderTask::Kind::selection;
    return RenderTask{kind, nullptr, page, {}, needed->from, needed->to};
}

std::optional<RenderTask> TextSelection::nextTask(std::size_t first, std::size_t last) const {
    if (isEmpty()) return std::nullopt;
    for (std::size_t page = std::max(first, firstPage()); page <= std::min(last, lastPage());
         ++page)
        if (auto task = taskFor(page)) return task;
    return std::nullopt;
}

std::optional<RenderTask> TextSelection::nextTask() const {
    return nextTask(0, std::numeric_limits<std::size_t>::max());
}

bool TextSelection::wants(const RenderTask& task) const {
    if (!contains(task.page)) return false;
    auto wanted = taskFor(task.page);
    if (!wanted) return false;
    wanted->document = task.document;
    return *wanted == task;
}

void TextSelection::didRead(const RenderTask& task, const PageText& text) {
    if (task.kind == RenderTask::Kind::text)
        texts_[task.page] = text;
    else
        parts_[task.page] =
            Part{false, task.kind == RenderTask::Kind::word, task.from, task.to, text};
}

void TextSelection::forgetFailures() {
    std::erase_if(texts_, [](const auto& entry) { return entry.second.text.isEmpty(); });
    std::erase_if(parts_, [](const auto& entry) { return entry.second.text.text.isEmpty(); });
}

QList<QRectF> TextSelection::areasOn(std::size_t page) const {
    if (!contains(page)) return {};
    const auto needed = part(page);
    const PageText* whole = pageText(page);
    if (whole != nullptr && needed->whole) return whole->areas;
    const auto known = parts_.find(page);
    return known == parts_.end() ? QList<QRectF>() : known->second.text.areas;
}

std::optional<QString> TextSelection::text() const {
    if (isEmpty()) return QString();
    QString result;
    for (std::size_t page = firstPage(); page <= lastPage(); ++page) {
        if (taskFor(page)) return std::nullopt;
        if (page > firstPage()) result += QLatin1Char('\n');
        const PageText* whole = pageText(page);
        if (whole != nullptr && part(page)->whole)
            result += whole->text;
        else
            result += parts_.at(page).text.text;
    }
    return result;
}

const PageText* TextSelection::pageText(std::size_t page) const {
    const auto text = texts_.find(page);
    return text == texts_.end() ? nullptr : &text->second;
}

}  // namespace quirebind
