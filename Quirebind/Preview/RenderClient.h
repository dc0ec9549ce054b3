// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "Platform/Files/FileDescriptor.h"
#include "Quirebind/RenderProtocol/PageText.h"

namespace quirebind {

/// A document as the renderer knows it: its open file, and a number that no other document has.
struct RenderDocument {
    std::uint64_t number = 0;
    FileDescriptor file;
    bool hasForm = false;
};

/// Something that a preview wants drawn or read.
struct RenderTask {
    /// The picture of a page, all of its text, the text between two points, or the word at one.
    enum class Kind : std::uint8_t { picture, text, selection, word };

    Kind kind = Kind::picture;
    std::shared_ptr<const RenderDocument> document;
    std::size_t page = 0;
    QSize pixels;  ///< Of a picture.
    QPointF from;  ///< Of a selection, or where the word is, in points from the page's upper left
                   ///< corner.
    QPointF to;

    /// Whether the same is wanted of the very same RenderDocument.
    friend bool operator==(const RenderTask&, const RenderTask&) = default;
};

/// A preview, as the renderer sees it. Main thread only.
class RenderClient {
 public:
    RenderClient() = default;
    RenderClient(const RenderClient&) = delete;
    RenderClient& operator=(const RenderClient&) = delete;
    RenderClient(RenderClient&&) = delete;
    RenderClient& operator=(RenderClient&&) = delete;
    virtual ~RenderClient() = default;

    /// What is wanted most at this moment; nothing where all is there.
    [[nodiscard]] virtual std::optional<RenderTask> nextTask() = 0;
    /// Whether the answer to a task that was taken earlier is still of use.
    [[nodiscard]] virtual bool wants(const RenderTask& task) const = 0;

    // Answers, to tasks that are still wanted.

    /// The picture of a page, of as many pixels as were asked for.
    virtual void didRender(const RenderTask& task, const QImage& picture) = 0;
    /// The text of a page, or the selected part of it.
    virtual void didRead(const RenderTask& task, const PageText& text) = 0;
    /// There is no answer and will not be: the renderer failed over it.
    virtual void didFail(const RenderTask& task) = 0;
    /// The renderer, which could not be started for a while, works again: what failed meanwhile can
    /// be asked for anew.
    virtual void didRecover() = 0;
};

}  // namespace quirebind
