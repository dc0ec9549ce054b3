// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/DocumentListModel.h"

#include <algorithm>
#include <ranges>
#include <set>
#include <utility>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Look/Texts.h"

namespace quirebind {

namespace {

std::set<UUID> ids(std::span<const InputPDF> files) {
    std::set<UUID> result;
    for (const InputPDF& file : files) result.insert(file.id);
    return result;
}

}  // namespace

void DocumentListModel::sync(std::span<const InputPDF> files) {
    if (std::ranges::equal(rows_, files, {}, &InputPDF::id, &InputPDF::id)) return;
    removeMissing(files);
    reorder(files);
    insertNew(files);
}

void DocumentListModel::removeMissing(std::span<const InputPDF> files) {
    const std::set<UUID> kept = ids(files);
    for (int last = rowCount() - 1; last >= 0; --last) {
        if (kept.contains(rows_[static_cast<std::size_t>(last)].id)) continue;
        int first = last;
        while (first > 0 && !kept.contains(rows_[static_cast<std::size_t>(first) - 1].id)) --first;
        beginRemoveRows({}, first, last);
        rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
        endRemoveRows();
        last = first;
    }
}

void DocumentListModel::reorder(std::span<const InputPDF> files) {
    const std::set<UUID> present = ids(rows_);
    std::vector<InputPDF> ordered;
    for (const InputPDF& file : files)
        if (present.contains(file.id)) ordered.push_back(file);
    if (std::ranges::equal(rows_, ordered, {}, &InputPDF::id, &InputPDF::id)) return;

    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<std::optional<UUID>> tracked;
    for (const QModelIndex& index : before) tracked.push_back(idAt(index));
    rows_ = std::move(ordered);
    QModelIndexList after;
    for (const auto& id : tracked) after << (id ? indexOf(*id) : QModelIndex());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

void DocumentListModel::insertNew(std::span<const InputPDF> files) {
    for (std::size_t first = 0; first < files.size(); ++first) {
        if (first < rows_.size() && rows_[first].id == files[first].id) continue;
        std::size_t end = first + 1;
        while (end < files.size() && (first >= rows_.size() || files[end].id != rows_[first].id))
            ++end;
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(first),
                     files.begin() + static_cast<std::ptrdiff_t>(first),
                     files.begin() + static_cast<std::ptrdiff_t>(end));
        endInsertRows();
        first = end - 1;
    }
}

std::optional<UUID> DocumentListModel::idAt(const QModelIndex& index) const {
    if (!index.isValid() || index.row() >= rowCount()) return std::nullopt;
    return rows_[static_cast<std::size_t>(index.row())].id;
}

QModelIndex DocumentListModel::indexOf(const UUID& id) const {
    const auto row = std::ranges::find(rows_, id, &InputPDF::id);
    return row == rows_.end() ? QModelIndex() : index(static_cast<int>(row - rows_.begin()));
}

int DocumentListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant DocumentListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const InputPDF& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case nameRole:
            return displayName(row.url);
        case Qt::ToolTipRole:  // where two have the same name, this tells them apart
        case Qt::AccessibleDescriptionRole:
            return displayPath(row.url);
        case pagesRole:
            return text::pages(row.pages);
        case Qt::AccessibleTextRole:
            return text::row(displayName(row.url), text::pages(row.pages));
        default:
            return {};
    }
}

Qt::ItemFlags DocumentListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
           Qt::ItemNeverHasChildren;
}

}  // namespace quirebind
