// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Quirebind/Preview/LinkFocus.h"

namespace quirebind {
namespace {

LinkFocus::Link link(const char* name, std::size_t page, double x, double y) {
    return {page, {.x = x, .y = y, .width = 10, .height = 10, .destination = name}};
}

const std::vector<LinkFocus::Link> kLinks{link("d", 1, 0, 0), link("c", 0, 0, 50),
                                          link("b", 0, 40, 10), link("a", 0, 0, 10)};

/// Where it comes by, until there is nothing more.
std::string walk(LinkFocus& focus, const std::vector<LinkFocus::Link>& links, bool forwards) {
    std::string names;
    while (focus.move(links, forwards)) names += focus.current()->area.destination;
    return names;
}

TEST(LinkFocus, GoesThroughAllInTheOrderOfReading) {
    LinkFocus focus;
    EXPECT_FALSE(focus.current());
    EXPECT_EQ(walk(focus, kLinks, true), "abcd");
    EXPECT_FALSE(focus.current());
    EXPECT_EQ(walk(focus, kLinks, false), "dcba");
    EXPECT_FALSE(focus.current());
}

TEST(LinkFocus, TurnsRound) {
    LinkFocus focus;
    focus.move(kLinks, true);
    focus.move(kLinks, true);
    EXPECT_TRUE(focus.move(kLinks, false));
    EXPECT_EQ(focus.current()->area.destination, "a");
}

TEST(LinkFocus, BeginsAnewWhereItsLinkIsOutOfSight) {
    LinkFocus focus;
    focus.move(kLinks, true);
    const std::vector below(kLinks.begin(), kLinks.begin() + 2);
    EXPECT_TRUE(focus.move(below, true));
    EXPECT_EQ(focus.current()->area.destination, "c");
    focus.move(below, false);
    EXPECT_FALSE(focus.current());
}

TEST(LinkFocus, ComesToAnEndWhereLinksBeginAtOnePoint) {
    LinkFocus focus;
    EXPECT_EQ(walk(focus, {link("a", 0, 1, 1), link("b", 0, 1, 1)}, true).size(), 1U);
    EXPECT_EQ(walk(focus, {}, true), "");
}

TEST(LinkFocus, CanBeReset) {
    LinkFocus focus;
    focus.move(kLinks, true);
    focus.reset();
    EXPECT_FALSE(focus.current());
}

}  // namespace
}  // namespace quirebind
