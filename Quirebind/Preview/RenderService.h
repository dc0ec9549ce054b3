// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quirebind/Preview/HelperProcess.h"
#include "Quirebind/Preview/RenderClient.h"
#include "Quirebind/RenderProtocol/RenderProtocol.h"

namespace quirebind {

/// Has pages drawn, by a helper process that a bad document may take down without harm: one for the
/// whole application, started when something is first wanted and kept.
///
/// Previews are asked what they want most whenever the helper is idle (so what is scrolled past is
/// never drawn), and one request is under way at a time. A helper that crashes, answers nonsense,
/// or takes longer than its time is killed; that task has failed, and the next starts another
/// helper. The first task that a document fails at in this way is tried once more, since it need
/// not have been to blame. Where the task under way is no longer wanted, the helper has much less
/// time. A document that takes too many helpers down gets no more.
///
/// Where a helper cannot be started, everything fails, and another start is tried after a while,
/// later each time, or when the next document is made known.
///
/// Main thread only; nothing here ever waits.
class RenderService : public QObject {
 public:
    /// How long the helper may take, and how long after a start that failed the next is tried, both
    /// in milliseconds.
    struct Patience {
        int wanted = 10'000;
        int unwanted = 250;
        int restart = 2'000;
    };

    /// `helper` is the path of the helper program.
    explicit RenderService(std::string helper);
    /// The same with times of the caller's, for tests.
    RenderService(std::string helper, Patience patience);

    /// Serves `client` from now on, which must be removed before it goes.
    void add(RenderClient& client);
    /// Serves it no longer: no function of it is called any more.
    void remove(RenderClient& client);

    /// Makes a document known, of which `file` is open to be read. With a form it takes longer to
    /// open.
    [[nodiscard]] std::shared_ptr<const RenderDocument> document(FileDescriptor file,
                                                                 bool hasForm = false);

    /// Something else is wanted now than before.
    void wake();

    /// Starts the helper, so that the first page does not wait for it.
    void warmUp();

 private:
    struct UnderWay {
        RenderClient* client = nullptr;  // null once it was removed
        RenderTask task;
        std::uint64_t id = 0;
        bool opening = false;  // the document has to be opened first
        bool again = false;    // a helper has gone down over it already
    };

    void takeNext();
    void begin(RenderClient& client, RenderTask task, bool again = false);
    [[nodiscard]] bool startHelper();
    void restart();
    [[nodiscard]] bool send(const render::Request& request, int file = -1);
    [[nodiscard]] bool sendTask();
    void receive();
    /// Whether the answer that has begun to arrive is one to what was asked.
    [[nodiscard]] bool fits(const render::Answer& answer) const;
    void finish(const render::Answer& answer);
    void deliver(const render::Answer& answer);
    /// Gives the task under way up, and the helper with it.
    void fail();
    /// Takes note of killed helpers that have ended.
    void reap();
    [[nodiscard]] bool isWanted() const;
    [[nodiscard]] bool isGivenUp(std::uint64_t document) const;

    std::string path_;
    Patience patience_;
    std::vector<RenderClient*> clients_;  // the one served last comes last
    std::optional<UnderWay> underWay_;
    std::optional<UnderWay> again_;  // to be tried once more; its client is there
    std::uint64_t lastId_ = 0;
    std::uint64_t lastDocument_ = 0;

    std::optional<HelperProcess> helper_;
    std::vector<HelperProcess> dying_;  // killed, but not gone yet
    std::unique_ptr<QSocketNotifier> readable_;
    std::uint64_t opened_ = 0;  // the document that the helper holds
    std::vector<std::byte> received_;
    QTimer reaping_;
    QTimer deadline_;
    QTimer next_;
    QTimer restart_;  // runs while no helper can be started
    int rest_;        // how long it will run the next time

    std::uint64_t failing_ = 0;  // the document that failed last, and how often in a row
    int failures_ = 0;
    std::vector<std::uint64_t> givenUp_;
};

}  // namespace quirebind
