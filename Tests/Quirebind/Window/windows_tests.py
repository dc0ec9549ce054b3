# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Several windows, how they and the program end, and what is left behind."""

import unittest

from driver import documents
from driver.accessibility import Accessible, Gone
from driver.announcements import Announcements
from driver.geometry import Size
from driver.input import Drag
from driver.picture import Picture
from window_test_case import WindowTestCase


class WindowsTestCase(WindowTestCase):

    def frames(self) -> list[Accessible]:
        """The windows, without dialogs."""
        return [frame for frame in self.program.frames() if frame.role == "frame"]

    def open_window(self) -> Accessible:
        """Opens another window, which all that follows is about then."""
        before = self.frames()
        self.key("ctrl+n")
        self.expect(lambda: len(self.frames()) == len(before) + 1, "there is one window more")
        opened = next(frame for frame in self.frames() if frame not in before)
        self.expect(lambda: "active" in opened.states, "it has the focus")
        self.look_at(opened)
        return opened

    def activate(self, number: int) -> None:
        """Gives the focus to a window, counted in the order in which they were opened."""
        self.program.activate(self.program.windows()[number])
        self.expect(lambda: "active" in self.window.states, "the window has the focus")


class SeveralWindows(WindowsTestCase):

    def test_a_new_window_has_a_list_of_its_own(self) -> None:
        first = self.window
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf", 2))
        self.program.resize(1000, 700)
        second = self.open_window()
        self.assertEqual(self.program.geometry(self.program.windows()[1]).size, Size(940, 640))
        for text in ("Drop your PDFs here", "0 documents · 0 pages",
                     "Select a document to inspect its pages."):
            self.expect_text(text)
        self.expect_enabled("Add PDFs…")
        Picture.of_screen(self.desktop).save("two-windows")
        self.add(self.pdf("c.pdf", 3), self.documents / "a.pdf")
        self.merge(self.documents / "second.pdf")
        self.look_at(first)
        self.expect_rows(["a.pdf, 1 pages", "b.pdf, 2 pages"])
        self.expect_button("Show in Finder", there=False)
        self.activate(0)
        self.key("F6", "Delete")
        self.expect_rows(["b.pdf, 2 pages"])
        self.look_at(second)
        self.expect_rows(["c.pdf, 3 pages", "a.pdf, 1 pages"])
        self.expect_button("Show in Finder")
        self.assertEqual(documents.page_labels(self.documents / "second.pdf"),
                         ["c 1", "c 2", "c 3", "a 1"])

    def test_an_alert_is_about_its_window_only(self) -> None:
        first = self.window
        second = self.open_window()
        damaged = self.documents / "damaged.pdf"
        documents.damaged_pdf(damaged)
        self.key("ctrl+o")
        self.choose(damaged)
        self.assertEqual(self.expect_alert(), "Could not read every page of damaged.pdf.")
        # The first window can be used meanwhile.
        self.look_at(first)
        self.activate(0)
        self.key("ctrl+o")
        self.choose(self.pdf("a.pdf"))
        self.expect_rows(["a.pdf, 1 pages"])
        self.assertEqual(len(self.dialogs()), 1)
        self.look_at(second)
        self.program.activate(self.program.windows()[1])
        self.dismiss_alert()
        self.expect_rows([])


class Ending(WindowsTestCase):

    def test_ctrl_w_and_the_close_button_close_one_window(self) -> None:
        for number, close in enumerate((lambda: self.key("ctrl+w"), lambda: self.key("alt+F4"))):
            with self.subTest(number):
                self.activate(0)
                self.open_window()
                self.open_window()
                self.add(self.pdf("a.pdf"))
                self.expect_rows(["a.pdf, 1 pages"])
                for left in (2, 1):
                    self.activate(left)
                    close()
                    self.expect(lambda: len(self.frames()) == left,
                                f"{left} windows are left")
                    self.look_at(self.frames()[-1])
                self.expect_rows([])
        self.activate(0)
        self.key("ctrl+w")
        self.assertEqual(self.program.wait_exit(), 0)

    def test_ctrl_q_closes_all(self) -> None:
        self.open_window()
        self.add(self.pdf("a.pdf"))
        self.open_window()
        self.key("ctrl+q")
        self.assertEqual(self.program.wait_exit(), 0)

    def test_closing_the_first_window_leaves_the_others(self) -> None:
        self.add(self.pdf("a.pdf"))
        second = self.open_window()
        self.program.close(self.program.windows()[0])
        self.expect(lambda: self.frames() == [second], "only the second is left")
        self.add(self.documents / "a.pdf")
        self.expect_rows(["a.pdf, 1 pages"])
        self.program.close()
        self.assertEqual(self.program.wait_exit(), 0)


