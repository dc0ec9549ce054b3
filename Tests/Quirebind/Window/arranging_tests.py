# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Bringing documents into order and taking them off the list: by the buttons, with the keyboard,
and through the context menu."""

import unittest
from typing import Sequence

from driver.accessibility import Accessible, Gone
from driver.announcements import Announcements
from driver.geometry import Point
from window_test_case import WindowTestCase


class ArrangingTestCase(WindowTestCase):
    """The documents are named by a letter, and have as many pages as that letter counts."""

    def row_name(self, letter: str) -> str:
        return f"{letter}.pdf, {ord(letter) - ord('a') + 1} pages"

    def list_documents(self, letters: str = "abcd") -> None:
        self.add(*(self.pdf(f"{letter}.pdf", ord(letter) - ord("a") + 1) for letter in letters))
        self.expect_order(letters)

    def expect_order(self, letters: str) -> None:
        self.expect_rows([self.row_name(letter) for letter in letters])

    def expect_selected_letter(self, letter: str) -> None:
        self.expect_selected(self.row_name(letter))
        self.expect(lambda: self.preview().name == f"{letter}.pdf", "it is previewed")

    def empty_space(self) -> Point:
        """A point of the list below its rows."""
        return self.document_list().extents.at(0.5, 0.95)

    def expect_keys_done(self) -> None:
        """Waits until all keys so far have had their effect: they are handled in turn."""
        self.key("ctrl+o")
        self.cancel_panel()


class Buttons(ArrangingTestCase):

    def test_move_and_remove_what_is_selected(self) -> None:
        self.list_documents("abc")
        self.select("b.pdf")
        for button, order in (("Up", "bac"), ("Up", "bac"), ("Down", "abc"), ("Down", "acb"),
                              ("Down", "acb")):
            self.press(button)
            self.expect_order(order)
            self.expect_selected_letter("b")
            for name in ("Up", "Down", "Remove"):
                self.expect_enabled(name)  # also at the ends, where nothing changes
        self.press("Remove")
        self.expect_order("ac")
        self.expect_selected_letter("a")
        self.expect_text("2 documents · 4 pages")

    def test_can_be_pressed_only_while_something_is_selected(self) -> None:
        self.list_documents("ab")
        self.input.click(self.empty_space())
        self.expect_selected()
        for button in ("Up", "Down", "Remove"):
            self.expect_enabled(button, False)
            self.input.click(self.button(button))
        self.expect_text("Select a document to inspect its pages.")
        self.key("Delete", "alt+Down")
        self.expect_keys_done()
        self.expect_order("ab")
        self.expect_enabled("Merge PDFs…")
        self.picture().save("nothing-selected")
        self.select("b.pdf")
        for button in ("Up", "Down", "Remove"):
            self.expect_enabled(button)

    def test_removing_the_last_document_brings_the_empty_state_back(self) -> None:
        self.list_documents("ab")
        for left in (2, 1):
            self.expect_text(str(left))
            self.expect_enabled("Merge PDFs…", left > 1)
            self.press("Remove")
        for text in ("0", "Drop your PDFs here", "0 documents · 0 pages",
                     "Select a document to inspect its pages."):
            self.expect_text(text)
        for button in ("Up", "Down", "Remove"):
            self.expect_button(button, there=False)
        self.expect_enabled("Merge PDFs…", False)
        # The files themselves are where they were.
        self.assertEqual(sorted(path.name for path in self.documents.iterdir()),
                         ["a.pdf", "b.pdf"])
        self.list_documents("ba")


class Keys(ArrangingTestCase):

    def test_choose_and_move_documents_in_the_list(self) -> None:
        self.list_documents()
        self.key("F6")
        self.expect_focus(self.row_name("a"))
        for key, letter in (("Down", "b"), ("End", "d"), ("Down", "d"), ("Up", "c"), ("Home", "a"),
                            ("Up", "a"), ("Down", "b")):
            self.key(key)
            self.expect_selected_letter(letter)
        for key, order in (("alt+Down", "acbd"), ("alt+Down", "acdb"), ("alt+Down", "acdb"),
                           ("alt+Up", "acbd")):
            self.key(key)
            self.expect_order(order)
            self.expect_selected_letter("b")
            self.expect_focus(self.row_name("b"))
        self.key("Delete")
        self.expect_order("acd")
        self.expect_selected_letter("a")
        self.expect_focus(self.row_name("a"))

    def test_do_nothing_while_the_focus_is_elsewhere(self) -> None:
        self.list_documents("abc")
        elsewhere: dict[str, Sequence[str]] = {
            "Up": ["Tab"], "b.pdf": ["F6"], "Merge PDFs…": ["F6", "F6"],
            "Add PDFs…": ["shift+F6"]}
        for name, way in elsewhere.items():
            for key in ("Delete", "alt+Down"):
                with self.subTest(f"{key} on {name}"):
                    self.select("b.pdf")
                    self.expect_focus(self.row_name("b"))
                    self.key(*way)
                    self.expect_focus(name)
                    self.key(key)
                    # A click is dealt with after the key.
                    self.select("a.pdf")
                    self.assertEqual(self.row_names(), [self.row_name(row) for row in "abc"])


class ContextMenu(ArrangingTestCase):

    def setUp(self) -> None:
        super().setUp()
        self.announcements = Announcements(self.desktop)
        self.addCleanup(self.announcements.end)

    def menu_item(self, name: str) -> Accessible:
        """An item of the menu; waits for it. Its name is that of the operation."""
        def found() -> Accessible:
            for item in self.announcements.menu().children:
                if item.role == "menu item" and item.name.split("\t")[0] == name:
                    return item
            raise Gone(f"the menu has no “{name}”")
        return self.expect(found, f"there is a menu with “{name}”")

    def test_a_right_click_offers_what_the_buttons_do(self) -> None:
        self.list_documents("abc")
        for letter, name, order in (("b", "Up", "bac"), ("b", "Down", "abc"),
                                    ("c", "Remove", "ab")):
            self.input.right_click(self.row(f"{letter}.pdf"))
            item = self.menu_item(name)
            self.expect_selected_letter(letter)
            self.assertEqual([entry.name for entry in self.announcements.menu().children
                              if entry.role == "menu item"], ["Up", "Down", "Remove"])
            self.picture().save("context-menu")
            self.input.click(item)
            self.expect_order(order)

    def test_the_menu_key_offers_the_same(self) -> None:
        self.list_documents("abc")
        self.key("F6", "Down")
        for keys, order in ((["Down", "Down", "Return"], "acb"), (["Down", "Return"], "abc"),
                            (["Up", "Return"], "ac"), (["Down", "Escape"], "ac")):
            self.key("Menu")
            self.menu_item("Remove")
            self.key(*keys)
            self.expect_order(order)
        self.expect_focus(self.row_name("a"))

    def test_the_empty_space_offers_nothing(self) -> None:
        self.list_documents("ab")
        self.input.right_click(self.empty_space())
        self.expect_selected()
        self.key("Menu")
        self.expect_keys_done()
        self.assertRaises(Gone, self.announcements.menu)
        self.expect_order("ab")


if __name__ == "__main__":
    unittest.main()
