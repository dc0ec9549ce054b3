// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/RenderService.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <utility>

namespace quirebind {

namespace {

constexpr int kMillisecondsBetweenReaping = 20;

/// The longest time between two attempts to start a helper.
constexpr int kMostMillisecondsToRestart = 60'000;

/// How often in a row a document may fail before it is given up.
constexpr int kMostFailures = 3;
/// The most that is read in one go, so that the window is never kept busy for long.
constexpr std::size_t kReadAtOnce = 4U << 20U;

std::span<const std::byte> payload(const std::vector<std::byte>& received) {
    return std::span(received).subspan(sizeof(render::Answer));
}

render::Kind kindOf(RenderTask::Kind kind) {
    switch (kind) {
        case RenderTask::Kind::text:
            return render::Kind::text;
        case RenderTask::Kind::selection:
            return render::Kind::select;
        case RenderTask::Kind::word:
            return render::Kind::word;
        case RenderTask::Kind::picture:
            break;
    }
    return render::Kind::render;
}

}  // namespace

RenderService::RenderService(std::string helper) : RenderService(std::move(helper), Patience()) {}

RenderService::RenderService(std::string helper, Patience patience)
    : path_(std::move(helper)), patience_(patience), rest_(patience.restart) {
    deadline_.setSingleShot(true);
    connect(&deadline_, &QTimer::timeout, this, [this] { fail(); });
    reaping_.setInterval(kMillisecondsBetweenReaping);
    connect(&reaping_, &QTimer::timeout, this, [this] { reap(); });
    next_.setSingleShot(true);
    next_.setInterval(0);
    connect(&next_, &QTimer::timeout, this, [this] { takeNext(); });
    restart_.setSingleShot(true);
    connect(&restart_, &QTimer::timeout, this, [this] { restart(); });
}

void RenderService::reap() {
    std::erase_if(dying_, [](HelperProcess& helper) { return helper.hasEnded(); });
    if (dying_.empty()) reaping_.stop();
}

void RenderService::add(RenderClient& client) {
    clients_.push_back(&client);
}

void RenderService::remove(RenderClient& client) {
    std::erase(clients_, &client);
    if (underWay_ && underWay_->client == &client) underWay_->client = nullptr;
    if (again_ && again_->client == &client) again_.reset();
    wake();
}

std::shared_ptr<const RenderDocument> RenderService::document(FileDescriptor file, bool hasForm) {
    if (restart_.isActive()) restart_.start(0);
    return std::make_shared<const RenderDocument>(
        RenderDocument{++lastDocument_, std::move(file), hasForm});
}

void RenderService::wake() {
    if (!underWay_) {
        next_.start();
    } else if (!isWanted() && deadline_.remainingTime() > patience_.unwanted) {
        deadline_.start(patience_.unwanted);
    }
}

void RenderService::warmUp() {
    (void)startHelper();
}

bool RenderService::isWanted() const {
    return underWay_->client != nullptr && underWay_->client->wants(underWay_->task);
}

bool RenderService::isGivenUp(std::uint64_t document) const {
    return std::ranges::find(givenUp_, document) != givenUp_.end();
}

// Asking.

void RenderService::takeNext() {
    if (!underWay_ && again_) {
        UnderWay second = *std::exchange(again_, std::nullopt);
        if (second.client->wants(second.task)) begin(*second.client, std::move(second.task), true);
    }
    const std::vector<RenderClient*> clients = clients_;
    for (RenderClient* client : clients) {
        while (!underWay_) {
            auto task = client->nextTask();
            if (!task) break;
            // In turn with the others.
            std::erase(clients_, client);
            clients_.push_back(client);
            begin(*client, std::move(*task));
        }
        if (underWay_) return;
    }
}

void RenderService::begin(RenderClient& client, RenderTask task, bool again) {
    const std::uint64_t document = task.document->number;
    if (isGivenUp(document) || restart_.isActive() || !startHelper()) {
        client.didFail(task);
        return;
    }
    underWay_ = UnderWay{&client, std::move(task), ++lastId_, opened_ != document, again};
    deadline_.start(patience_.wanted);
    bool sent = true;
    if (underWay_->opening) {
        const render::Request open{.kind = render::Kind::open,
                                   .id = underWay_->id,
                                   .hasForm = underWay_->task.document->hasForm ? 1U : 0U};
        sent = send(open, underWay_->task.document->file.number());
    } else {
        sent = sendTask();
    }
    if (!sent) fail();
}

bool RenderService::startHelper() {
    if (helper_) return true;
    helper_ = HelperProcess::start(path_, render::kSocket);
    if (!helper_) {
        restart_.start(rest_);
        rest_ = std::min(2 * rest_, kMostMillisecondsToRestart);
        return false;
    }
    rest_ = patience_.restart;
    opened_ = 0;
    received_.clear();
    readable_ = std::make_unique<QSocketNotifier>(helper_->socket(), QSocketNotifier::Read);
    connect(readable_.get(), &QSocketNotifier::activated, this, [this] { receive(); });
    return true;
}

void RenderService::restart() {
    if (!startHelper()) return;
    for (RenderClient* client : clients_) client->didRecover();
    wake();
}

bool RenderService::send(const render::Request& request, int file) {
    return helper_->send(std::as_bytes(std::span(&request, 1)), file);
}

bool RenderService::sendTask() {
    const RenderTask& task = underWay_->task;
    const render::Request request{
        .kind = kindOf(task.kind),
        .id = underWay_->id,
        .page = static_cast<std::uint32_t>(task.page),
        .width = static_cast<std::uint32_t>(std::max(task.pixels.width(), 0)),
        .height = static_cast<std::uint32_t>(std::max(task.pixels.height(), 0)),
        .from = {task.from.x(), task.from.y()},
        .to = {task.to.x(), task.to.y()}};
    return send(request);
}

// Answers.

void RenderService::receive() {
    const std::size_t begun = received_.size();
    received_.resize(begun + kReadAtOnce);
    const auto arrived = helper_->receive(std::span(received_).subspan(begun));
    received_.resize(begun + arrived.value_or(0));
    if (!arrived) {  // it has crashed, or ended itself
        fail();
        return;
    }
    if (received_.size() < sizeof(render::Answer)) return;
    render::Answer answer;
    std::memcpy(&answer, received_.data(), sizeof answer);
    if (!underWay_ || !fits(answer)) {
        fail();
        return;
    }
    const std::size_t whole = sizeof answer + answer.length;
    if (received_.size() < whole) return;
    if (received_.size() > whole)  // nobody asked for more
        fail();
    else
        finish(answer);
}

bool RenderService::fits(const render::Answer& answer) const {
    if (answer.magic != render::kMagic || answer.id != underWay_->id) return false;
    if (answer.kind == render::Kind::failed) return answer.length == 0;
    if (underWay_->opening) return answer.kind == render::Kind::open && answer.length == 0;
    const RenderTask& task = underWay_->task;
    if (answer.kind != kindOf(task.kind)) return false;
    if (task.kind != RenderTask::Kind::picture) return answer.length <= render::kMostText;
    return std::cmp_equal(answer.width, task.pixels.width()) &&
           std::cmp_equal(answer.height, task.pixels.height()) &&
           answer.length == std::uint64_t{answer.width} * answer.height * 4;
}

void RenderService::finish(const render::Answer& answer) {
    if (underWay_->opening && answer.kind == render::Kind::open) {
        opened_ = underWay_->task.document->number;
        underWay_->opening = false;
        received_.clear();
        if (!isWanted()) {
            underWay_.reset();
            deadline_.stop();
            next_.start();
        } else if (!sendTask()) {
            fail();
        }
        return;
    }
    deadline_.stop();
    if (underWay_->task.document->number == failing_) failures_ = 0;
    deliver(answer);
    received_.clear();
    next_.start();
}

void RenderService::deliver(const render::Answer& answer) {
    const bool wanted = isWanted();
    const UnderWay done = *std::exchange(underWay_, std::nullopt);
    if (!wanted) return;
    if (answer.kind == render::Kind::failed) {
        done.client->didFail(done.task);
        return;
    }
    const std::span<const std::byte> bytes = payload(received_);
    if (done.task.kind == RenderTask::Kind::picture) {
        QImage picture(done.task.pixels, QImage::Format_RGB32);
        if (picture.isNull()) {  // memory
            done.client->didFail(done.task);
            return;
        }
        std::memcpy(picture.bits(), bytes.data(), bytes.size());  // rows of 4-byte pixels: no gaps
        done.client->didRender(done.task, picture);
    } else if (const auto text = decodePageText(bytes)) {
        done.client->didRead(done.task, *text);
    } else {
        done.client->didFail(done.task);
    }
}

void RenderService::fail() {
    deadline_.stop();
    readable_.reset();
    received_.clear();
    if (helper_) {
        helper_->kill();
        dying_.push_back(std::move(*helper_));
        reaping_.start();
        helper_.reset();
    }
    if (!underWay_) return;
    const bool wanted = isWanted();
    const UnderWay failed = *std::exchange(underWay_, std::nullopt);
    next_.start();
    if (!wanted) return;  // it was only in the way
    const std::uint64_t document = failed.task.document->number;
    const int before = document == failing_ ? failures_ : 0;
    if (before == 0 && !failed.again) {
        again_ = failed;
        return;
    }
    failures_ = before + 1;
    failing_ = document;
    if (failures_ >= kMostFailures) givenUp_.push_back(document);
    failed.client->didFail(failed.task);
}

}  // namespace quirebind