class ClosingMeanwhile(WindowsTestCase):
    """Windows that are closed while the user is still at something in them. What is left works on."""

    def setUp(self) -> None:
        super().setUp()
        self.announcements = Announcements(self.desktop)
        self.addCleanup(self.announcements.end)

    def menu_shows(self) -> bool:
        try:
            return bool(self.announcements.menu().children)
        except Gone:
            return False

    def open_menu(self, place: str) -> None:
        """Opens the menu of a document in the list, or that of its preview."""
        self.input.right_click(self.row("a.pdf") if place == "list"
                               else self.region("preview").centre)
        self.expect(self.menu_shows, "there is a menu")

    def begin_to_drag(self) -> Drag:
        """Drags a row a bit, and holds it."""
        drag = self.input.begin_drag(self.row("a.pdf"))
        drag.move_to(self.document_list().extents.at(0.5, 0.9))
        return drag

    def test_one_of_two_windows_while_its_menu_is_open(self) -> None:
        first = self.window
        for place in ("list", "preview"):
            with self.subTest(place):
                self.open_window()
                self.add(self.pdf("a.pdf"))
                self.open_menu(place)
                self.program.close(self.program.windows()[1])
                self.expect(lambda: self.program.frames() == [first], "only the first is left")
                self.expect(lambda: not self.menu_shows(), "the menu has gone, too")
                self.look_at(first)
                self.activate(0)
                self.expect_rows([])
        self.add(self.documents / "a.pdf")
        self.expect_rows(["a.pdf, 1 pages"])

    def test_one_of_two_windows_while_its_row_is_dragged(self) -> None:
        first = self.window
        self.open_window()
        self.add(self.pdf("a.pdf"))
        with self.begin_to_drag():
            self.program.close(self.program.windows()[1])
            self.expect(lambda: self.program.frames() == [first], "only the first is left")
        self.look_at(first)
        self.activate(0)
        self.add(self.documents / "a.pdf")
        self.expect_rows(["a.pdf, 1 pages"])

    def test_the_last_window_while_its_menu_is_open(self) -> None:
        for place in ("list", "preview"):
            with self.subTest(place):
                self.add(self.pdf("a.pdf"))
                self.open_menu(place)
                self.program.close()
                self.assertEqual(self.program.wait_exit(), 0)
            self.start_program()

    def test_the_last_window_while_a_row_is_dragged(self) -> None:
        self.add(self.pdf("a.pdf"))
        with self.begin_to_drag():
            self.program.close()
            self.expect(lambda: not self.program.windows(), "the window has closed")
        self.assertEqual(self.program.wait_exit(), 0)


class Starting(WindowsTestCase):
    starts_program = False

    def test_what_is_on_the_command_line_is_ignored(self) -> None:
        self.start_program(["--what", "-x", "--help", "", self.pdf("a.pdf"), "no such file"])
        self.expect_rows([])
        self.expect_text("Drop your PDFs here")
        self.assertEqual(self.dialogs(), [])
        self.assertEqual(self.program.stdout(), "")

    def test_nothing_is_left_in_the_home_folder(self) -> None:
        self.start_program()
        self.assertEqual(self.program.left_in_home(), [])
        files = [self.pdf("a.pdf", 3), self.pdf("b.pdf"), self.pdf("c.pdf")]
        damaged = self.documents / "damaged.pdf"
        documents.damaged_pdf(damaged)
        before = sorted(path.name for path in self.documents.iterdir())
        self.add(*files[:2])
        self.drop([files[2], damaged], on="sidebar")
        self.dismiss_alert()
        self.select("b.pdf")
        self.press("Up")
        self.program.resize(1100, 720)
        (self.documents / "results").mkdir()
        self.merge(self.documents / "results" / "joined.pdf")
        self.press("Show in Finder")
        self.expect(self.program.opened_elsewhere, "the folder is opened")
        self.open_window()
        self.add(files[0])
        self.press("Remove")
        self.press("Add PDFs…")
        self.cancel_panel()
        self.key("ctrl+q")
        self.assertEqual(self.program.wait_exit(), 0)
        self.assertEqual(self.program.left_in_home(), [])
        # Nor beside the documents or the new file, nor in its folder for the session.
        self.assertEqual(sorted(path.name for path in self.documents.iterdir()),
                         sorted([*before, "results"]))
        self.assertEqual([path.name for path in (self.documents / "results").iterdir()],
                         ["joined.pdf"])
        runtime = self.desktop.folder / "runtime" / self.program.home.name
        self.assertEqual([path.name for path in runtime.iterdir()], [])


if __name__ == "__main__":
    unittest.main()
