# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What every test of the window builds on: the program on a desktop, and what a user does with it
and sees of it, in words that a test reads well with.

    class AddingByDrop(WindowTestCase):
        def test_dropped_files_are_listed_in_order(self):
            self.drop([self.pdf("a.pdf", pages=2), self.pdf("b.pdf")], on="preview")
            self.expect_rows(["a.pdf, 2 pages", "b.pdf, 1 pages"])

QUIREBIND_PROGRAM names the program and QUIREBIND_DRAG_SOURCE the one that files are dragged from;
CTest sets both. With QUIREBIND_SCREENSHOTS, a folder, the screen at the moment of a failure is kept
there.
"""

import os
import re
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any, Callable, Mapping, Optional, Sequence, Union

from driver import documents
from driver.accessibility import Accessible, Gone
from driver.desktop import Desktop
from driver.drag_source import DragSource, FileDrag, file_uri
from driver.geometry import Point, Rect
from driver.input import Input
from driver.picture import Picture
from driver.program import Program
from driver.waiting import NotYet, wait_for

ALERT_TITLE = "Quirebind couldn’t finish"
LIST_NAME = "YOUR DOCUMENTS"

# What the program may write to standard error without failing a test, and why.
_ALLOWED_ON_STDERR: list[str] = []

# A file to drag: a path, or the URI of one that is more special.
Dragged = Union[str, Path]


class WindowTestCase(unittest.TestCase):
    """One desktop for the tests of a class, a fresh program in a fresh home folder for each.

    A test fails also where the program crashes, does not end when its windows are closed, or
    complains on standard error.
    """

    desktop_options: Mapping[str, int] = {}
    """What Desktop is made with: width, height, dpi."""
    program_variable = "QUIREBIND_PROGRAM"
    """The environment variable that names the program to run."""
    program_wrapper: Sequence[str] = ()
    """What the program is started by, in its own process: ["env", "NAME=value"]."""
    program_arguments: Sequence[str] = ()
    program_environment: Mapping[str, str] = {}
    starts_program = True
    """Whether each test finds the program running; otherwise it calls start_program itself."""

    desktop: Desktop
    _drag_source: Optional[DragSource]

    @classmethod
    def setUpClass(cls) -> None:
        cls.desktop = Desktop(**cls.desktop_options)
        cls.addClassCleanup(cls.desktop.stop)
        cls.desktop.start()
        cls._drag_source = None

    def setUp(self) -> None:
        self.input = Input(self.desktop)
        self.documents = Path(tempfile.mkdtemp(prefix="documents-", dir=self.desktop.folder))
        if self.starts_program:
            self.start_program()

    def start_program(self, arguments: Optional[Sequence[Union[str, bytes, Path]]] = None,
                      environment: Optional[Mapping[str, str]] = None) -> Program:
        """Starts the program, as `self.program`, and waits for its window."""
        words = [*self.program_wrapper, _named_by(self.program_variable),
                 *(self.program_arguments if arguments is None else arguments)]
        self.program = Program(self.desktop, words[0], words[1:],
                               {**self.program_environment, **(environment or {})})
        self._window: Optional[Accessible] = None
        self.addCleanup(self._end, self.program)
        return self.program.wait_for_window()

    # Documents.

    def pdf(self, name: str, pages: int = 1, **options: Any) -> Path:
        """Makes a document for this test; see documents.simple_pdf."""
        path = self.documents / name
        path.parent.mkdir(parents=True, exist_ok=True)
        documents.simple_pdf(path, pages, **options)
        return path

    # What is in the window.

    @property
    def window(self) -> Accessible:
        """The window that all of this is about: the program's first, unless `look_at` said
        another."""
        if self._window is not None:
            return self._window
        for frame in self.program.frames():
            if frame.role == "frame":
                return frame
        raise Gone("the program shows no window")

    def look_at(self, window: Accessible) -> None:
        """Makes all that follows be about another window of the program; one of
        program.frames()."""
        self._window = window

    def button(self, name: str) -> Accessible:
        """The button with that name, in the window or in a dialog; waits for it to show."""
        def found() -> Accessible:
            for place in (self.window, *self.dialogs()):
                for button in place.find_all("push button", name):
                    return button
            raise Gone("there is none")
        return self.expect(found, f"there is a button “{name}”")

    def has_button(self, name: str) -> bool:
        return bool(self.window.find_all("push button", name))

    def texts(self) -> list[str]:
        """The texts of all labels of the window, in order."""
        return self.window.texts()

    def document_list(self) -> Accessible:
        """The list of documents. Raises Gone where there is none."""
        return self.window.find("list", LIST_NAME)

    def rows(self) -> list[Accessible]:
        """The documents in the list; none where there is no list."""
        return [row for found in self.window.find_all("list", LIST_NAME)
                for row in found.children]

    def row_names(self) -> list[str]:
        return [row.name for row in self.rows()]

    def row(self, name: str) -> Accessible:
        """The first row of the document with that file name; waits for it."""
        def found() -> Accessible:
            for row in self.rows():
                if row.name.startswith(f"{name}, "):
                    return row
            raise Gone(f"“{name}” is not listed")
        return self.expect(found, f"“{name}” is listed")

    def selected_rows(self) -> list[str]:
        return [row.name for row in self.rows() if row.selected]

    def preview(self) -> Accessible:
        """What shows the selected document. Raises Gone where none is shown."""
        return self.window.find("layered pane").find(state="focusable")

    def region(self, name: str) -> Rect:
        """Where on the screen a part of the window is: "header", "sidebar", "preview", "columns"
        (the two together), "merge bar", or all of the "window"."""
        window = self.window.extents
        splitter = self.window.find("splitter")
        columns = splitter.extents
        if name == "window":
            return window
        if name == "header":
            return Rect(window.x, window.y, window.width, columns.y - window.y)
        if name == "merge bar":
            return Rect(window.x, columns.bottom, window.width, window.bottom - columns.bottom)
        if name == "columns":
            return columns
        sidebar = splitter.find("label", LIST_NAME).parent.extents
        if name == "sidebar":
            return sidebar
        assert name == "preview", f"the window has no part “{name}”"
        before = Rect(columns.x, columns.y, sidebar.x - columns.x, columns.height)
        behind = Rect(sidebar.right, columns.y, columns.right - sidebar.right, columns.height)
        return max(before, behind, key=lambda area: area.width)

    def picture(self, region: str = "window") -> Picture:
        """What a part of the window looks like."""
        return Picture.of(self.desktop, self.region(region))

    # What a user does.

    def press(self, button: str) -> None:
        """Clicks a button, once it can be clicked."""
        found = self.expect_enabled(button)
        self.input.click(found)

    def key(self, *keys: str) -> None:
        """Presses keys, such as "alt+Up"."""
        self.input.key(*keys)

    def select(self, name: str) -> None:
        """Clicks the row of the document with that file name."""
        self.input.click(self.row(name))
        self.expect(lambda: self.row(name).selected, f"“{name}” is selected")

    def drag_source(self) -> DragSource:
        """The program that files are dragged from."""
        cls = type(self)
        if cls._drag_source is None:
            cls._drag_source = DragSource(self.desktop, _named_by("QUIREBIND_DRAG_SOURCE"))
        return cls._drag_source

    def drag(self, files: Union[bytes, Sequence[Dragged]]) -> FileDrag:
        """Begins to drag files; see FileDrag for how it goes on. Bytes are the list of URIs as it
        shall be delivered."""
        return self.drag_source().begin(_uris(files))

    def drop(self, files: Union[bytes, Sequence[Dragged]], on: Union[str, Point],
             while_hovering: Optional[Callable[[], object]] = None) -> str:
        """Drops files into the middle of a region, or at a point; returns what became of it:
        "copy", or "none" where they were refused."""
        point = self.region(on).centre if isinstance(on, str) else on
        return self.drag_source().drop(_uris(files), point, while_hovering)

    def add(self, *paths: Path) -> None:
        """Adds documents through the panel, and waits until they are listed."""
        before = len(self.rows())
        self.press("Add PDFs…")
        self.choose(*paths)
        self.expect(lambda: len(self.rows()) == before + len(paths),
                    f"{len(paths)} more documents are listed")

    def choose(self, *paths: Path) -> None:
        """Answers an open panel, once it shows."""
        self._answer_panel(" ".join(f'"{path}"' for path in paths))
        self._expect_closed(self.panels)

    def save_as(self, path: Path, replace: Optional[bool] = None) -> None:
        """Answers a save panel, once it shows, and the question whether to replace the file where
        `replace` says how."""
        self._answer_panel(str(path))
        if replace is not None:
            question = re.compile("^&?Yes$" if replace else "^&?No$")
            self.input.click(self.expect(
                lambda: next((button for button in
                              self.program.accessible().find_all("push button")
                              if question.match(button.name)), None),
                "it is asked whether to replace the file"))
        if replace is not False:
            self._expect_closed(self.panels)

    def cancel_panel(self) -> None:
        """Presses Escape in a panel, once it shows."""
        self.expect_panel()
        self.key("Escape")
        self._expect_closed(self.panels)

    def merge(self, path: Path) -> None:
        """Merges into a file that does not exist yet, and waits until that is done."""
        self.press("Merge PDFs…")
        self.save_as(path)
        self.expect(lambda: self.has_button("Show in Finder"), "the merge has succeeded")

    # Dialogs.

    def dialogs(self) -> list[Accessible]:
        """All dialogs that show: alerts, panels, questions."""
        roles = ("dialog", "alert", "alert message")
        return [frame for frame in self.program.frames() if frame.role in roles]

    def panels(self) -> list[Accessible]:
        """The file panels that show."""
        return [dialog for dialog in self.dialogs() if dialog.find_all("text", "File name:")]

    def expect_panel(self) -> Accessible:
        """Waits for a file panel that has the focus; returns its field for the name."""
        return self.expect(
            lambda: self.panels()[-1:] and self.panels()[-1].find("text", state="focused"),
            "a file panel shows")

    def expect_alert(self) -> str:
        """Waits for the alert; returns its message."""
        def message() -> str:
            for dialog in self.dialogs():
                if dialog.name == ALERT_TITLE and "active" in dialog.states:
                    return "\n".join(text for text in dialog.texts() if text != ALERT_TITLE)
            raise Gone("no dialog of that name")
        return self.expect(message, "the alert shows and has the focus")

    def dismiss_alert(self) -> None:
        """Presses OK in the alert, and waits until it is gone."""
        self.expect_alert()
        self.press("OK")
        self._expect_closed(self.dialogs)

    # What a user expects to see, soon.

    def expect(self, condition: Callable[[], Any], message: str, timeout: float = 10.0) -> Any:
        """Waits until something is so; fails telling what the window showed instead."""
        return wait_for(condition, timeout, lambda: f"{message}. The window:\n{self._described()}")

    def expect_rows(self, names: Sequence[str]) -> None:
        """Waits until the list shows exactly these rows: "<file name>, <n> pages"."""
        self._expect_equal(self.row_names, list(names))

    def expect_selected(self, *names: str) -> None:
        """Waits until exactly these rows are selected."""
        self._expect_equal(self.selected_rows, list(names))

    def expect_text(self, text: str) -> None:
        """Waits until a label of the window says exactly this."""
        self.expect(lambda: text in self.texts(), f"it says “{text}”")

    def expect_no_text(self, text: str) -> None:
        """Waits until no label of the window says this."""
        self.expect(lambda: text not in self.texts(), f"it no longer says “{text}”")

    def expect_button(self, name: str, there: bool = True) -> None:
        """Waits until there is a button of that name, or is none."""
        self.expect(lambda: self.has_button(name) == there,
                    f"there is {'a' if there else 'no'} button “{name}”")

    def expect_enabled(self, button: str, enabled: bool = True) -> Accessible:
        """Waits until the button can be pressed, or cannot; returns it."""
        found = self.button(button)
        self.expect(lambda: found.enabled == enabled,
                    f"“{button}” is {'enabled' if enabled else 'disabled'}")
        return found

    def expect_focus(self, name: str) -> None:
        """Waits until what has that name has the keyboard focus."""
        self._expect_equal(lambda: getattr(self.program.accessible().focus(), "name", None), name)

    # The rest.

    def _expect_equal(self, read: Callable[[], Any], expected: Any) -> None:
        try:
            wait_for(lambda: read() == expected, message=f"{expected}")
        except AssertionError:
            self.assertEqual(read(), expected)  # tells the difference better

    def _expect_closed(self, dialogs: Callable[[], list[Accessible]]) -> None:
        self.expect(lambda: not dialogs(), "the dialog has closed")
        self.program.wait_for_focus()

    def _answer_panel(self, text: str) -> None:
        field = self.expect_panel()
        self.key("ctrl+a")
        field.set_text(text)  # while keys are typed, the panel completes names
        self.expect(lambda: field.text == text, f"the name is {text}")
        self.key("Return")

    def _described(self) -> str:
        try:
            return self.program.accessible().described()
        except (NotYet, AssertionError) as error:
            return f"nothing can be read of it: {error}"

    def run(self, result: Optional[unittest.TestResult] = None) -> Optional[unittest.TestResult]:
        """Runs the test; see unittest.TestCase."""
        self._result = result
        self._photographed = False
        return super().run(result)

    def _failed(self) -> bool:
        """Whether the test, or a part of it, has failed so far."""
        if self._result is None:
            return False
        return any(self in (test, getattr(test, "test_case", None))
                   for test, _ in self._result.failures + self._result.errors)

    def _end(self, program: Program) -> None:
        """Ends the program; fails where it has not behaved."""
        if self._failed() and not self._photographed:
            self._photographed = True
            Picture.of_screen(self.desktop).save(f"failed/{self.id()}")
        try:
            hangs = program.alive() and program.close_all() is None
        finally:
            program.terminate()
        complaints = [line for line in program.stderr().splitlines()
                      if not any(re.search(allowed, line) for allowed in _ALLOWED_ON_STDERR)]
        said = "\n".join(complaints)
        self.assertFalse(hangs, f"the program did not end when it was closed; it said:\n{said}")
        self.assertFalse(program.crashed,
                         f"the program ended with {program.terminate()}; it said:\n{said}")
        self.assertEqual(said, "", "the program complained")


def _uris(files: Union[bytes, Sequence[Dragged]]) -> Union[bytes, list[str]]:
    if isinstance(files, bytes):
        return files
    return [file_uri(file) if isinstance(file, Path) else file for file in files]


def _named_by(variable: str) -> str:
    path = os.environ.get(variable)
    if not path:
        sys.exit(f"{variable} must name a program")
    return path
