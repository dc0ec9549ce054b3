// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Quirebind/RenderProtocol/PageText.h"
#include "Quirebind/RenderProtocol/RenderProtocol.h"

// Stands in for the helper that draws pages, and does with each document what a comment at its end
// says:
//
//     %behaviour NAME ARGUMENT
//
//     paint RRGGBB    every page in that colour (what happens without a comment, in white)
//     slowly RRGGBB   the same, after 0.15 seconds
//     crash, hang, fail
//     crash-once RRGGBB   crashes over the first request, and takes the right to write the file
//     away
//                     to remember that; then every page in that colour
//     fail-wide RRGGBB    does not draw pictures of more than 500 pixels across
//     crash-on-open, hang-on-open
//     garbage         bytes of no meaning
//     other-id, other-size, other-kind, too-long
//     half            half a picture, and then nothing
//     chatter         the picture and something more

namespace {

using namespace quirebind;

constexpr off_t kLongestComment = 200;
constexpr std::uint32_t kWide = 500;

struct Document {
    int file = -1;
    std::string behaviour = "paint";
    std::uint32_t colour = 0xffffffff;
};

bool sendAll(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(render::kSocket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
    return true;
}

Document read(int file) {
    std::string content(kLongestComment, '\0');
    const off_t begin = std::max<off_t>(::lseek(file, 0, SEEK_END) - kLongestComment, 0);
    const ssize_t size = ::pread(file, content.data(), content.size(), begin);
    content.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    Document document;
    const std::string mark = "%behaviour ";
    const std::size_t at = content.find(mark);
    if (at == std::string::npos) return document;
    const std::string line =
        content.substr(at + mark.size(), content.find('\n', at) - at - mark.size());
    const std::size_t space = line.find(' ');
    document.behaviour = line.substr(0, space);
    if (space != std::string::npos)
        document.colour = 0xff000000U | static_cast<std::uint32_t>(
                                            std::stoul(line.substr(space + 1), nullptr, 16));
    return document;
}

std::optional<render::Request> receive(std::optional<Document>& document) {
    render::Request request;
    iovec content{&request, sizeof request};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    if (::recvmsg(render::kSocket, &message, MSG_WAITALL) != ssize_t{sizeof request})
        return std::nullopt;
    if (const cmsghdr* header = CMSG_FIRSTHDR(&message); header != nullptr) {
        int file = -1;
        std::memcpy(&file, CMSG_DATA(header), sizeof file);
        if (document) ::close(document->file);
        document = read(file);
        document->file = file;
    }
    return request;
}

[[noreturn]] void hang() {
    for (;;) ::pause();
}

/// Whether this is the first time that it is asked of the file.
bool isFirst(int file) {
    struct stat status{};
    if (::fstat(file, &status) != 0 || (status.st_mode & S_IWUSR) == 0) return false;
    return ::fchmod(file, S_IRUSR) == 0;
}

bool respond(const render::Request& request, const Document& document) {
    const std::string& does = document.behaviour;
    const bool opens = request.kind == render::Kind::open;
    if (does == (opens ? "crash-on-open" : "crash")) (void)std::raise(SIGSEGV);
    if (does == (opens ? "hang-on-open" : "hang")) hang();
    if (does == "crash-once" && !opens && isFirst(document.file)) (void)std::raise(SIGSEGV);
    if (opens) {
        const render::Answer opened{.kind = render::Kind::open, .id = request.id};
        return sendAll(std::as_bytes(std::span(&opened, 1)));
    }
    render::Answer answer{.kind = request.kind, .id = request.id};
    std::vector<std::byte> content;
    if (request.kind == render::Kind::render) {
        const std::vector<std::uint32_t> pixels(std::size_t{request.width} * request.height,
                                                document.colour);
        const auto bytes = std::as_bytes(std::span(pixels));
        content.assign(bytes.begin(), bytes.end());
        answer.width = request.width;
        answer.height = request.height;
    } else {
        const QByteArray text =
            encode({QStringLiteral("page %1").arg(request.page), {QRectF(10, 10, 80, 12)}});
        const auto bytes =
            std::as_bytes(std::span(text.constData(), static_cast<std::size_t>(text.size())));
        content.assign(bytes.begin(), bytes.end());
    }
    answer.length = static_cast<std::uint32_t>(content.size());
    if (does == "slowly") ::usleep(150'000);
    if (does == "fail" || (does == "fail-wide" && request.width > kWide)) {
        answer = {.kind = render::Kind::failed, .id = request.id};
        content.clear();
    }
    if (does == "garbage") answer.magic = 0x5a5a5a5a;
    if (does == "other-id") ++answer.id;
    if (does == "other-size") ++answer.width;
    if (does == "other-kind") answer.kind = render::Kind::open;
    if (does == "too-long") answer.length = 0xfffffff0;
    if (does == "chatter") content.insert(content.end(), 5, std::byte{1});
    if (does == "half") content.resize(content.size() / 2);
    return sendAll(std::as_bytes(std::span(&answer, 1))) && sendAll(content);
}

}  // namespace

int main() {
    std::optional<Document> document;
    while (const auto request = receive(document))
        if (!respond(*request, document.value_or(Document()))) return 0;
    return 0;
}
