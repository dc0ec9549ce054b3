# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The program itself as a client of Wayland, from the first document to the new file. Everything is
done through the accessibility bus. Skipped where there is no compositor."""

import os
import shutil
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Callable

from driver import documents
from driver.accessibility import Accessible
from driver.program import Program
from driver.waiting import wait_for
from driver.wayland_desktop import WaylandDesktop
from window_test_case import ALERT_TITLE

TEAL = (0x00, 0x86, 0x98)
_SKIPPED = 77  # as CTest is told


class OnWayland(unittest.TestCase):

    def setUp(self) -> None:
        self.desktop = WaylandDesktop(width=1200, height=900)
        self.addCleanup(self.desktop.stop)
        self.desktop.start()
        self.documents = Path(tempfile.mkdtemp(dir=self.desktop.folder))
        self.program = Program(self.desktop, os.environ["QUIREBIND_PROGRAM"],
                               environment={"QT_QPA_PLATFORM": "wayland"})
        self.expect(self.program.frames, "a window shows")

    def expect(self, condition: Callable[[], object], message: str) -> object:
        return wait_for(condition, 20.0, lambda: f"{message}. It said {self.program.stderr()}; "
                        f"it shows {self.program.accessible().described()}")

    def found(self, role: str, name: str) -> Accessible:
        """What is so called, in any window; waits for it."""
        return self.expect(lambda: next(iter(self.program.accessible().find_all(role, name)), None),
                           f"there is a {role} “{name}”")  # type: ignore[return-value]

    def press(self, name: str) -> None:
        button = self.found("push button", name)
        self.expect(lambda: button.enabled, f"“{name}” can be pressed")
        button.press()

    def answer(self, text: str, button: str) -> None:
        """Writes a name into the panel that opens, and presses its button."""
        field = self.found("text", "File name:")

        def taken() -> bool:
            if field.text != text:  # a panel that is only just opening empties its field
                field.set_text(text)
            return field.text == text
        self.expect(taken, "the name is taken")
        self.press(button)

    def test_documents_are_added_and_merged(self) -> None:
        paths = [self.documents / name for name in ("a.pdf", "b.pdf")]
        documents.simple_pdf(paths[0], 2)
        documents.simple_pdf(paths[1], 1)
        self.press("Add PDFs…")
        self.answer(" ".join(f'"{path}"' for path in paths), "Open")
        self.expect(lambda: len(self.program.frames()) == 1, "the panel has closed")
        self.found("list item", "b.pdf, 1 pages")
        preview = self.found("document", "a.pdf")
        self.expect(lambda: preview.description == "Page 1 of 2\na 1", "its first page is read")
        output = self.documents / "joined.pdf"
        self.press("Merge PDFs…")
        self.answer(str(output), "Save")
        self.found("push button", "Show in Finder")
        self.assertEqual(documents.page_labels(output), ["a 1", "a 2", "b 1"])
        # It is not only there to be asked, but drawn: the window, and the page in it.
        picture = self.desktop.picture()
        picture.save("wayland")
        self.assertGreater(picture.count_close_to(TEAL), 200)
        self.assertGreater(picture.count_close_to((255, 255, 255)), 50_000)
        self.press("Show in Finder")
        self.expect(self.program.opened_elsewhere, "the folder is opened")
        self.assertTrue(self.program.alive())
        self.assertEqual(self.program.stderr(), "")

    def test_a_failure_is_shown(self) -> None:
        documents.damaged_pdf(self.documents / "damaged.pdf")
        self.press("Add PDFs…")
        self.answer(str(self.documents / "damaged.pdf"), "Open")
        alert = self.found("dialog", ALERT_TITLE)
        self.assertEqual(alert.description, "Could not read every page of damaged.pdf.")
        self.press("OK")
        self.expect(lambda: len(self.program.frames()) == 1, "the alert has closed")


if __name__ == "__main__":
    if shutil.which("weston") is None:
        print("skipped: there is no compositor, weston is not installed")
        sys.exit(_SKIPPED)
    unittest.main()
