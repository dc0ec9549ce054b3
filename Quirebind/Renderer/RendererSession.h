// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIODevice>
#include <QPdfDocument>
#include <memory>
#include <optional>
#include <span>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/FileDescriptor.h"
#include "Quirebind/RenderProtocol/PageText.h"
#include "Quirebind/RenderProtocol/RenderProtocol.h"

namespace quirebind {

/// The helper's side of the conversation: answers one request after the other until the socket is
/// closed. Holds the document opened last.
class RendererSession {
 public:
    /// `socket` is blocking and stays the caller's.
    explicit RendererSession(int socket) : socket_(socket) {}

    /// Answers requests until the other end closes the socket or says what makes no sense.
    void run();

 private:
    /// Nothing once the other side is gone.
    [[nodiscard]] std::optional<render::Request> receive();
    /// False where the other side is gone.
    [[nodiscard]] bool reply(const render::Answer& answer,
                             std::span<const std::byte> content) const;
    [[nodiscard]] bool answer(const render::Request& request);
    [[nodiscard]] bool open(const render::Request& request);
    void loadMendedCopy();
    [[nodiscard]] bool draw(const render::Request& request);
    [[nodiscard]] bool read(const render::Request& request);
    [[nodiscard]] bool fail(const render::Request& request) const;
    [[nodiscard]] bool hasPage(const render::Request& request) const;

    int socket_;
    FileDescriptor passed_;                   // the file that came with the request
    std::optional<ByteBuffer> mended_;        // in place of a file that cannot be read otherwise
    std::unique_ptr<QIODevice> file_;         // that, or the file
    std::unique_ptr<QPdfDocument> document_;  // reads from the file
};

}  // namespace quirebind
