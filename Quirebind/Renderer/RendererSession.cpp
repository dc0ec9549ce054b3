// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Renderer/RendererSession.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QPdfSelection>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

#include "Platform/Files/FileSystem.h"
#include "Platform/PDF/Forms/FieldStamps.h"
#include "Platform/PDF/PDFDocument.h"
#include "Platform/PDF/Reading/SourceDocument.h"
#include "Quirebind/RenderProtocol/SocketFlags.h"
#include "Quirebind/Renderer/UpdatedFile.h"

namespace quirebind {

namespace {

QByteArray coded(const QPdfSelection& selection) {
    PageText text{selection.text(), {}};
    for (const QPolygonF& polygon : selection.bounds()) text.areas << polygon.boundingRect();
    return encode(text);
}

/// The word at a point of a page, on a line of text that ends at another; nothing selected
/// where there is none. The toolkit finds characters only as the ends of a selection.
QPdfSelection wordAt(QPdfDocument& document, int page, const QPointF& point,
                     const QPointF& endOfLine) {
    constexpr double kBefore = 30;
    QPdfSelection rest = document.getSelection(page, point, endOfLine);
    int at = rest.startIndex();
    if (!rest.isValid()) {  // the point is on the last character
        rest = document.getSelection(page, point - QPointF(kBefore, 0), point);
        at = rest.endIndex() - 1;
    }
    if (!rest.isValid()) return rest;
    const QString text = document.getAllText(page).text();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    finder.setPosition(at + 1);
    const qsizetype begin = finder.toPreviousBoundary();
    const qsizetype end = finder.toNextBoundary();
    if (begin < 0 || end <= begin) return rest;
    return document.getSelectionAtIndex(page, static_cast<int>(begin),
                                        static_cast<int>(end - begin));
}

/// What has the toolkit draw the fields of a form, which it leaves out. None of it is needed for
/// what else is on the pages.
std::string stampsForFields(FileDescriptor file) {
    try {
        SourceDocument document(std::move(file), FileSystem::native());
        return quirebind::stampsForFields(document);
    } catch (const std::exception&) {  // damage, or memory
        return {};
    }
}

/// The same pages, as our own library reads and writes them: it mends much that the toolkit does
/// not read. Nothing where it cannot either.
std::optional<ByteBuffer> mendedCopy(FileDescriptor file) {
    try {
        const auto source = PDFDocument::open(std::move(file), FileSystem::native());
        if (!source || source->pageCount() == 0) return std::nullopt;
        PDFDocument copy;
        for (std::size_t i = 0; i < source->pageCount(); ++i)
            if (!copy.insertPage(*source->pageAtIndex(i), i)) return std::nullopt;
        return std::move(copy).dataRepresentation();
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace

void RendererSession::run() {
    while (const auto request = receive()) {
        ::alarm(render::kSecondsForRequest);  // its signal ends the process
        if (!answer(*request)) return;
        ::alarm(0);
    }
}

std::optional<render::Request> RendererSession::receive() {
    render::Request request;
    iovec content{&request, sizeof request};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t received = 0;
    do {
        received = ::recvmsg(socket_, &message, MSG_WAITALL);
    } while (received < 0 && errno == EINTR);
    if (received != ssize_t{sizeof request} || request.magic != render::kMagic) return std::nullopt;
    const cmsghdr* header = CMSG_FIRSTHDR(&message);
    if (header != nullptr && header->cmsg_type == SCM_RIGHTS) {
        int number = -1;
        std::memcpy(&number, CMSG_DATA(header), sizeof number);
        // Nothing inherits it: this process starts no other.
        passed_ = FileDescriptor(FileSystem::native(), number);
    }
    return request;
}

bool RendererSession::reply(const render::Answer& answer,
                            std::span<const std::byte> content) const {
    const auto send = [this](std::span<const std::byte> bytes) {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), render::kNoSignal);
            if (sent < 0 && errno == EINTR) continue;
            if (sent <= 0) return false;
            bytes = bytes.subspan(static_cast<std::size_t>(sent));
        }
        return true;
    };
    return send(std::as_bytes(std::span(&answer, 1))) && send(content);
}

bool RendererSession::fail(const render::Request& request) const {
    return reply({.kind = render::Kind::failed, .id = request.id}, {});
}

bool RendererSession::hasPage(const render::Request& request) const {
    return document_ && std::cmp_less(request.page, document_->pageCount());
}

bool RendererSession::answer(const render::Request& request) {
    switch (request.kind) {
        case render::Kind::open:
            return open(request);
        case render::Kind::render:
            return draw(request);
        case render::Kind::text:
        case render::Kind::select:
        case render::Kind::word:
            return read(request);
        case render::Kind::failed:
            break;
    }
    return false;
}

bool RendererSession::open(const render::Request& request) {
    document_.reset();
    file_.reset();
    mended_.reset();
    if (passed_.number() < 0) return fail(request);
    std::string update =
        request.hasForm == 1 ? stampsForFields(passed_.duplicate()) : std::string();
    file_ = std::make_unique<UpdatedFile>(passed_.number(), std::move(update));
    document_ = std::make_unique<QPdfDocument>();
    document_->load(file_.get());
    if (document_->status() != QPdfDocument::Status::Ready) loadMendedCopy();
    // What is asked of a document that did not load fails then; opening it has been answered.
    if (document_->status() != QPdfDocument::Status::Ready) document_.reset();
    return reply({.kind = render::Kind::open, .id = request.id}, {});
}

void RendererSession::loadMendedCopy() {
    mended_ = mendedCopy(passed_.duplicate());
    if (!mended_) return;
    const std::string_view text = mended_->text();
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
    buffer->open(QIODevice::ReadOnly);
    document_ = std::make_unique<QPdfDocument>();
    file_ = std::move(buffer);
    document_->load(file_.get());
}

bool RendererSession::draw(const render::Request& request) {
    const std::uint64_t pixels = std::uint64_t{request.width} * request.height;
    if (!hasPage(request) || pixels == 0 || pixels > render::kMostPixels) return fail(request);
    const QSize size(static_cast<int>(request.width), static_cast<int>(request.height));
    QPdfDocumentRenderOptions options;
    options.setRenderFlags(QPdfDocumentRenderOptions::RenderFlag::Annotations);
    const QImage drawn = document_->render(static_cast<int>(request.page), size, options);
    QImage picture(size, QImage::Format_RGB32);
    if (drawn.isNull() || picture.isNull()) return fail(request);
    picture.fill(Qt::white);  // paper
    {
        QPainter painter(&picture);
        painter.drawImage(0, 0, drawn);
    }
    const std::span<const uchar> bytes(picture.constBits(),
                                       static_cast<std::size_t>(picture.sizeInBytes()));
    return reply({.kind = render::Kind::render,
                  .id = request.id,
                  .width = request.width,
                  .height = request.height,
                  .length = static_cast<std::uint32_t>(bytes.size())},
                 std::as_bytes(bytes));
}

bool RendererSession::read(const render::Request& request) {
    if (!hasPage(request)) return fail(request);
    const int page = static_cast<int>(request.page);
    const QPointF from(request.from.x, request.from.y);
    const QPointF to(request.to.x, request.to.y);
    QByteArray text;
    if (request.kind == render::Kind::text)
        text = coded(document_->getAllText(page));
    else if (request.kind == render::Kind::select)
        text = coded(document_->getSelection(page, from, to));
    else
        text = coded(wordAt(*document_, page, from, to));
    if (std::cmp_greater(text.size(), render::kMostText)) return fail(request);
    return reply(
        {.kind = request.kind, .id = request.id, .length = static_cast<std::uint32_t>(text.size())},
        std::as_bytes(std::span(text.constData(), static_cast<std::size_t>(text.size()))));
}

}  // namespace quirebind
