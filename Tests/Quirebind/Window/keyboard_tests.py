# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Everything with the keyboard alone. No test in here touches the pointer."""

import unittest
from typing import Sequence

from driver import documents
from driver.announcements import Announcements
from driver.picture import Colour
from window_test_case import WindowTestCase

TEAL: Colour = (0x00, 0x86, 0x98)
DIVIDER = "Divider between the documents and the preview"


class KeyboardTestCase(WindowTestCase):

    def add_by_keys(self, *names: str, pages: int = 1) -> None:
        """Adds documents of these names, made where they are not there yet."""
        before = len(self.rows())
        self.key("ctrl+o")
        self.choose(*(self.pdf(name, pages) for name in names))
        self.expect(lambda: len(self.rows()) == before + len(names), "they are listed")

    def expect_round(self, key: str, names: Sequence[str]) -> None:
        """Presses the key again and again, and expects the focus to come by these, in this order,
        the last of which has it at first."""
        self.expect_focus(names[-1])
        visited = []
        for _ in names:
            before = self.program.accessible().focus()
            self.key(key)
            visited.append(self.expect(
                lambda: self.program.accessible().focus() != before
                and self.program.accessible().focus(), "the focus moves on").name)
        self.assertEqual(visited, list(names))


class TypicalUse(KeyboardTestCase):

    def test_from_the_first_document_to_the_new_file(self) -> None:
        self.key("ctrl+o")
        self.choose(self.pdf("a.pdf", 2), self.pdf("b.pdf"))
        self.expect_rows(["a.pdf, 2 pages", "b.pdf, 1 pages"])
        self.key("F6")
        self.expect_focus("a.pdf, 2 pages")
        self.key("alt+Down")
        self.expect_rows(["b.pdf, 1 pages", "a.pdf, 2 pages"])
        self.key("ctrl+Return")
        output = self.documents / "joined.pdf"
        self.save_as(output)
        self.expect_button("Show in Finder")
        self.assertEqual(documents.page_labels(output), ["b 1", "a 1", "a 2"])
        self.expect_focus("a.pdf, 2 pages")
        for _ in range(9):
            if self.button("Show in Finder").focused:
                break
            self.key("Tab")
            self.expect(lambda: self.program.accessible().focus(), "something has the focus")
        self.expect_focus("Show in Finder")
        self.picture().save("keyboard-focus-on-a-button")
        self.key("space")
        opened = self.expect(self.program.opened_elsewhere, "the folder is opened")
        self.assertEqual([uri.rstrip("/") for uri in opened], [self.documents.as_uri()])

    def test_a_link_is_followed_and_back(self) -> None:
        documents.linked_pdf(self.documents / "linked.pdf")
        self.key("ctrl+o")
        self.choose(self.documents / "linked.pdf")
        self.expect_rows(["linked.pdf, 3 pages"])
        self.key("F6", "F6")
        self.expect_focus("linked.pdf")

        def expect_told(position: str) -> None:
            self.expect(lambda: self.preview().description.split("\n")[0] == position,
                        f"it tells {position}")
        expect_told("Page 1 of 3")
        without = self.picture("preview").count_close_to(TEAL, 24)
        self.key("Tab")
        expect_told("Page 3 of 3")
        self.expect(lambda: self.picture("preview").count_close_to(TEAL, 24) > without + 400,
                    "there is a frame around the link", timeout=3)
        self.picture().save("keyboard-focus-on-a-link")
        self.key("Return", "Tab")
        self.expect(lambda: not self.preview().focused, "the last page has no link to stay for")
        self.key("shift+Tab")
        expect_told("Page 3 of 3")
        self.key("alt+Left")
        expect_told("Page 1 of 3")

    def test_a_document_is_taken_off_and_another_is_put_first(self) -> None:
        self.add_by_keys("a.pdf", "b.pdf")
        self.key("F6", "Delete")
        self.expect_rows(["b.pdf, 1 pages"])
        self.add_by_keys("c.pdf")
        self.key("End", "alt+Up")
        self.expect_rows(["c.pdf, 1 pages", "b.pdf, 1 pages"])
        self.key("Menu")
        self.key("Down", "Down", "Return")
        self.expect_rows(["b.pdf, 1 pages", "c.pdf, 1 pages"])


class Menus(KeyboardTestCase):

    def setUp(self) -> None:
        super().setUp()
        self.announcements = Announcements(self.desktop)
        self.addCleanup(self.announcements.end)

    def test_both_keys_for_menus_open_the_same(self) -> None:
        self.add_by_keys("a.pdf", "b.pdf")
        for region, place, items in ((1, "a.pdf, 1 pages", ["Up", "Down", "Remove"]),
                                     (2, "a.pdf", ["Copy", "Zoom In", "Zoom Out", "Fit Width"])):
            opened = []
            for key in ("Menu", "shift+F10"):
                with self.subTest(f"{key} on {place}"):
                    self.button("Add PDFs…").press("SetFocus")
                    self.expect_focus("Add PDFs…")
                    self.key(*["F6"] * region)
                    self.expect_focus(place)
                    self.key(key)
                    menu = self.expect(self.announcements.menu, "a menu opens", timeout=3)
                    self.assertEqual([item.name.split("\t")[0] for item in menu.children
                                      if item.role == "menu item"], items)
                    opened.append(menu.extents)
                    self.key("Escape")
                    self.expect_focus(place)
            self.assertEqual(opened, opened[:1] * 2)

    def test_an_item_of_the_menu_is_chosen(self) -> None:
        self.add_by_keys("a.pdf", "b.pdf")
        self.key("F6", "shift+F10", "Down", "Down", "Return")
        self.expect_rows(["b.pdf, 1 pages", "a.pdf, 1 pages"])


