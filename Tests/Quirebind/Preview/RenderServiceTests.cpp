// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <deque>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Quirebind/Preview/RenderService.h"
#include "Tests/Quirebind/Preview/PreviewTestSupport.h"

// The helper as the window meets it: well-behaved, and in every way not.

namespace quirebind {
namespace {

using previewtest::Documents;
using previewtest::StandIn;
using previewtest::waitFor;

/// Wants what the test says, one after the other, and writes down what came of it.
struct Client : RenderClient {
    explicit Client(RenderService& renderer) : service(renderer) { service.add(*this); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    Client(Client&&) = delete;
    Client& operator=(Client&&) = delete;
    ~Client() override { service.remove(*this); }

    void want(const URL& wantedURL, std::size_t page = 0,
              RenderTask::Kind kind = RenderTask::Kind::picture) {
        if (!(wantedURL == url)) document = service.document(previewtest::openFile(wantedURL));
        url = wantedURL;
        wanted.push_back({kind, document, page, QSize(30, 40), {}, {}});
        service.wake();
    }
    /// Whether everything wanted so far has been answered in some way.
    [[nodiscard]] bool isDone() const { return wanted.empty() && !underWay; }

    [[nodiscard]] std::optional<RenderTask> nextTask() override {
        if (wanted.empty()) return std::nullopt;
        underWay = wanted.front();
        wanted.pop_front();
        return underWay;
    }
    [[nodiscard]] bool wants(const RenderTask& task) const override { return underWay == task; }
    void didRender(const RenderTask& task, const QImage& picture) override {
        EXPECT_EQ(picture.size(), task.pixels);
        outcomes.push_back(picture.pixelColor(5, 5).name().toStdString());
        underWay.reset();
    }
    void didRead(const RenderTask&, const PageText& text) override {
        outcomes.push_back(text.text.toStdString());
        underWay.reset();
    }
    void didFail(const RenderTask&) override {
        outcomes.emplace_back("failed");
        underWay.reset();
    }
    void didRecover() override { outcomes.emplace_back("recovered"); }
    void giveUp() {
        underWay.reset();
        service.wake();
    }

    std::shared_ptr<const RenderDocument> document;
    std::deque<RenderTask> wanted;
    std::vector<std::string> outcomes;
    RenderService& service;
    URL url = URL::file("/");
    std::optional<RenderTask> underWay;
};

/// The processes that this one has started and that have not been reaped.
std::vector<std::string> children() {
    std::vector<std::string> result;
    const std::string self = std::to_string(::getpid());
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream status(entry.path() / "stat");
        std::string id;
        std::string name;
        std::string state;
        std::string parent;
        if (status >> id >> name >> state >> parent && parent == self) result.push_back(name);
    }
    return result;
}

TEST(RenderService, DrawsPagesAndReadsText) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    const URL url = documents.make("a.pdf", "paint 112233", 3);
    client.want(url);
    client.want(url, 2, RenderTask::Kind::text);
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_THAT(client.outcomes, testing::ElementsAre("#112233", "page 2"));
}

TEST(RenderService, HandsTheFileOverAndNotItsName) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    const URL url = documents.make("a.pdf", "paint 445566");
    client.want(url);
    std::filesystem::remove(std::string(url.path()));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_THAT(client.outcomes, testing::ElementsAre("#445566"));
}

class Misbehaviour : public testing::TestWithParam<const char*> {};

TEST_P(Misbehaviour, FailsThatPageAndTheNextDocumentWorks) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    client.want(documents.make("bad.pdf", GetParam()));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    client.want(documents.make("good.pdf", "paint 00ff00"));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_THAT(client.outcomes, testing::ElementsAre("failed", "#00ff00"));
    EXPECT_TRUE(waitFor([] { return children().size() <= 1; })) << "no helper is left behind";
}

INSTANTIATE_TEST_SUITE_P(Of, Misbehaviour,
                         testing::Values("crash", "hang", "fail", "crash-on-open", "hang-on-open",
                                         "garbage", "other-id", "other-size", "other-kind",
                                         "too-long", "half"),
                         [](const auto& behaviour) {
                             std::string name = behaviour.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST(RenderService, EndsAHelperThatSaysMoreThanItWasAsked) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    client.want(documents.make("bad.pdf", "chatter"));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    client.want(documents.make("good.pdf", "paint 00ff00"));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_EQ(client.outcomes.back(), "#00ff00");
}

TEST(RenderService, GivesADocumentUpThatTakesHelpersDown) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    const URL url = documents.make("bad.pdf", "hang", 100);
    for (std::size_t page = 0; page < 100; ++page) client.want(url, page);
    // A hundred times its patience would be minutes.
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_EQ(client.outcomes, std::vector<std::string>(100, "failed"));
}

