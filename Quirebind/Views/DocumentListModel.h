// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractListModel>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Platform/Files/UUID.h"
#include "Quirebind/Workflow/InputPDF.h"

namespace quirebind {

/// The rows of the document list, which follow the documents of the state by their ids, so that the
/// list keeps its place and its selection where it can. Read-only.
class DocumentListModel : public QAbstractListModel {
 public:
    /// What a row is asked for: the file's name, and how many pages it has, as the user reads it.
    enum Role : std::uint16_t { nameRole = Qt::DisplayRole, pagesRole = Qt::UserRole };

    /// Brings the rows in line with the documents: takes out, reorders, puts in, and changes
    /// nothing where nothing has changed.
    void sync(std::span<const InputPDF> files);

    /// The id of a row; nothing where there is no such row.
    [[nodiscard]] std::optional<UUID> idAt(const QModelIndex& index) const;
    /// The row of a document; an invalid index where it is not listed.
    [[nodiscard]] QModelIndex indexOf(const UUID& id) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

 private:
    void removeMissing(std::span<const InputPDF> files);
    void reorder(std::span<const InputPDF> files);
    void insertNew(std::span<const InputPDF> files);

    std::vector<InputPDF> rows_;
};

}  // namespace quirebind