class Order(KeyboardTestCase):

    def test_tab_goes_round_in_the_order_of_reading(self) -> None:
        self.expect_round("Tab", [DIVIDER, "Add PDFs…"])
        self.add_by_keys("a.pdf", "b.pdf")
        self.key("ctrl+Return")
        self.save_as(self.documents / "joined.pdf")
        self.expect_button("Show in Finder")
        order = ["a.pdf, 1 pages", "Up", "Down", "Remove", DIVIDER, "a.pdf", "Show in Finder",
                 "Merge PDFs…", "Add PDFs…"]
        with self.subTest("forwards"):
            self.expect_round("Tab", order)
        with self.subTest("backwards"):
            self.key("F6", "shift+F6")
            self.expect_round("shift+Tab", [*order[-2::-1], order[-1]])

    def test_f6_goes_round_the_regions(self) -> None:
        self.add_by_keys("a.pdf")
        # Nothing of the merge bar can be used yet.
        self.expect_round("F6", ["a.pdf, 1 pages", "a.pdf", "Add PDFs…"])
        self.add_by_keys("b.pdf")
        self.expect_round("F6", ["a.pdf, 1 pages", "a.pdf", "Merge PDFs…", "Add PDFs…"])
        self.expect_round("shift+F6", ["Merge PDFs…", "a.pdf", "a.pdf, 1 pages", "Add PDFs…"])
        self.key("F6", "Tab", "Tab")
        self.expect_focus("Down")
        self.key("F6")
        self.expect_focus("a.pdf")

    def test_what_has_the_focus_is_to_be_seen(self) -> None:
        self.add_by_keys("a.pdf", "b.pdf")
        # The first button has the focus, which shows only once the tab key has been used.
        without = self.picture()
        seen = set()
        for _ in range(8):
            before = self.program.accessible().focus()
            self.key("Tab")
            focused = self.expect(lambda: self.program.accessible().focus() != before
                                  and self.program.accessible().focus(), "the focus moves on")
            area = focused.extents
            teal = without.count_close_to(TEAL, 24, area)
            with self.subTest(focused.name):
                self.expect(lambda: self.picture().count_close_to(TEAL, 24, area) > teal + 40,
                            "it is drawn with a teal outline", timeout=2)
            seen.add(focused.name)
        self.assertEqual(len(seen), 8)


class Parts(KeyboardTestCase):

    def test_the_alert_is_closed_by_return_escape_and_space(self) -> None:
        documents.damaged_pdf(self.documents / "damaged.pdf")
        self.add_by_keys("a.pdf")
        self.key("F6")
        self.expect_focus("a.pdf, 1 pages")
        for key in ("Return", "Escape", "space"):
            with self.subTest(key):
                self.key("ctrl+o")
                self.choose(self.documents / "damaged.pdf")
                self.expect_alert()
                self.expect_focus("OK")
                self.key(key)
                self.expect(lambda: not self.dialogs(), "the alert has closed")
                self.expect_focus("a.pdf, 1 pages")
        self.expect_rows(["a.pdf, 1 pages"])

    def test_the_divider_is_moved_by_the_arrow_keys(self) -> None:
        self.key("Tab")
        self.expect_focus(DIVIDER)
        start = self.region("sidebar").width
        for key, step in (("Right", 16), ("Left", 0), ("Left", -16)):
            self.key(key)
            self.expect(lambda: self.region("sidebar").width == start + step,
                        f"the sidebar is {start} + {step} wide", timeout=3)

    def test_the_divider_leaves_both_columns_their_least_width(self) -> None:
        self.key("Tab")
        self.expect_focus(DIVIDER)
        self.key(*["Left"] * 6)
        self.expect(lambda: self.region("sidebar").width == 310, "the sidebar is 310 wide")
        self.key(*["Right"] * 24)
        self.expect(lambda: self.region("sidebar").width == 940 - 1 - 360,
                    "the preview is 360 wide")

    def test_the_preview_is_turned_over_and_copied_from(self) -> None:
        self.add_by_keys("a.pdf", pages=9)
        self.key("F6", "F6")
        self.expect_focus("a.pdf")

        def expect_page(page: int) -> None:
            self.expect(lambda: self.preview().description == f"Page {page} of 9\na {page}",
                        f"it shows page {page}")
        expect_page(1)
        for key, page in (("End", 9), ("Home", 1)):
            self.key(key)
            expect_page(page)
        self.key(*["Page_Down"] * 4)
        self.expect(lambda: self.preview().description.startswith(("Page 2 ", "Page 3 ")),
                    "it is further down")
        self.key(*["Page_Up"] * 4)
        expect_page(1)
        self.key("space", "space", "space", "shift+space", "shift+space", "shift+space")
        self.key(*["Down"] * 24)
        expect_page(2)
        # What is copied can be pasted elsewhere.
        self.key("ctrl+a", "ctrl+c")
        self.key("ctrl+o")
        field = self.expect_panel()

        def pasted() -> str:
            self.key("ctrl+a", "ctrl+v")
            return field.text
        self.expect(lambda: [f"a {page}" for page in range(1, 10)]
                    == " ".join(pasted().split()).replace(" a", "|a").split("|"),
                    "the text of all pages is pasted")
        self.cancel_panel()


if __name__ == "__main__":
    unittest.main()