TEST(RenderService, DoesNotWaitForWhatIsNoLongerWanted) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    const URL slow = documents.make("slow.pdf", "hang");
    const URL good = documents.make("good.pdf", "paint 00ff00");
    // More often than a document may fail: that it was in the way is not its fault.
    for (int i = 0; i < 5; ++i) {
        client.want(slow);
        ASSERT_TRUE(waitFor([&] { return client.wanted.empty(); }));
        client.giveUp();
        client.want(good);
        ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    }
    EXPECT_EQ(client.outcomes, std::vector<std::string>(5, "#00ff00"));
}

TEST(RenderService, ServesPreviewsInTurn) {
    const Documents documents;
    StandIn standIn;
    Client one(standIn.service);
    Client two(standIn.service);
    const URL red = documents.make("red.pdf", "paint ff0000", 20);
    const URL blue = documents.make("blue.pdf", "paint 0000ff", 20);
    for (std::size_t page = 0; page < 20; ++page) {
        one.want(red, page);
        two.want(blue, page);
    }
    ASSERT_TRUE(waitFor([&] { return two.outcomes.size() == 2; }));
    EXPECT_LE(one.outcomes.size(), 4U);
    ASSERT_TRUE(waitFor([&] { return one.isDone() && two.isDone(); }));
    EXPECT_EQ(one.outcomes, std::vector<std::string>(20, "#ff0000"));
    EXPECT_EQ(two.outcomes, std::vector<std::string>(20, "#0000ff"));
}

TEST(RenderService, LetsAPreviewGoWhileItIsServed) {
    const Documents documents;
    StandIn standIn;
    Client stays(standIn.service);
    {
        Client goes(standIn.service);
        goes.want(documents.make("slow.pdf", "slowly ff0000"));
        ASSERT_TRUE(waitFor([&] { return goes.wanted.empty(); }));
    }
    stays.want(documents.make("good.pdf", "paint 00ff00"));
    ASSERT_TRUE(waitFor([&] { return stays.isDone(); }));
    EXPECT_THAT(stays.outcomes, testing::ElementsAre("#00ff00"));
}

TEST(RenderService, FailsQuietlyWithoutAHelper) {
    const Documents documents;
    RenderService service("/nowhere/renderer");
    Client client(service);
    client.want(documents.make("a.pdf", "paint"));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_THAT(client.outcomes, testing::ElementsAre("failed"));
}

TEST(RenderService, TriesAnewToStartAHelperThatCouldNotBeStarted) {
    const Documents documents;
    const std::string helper = documents.folder / "renderer";
    RenderService service(helper, RenderService::Patience{.restart = 20});
    Client client(service);
    const URL url = documents.make("a.pdf", "paint 112233");
    client.want(url);
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    std::filesystem::create_symlink(QUIREBIND_STAND_IN_RENDERER, helper);
    ASSERT_TRUE(waitFor([&] { return client.outcomes.back() == "recovered"; }));
    client.want(url);
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_THAT(client.outcomes, testing::ElementsAre("failed", "recovered", "#112233"));
}

TEST(RenderService, DoesNotLetTheNextDocumentWaitForThat) {
    constexpr int kLongerThanTheTest = 1'000'000;
    const Documents documents;
    const std::string helper = documents.folder / "renderer";
    RenderService service(helper, RenderService::Patience{.restart = kLongerThanTheTest});
    Client client(service);
    client.want(documents.make("a.pdf", "paint 112233"));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    std::filesystem::create_symlink(QUIREBIND_STAND_IN_RENDERER, helper);
    const auto next = service.document(previewtest::openFile(documents.make("b.pdf", "paint")));
    ASSERT_TRUE(waitFor([&] { return client.outcomes.back() == "recovered"; }));
    EXPECT_NE(next, nullptr);
}

TEST(RenderService, TriesAPageAgainThatAHelperDiedOver) {
    const Documents documents;
    StandIn standIn;
    Client client(standIn.service);
    client.want(documents.make("a.pdf", "crash-once 778899"));
    ASSERT_TRUE(waitFor([&] { return client.isDone(); }));
    EXPECT_THAT(client.outcomes, testing::ElementsAre("#778899"));
}

TEST(RenderService, LeavesNoHelperBehind) {
    const Documents documents;
    {
        StandIn standIn;
        Client client(standIn.service);
        client.want(documents.make("bad.pdf", "hang"));
        ASSERT_TRUE(waitFor([&] { return client.wanted.empty(); }));
        EXPECT_EQ(children().size(), 1U);
    }
    EXPECT_THAT(children(), testing::IsEmpty());
}

}  // namespace
}  // namespace quirebind
