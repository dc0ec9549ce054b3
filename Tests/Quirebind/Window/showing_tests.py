# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""“Show in Finder”: for how long it is there, and whom it asks to show the new file."""

import unittest
from urllib.parse import unquote_to_bytes

from driver.desktop_services import HANGS, REFUSES, FileManager, Portal
from merging_tests import MergingTestCase

SHOW = "Show in Finder"


class Button(MergingTestCase):

    def test_is_there_while_the_list_is_the_one_that_was_merged(self) -> None:
        changes = {
            "moved": lambda: self.press("Up"),
            "dragged": lambda: self.input.drag(self.row("a.pdf"),
                                               self.row("b.pdf").extents.at(0.5, 0.2)),
            "added": lambda: self.add(self.b),
            "removed": lambda: self.press("Remove"),
        }
        self.expect_button(SHOW, there=False)
        for number, (change, make) in enumerate(changes.items()):
            with self.subTest(change):
                self.merge(self.output.with_name(f"{number}.pdf"))
                self.select("b.pdf")  # which does not change the list
                self.expect_button(SHOW)
                make()
                self.expect_button(SHOW, there=False)


class FindingTheFile(MergingTestCase):

    def setUp(self) -> None:
        super().setUp()
        folder = self.documents / "results #1 für"
        folder.mkdir()
        self.output = folder / "joined #2 – größer 100%.pdf"
        self.merge(self.output)

    def path_of(self, uri: str) -> str:
        """The path that a file manager finds behind the URI, as RFC 3986 has it."""
        self.assertTrue(uri.startswith("file:///"), uri)
        self.assertRegex(uri, r"^[!-~]*$")
        self.assertNotRegex(uri, r"[#?]")
        return unquote_to_bytes(uri[len("file://"):]).decode()

    def expect_shown(self, manager: FileManager) -> None:
        """Waits until the file manager was asked for the new file, and nothing else."""
        shown = self.expect(manager.shown, "the file manager is asked")
        self.assertEqual([[self.path_of(uri) for uri in call.uris] for call in shown],
                         [[str(self.output)]])

    def expect_opened(self, portal: Portal, timeout: float = 10.0) -> None:
        """The same of the portal, which opens the folder."""
        opened = self.expect(portal.opened, "the portal is asked", timeout)
        self.assertEqual(opened, [str(self.output)])

    def expect_folder_opened(self) -> None:
        """Waits until another program was told to open the folder."""
        opened = self.expect(self.program.opened_elsewhere, "the folder is opened")
        self.assertEqual([self.path_of(uri).rstrip("/") for uri in opened],
                         [str(self.output.parent)])

    def test_by_the_file_manager(self) -> None:
        with FileManager(self.desktop) as manager, Portal(self.desktop) as portal:
            self.press(SHOW)
            self.expect_shown(manager)
            # Asking a second time is possible, and nobody else is asked.
            self.press(SHOW)
            self.expect(lambda: len(manager.shown()) == 2, "it is asked again")
            self.assertEqual((portal.opened(), self.program.opened_elsewhere()), ([], []))

    def test_by_the_portal_where_the_file_manager_refuses_or_is_missing(self) -> None:
        with FileManager(self.desktop, REFUSES) as manager, Portal(self.desktop) as portal:
            self.press(SHOW)
            self.expect_opened(portal)
            self.expect_shown(manager)
        with Portal(self.desktop) as portal:
            self.press(SHOW)
            self.expect_opened(portal)
        self.assertEqual(self.program.opened_elsewhere(), [])

    def test_by_the_portal_where_the_file_manager_hangs(self) -> None:
        with FileManager(self.desktop, HANGS) as manager, Portal(self.desktop) as portal:
            self.press(SHOW)
            self.expect_shown(manager)
            # The window waits for nothing.
            self.select("b.pdf")
            self.press("Add PDFs…")
            self.cancel_panel()
            self.expect_opened(portal)
            self.assertEqual(len(manager.shown()), 1)
            self.assertEqual(self.program.opened_elsewhere(), [])

    def test_by_whatever_opens_the_folder_where_both_refuse(self) -> None:
        with FileManager(self.desktop, REFUSES), Portal(self.desktop, REFUSES):
            self.press(SHOW)
            self.expect_folder_opened()

    def test_by_whatever_opens_the_folder_where_there_is_neither(self) -> None:
        self.press(SHOW)
        self.expect_folder_opened()

    def test_in_the_end_also_where_the_portal_hangs(self) -> None:
        with Portal(self.desktop, HANGS) as portal:
            self.press(SHOW)
            self.expect_opened(portal)
            self.assertEqual(self.program.opened_elsewhere(), [])
            self.expect_folder_opened()

    def test_its_folder_where_the_file_has_gone(self) -> None:
        self.output.unlink()
        with Portal(self.desktop):
            self.press(SHOW)
            self.expect_folder_opened()


if __name__ == "__main__":
    unittest.main()
