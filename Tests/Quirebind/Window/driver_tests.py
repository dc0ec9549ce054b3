# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The driver itself, as far as a fault in it would let tests of the window pass or fail for the
wrong reason."""

import os
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any, Optional
from unittest import mock

from gi.repository import Gio, GLib

from driver import documents, processes
from driver.desktop import Desktop
from driver.desktop_services import HANGS, REFUSES, FileManager, Portal, Shown
from driver.picture import Picture
from driver.program import Program
from driver.waiting import wait_for
from window_test_case import WindowTestCase

PROGRAM = os.environ["QUIREBIND_PROGRAM"]
DRAG_SOURCE = os.environ["QUIREBIND_DRAG_SOURCE"]


class DesktopTests(unittest.TestCase):

    def test_nothing_remains_of_a_desktop(self) -> None:
        with Desktop() as desktop:
            folder = desktop.folder
            with Program(desktop, PROGRAM):
                self.assertGreaterEqual(len(processes.marked(desktop.mark)), 7)
        self.assertEqual(processes.marked(desktop.mark), [])
        self.assertFalse(folder.exists())

    def test_nothing_runs_on_when_the_test_is_killed(self) -> None:
        script = ("import sys; from driver.desktop import Desktop\n"
                  "from driver.program import Program\n"
                  "desktop = Desktop().start()\n"
                  f"Program(desktop, {PROGRAM!r}).wait_for_window()\n"
                  "print(desktop.mark, flush=True); sys.stdin.read()")
        for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT):
            with self.subTest(number), tempfile.TemporaryDirectory(prefix="quirebind-") as folder:
                with subprocess.Popen([sys.executable, "-c", script], cwd=Path(__file__).parent,
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                      stderr=subprocess.DEVNULL,
                                      env={**os.environ, "TMPDIR": folder}) as test:
                    assert test.stdout is not None
                    mark = test.stdout.readline().decode().strip()
                    self.assertGreaterEqual(len(processes.marked(mark)), 7)
                    test.send_signal(number)
                wait_for(lambda: not processes.marked(mark), message="all its processes have ended")
                if number != signal.SIGKILL:
                    self.assertEqual(os.listdir(folder), [])

    def test_desktops_do_not_see_each_other(self) -> None:
        with Desktop() as one, Desktop(width=800, height=600) as other:
            self.assertNotEqual(one.display, other.display)
            self.assertEqual(Picture.of_screen(other).area.size, (800, 600))
            with Program(one, PROGRAM) as program:
                self.assertEqual(len(program.windows()), 1)
                self.assertIsNotNone(one.accessibility.application(program.process_id))
                with self.assertRaises(Exception):
                    other.accessibility.application(program.process_id)


class PictureTests(unittest.TestCase):

    def test_shows_what_is_on_the_screen(self) -> None:
        with Desktop(width=640, height=480) as desktop:
            before = Picture.of_screen(desktop)
            self.assertEqual(before.count_close_to((0, 0, 0)), 640 * 480)
            # A window of one colour, without a frame.
            Program(desktop, DRAG_SOURCE, ["100", "50", "/dev/null"])
            wait_for(lambda: Picture.of_screen(desktop).pixel(219, 129) != (0, 0, 0),
                     message="the window shows")
            picture = Picture.of_screen(desktop)
            colour = picture.pixel(100, 50)
            self.assertEqual(picture.bounds_of(colour, 0), (100, 50, 120, 80))
            self.assertEqual(picture.count_close_to(colour, 0), 120 * 80)
            self.assertEqual(picture.pixel(220, 129), (0, 0, 0))


class DocumentTests(unittest.TestCase):

    def test_documents_read_back_as_they_were_made(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "three words (really).pdf")
            documents.simple_pdf(path, pages=3)
            documents.check(path)
            self.assertEqual(documents.page_count(path), 3)
            self.assertEqual(documents.page_labels(path),
                             [f"three words (really) {n}" for n in (1, 2, 3)])
            documents.damaged_pdf(path)
            self.assertRaises(AssertionError, documents.check, path)
            documents.locked_pdf(path)
            self.assertRaisesRegex(AssertionError, "invalid password", documents.check, path)


class ServiceTests(unittest.TestCase):

    @classmethod
    def setUpClass(cls) -> None:
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.stop)
        cls.desktop.start()

    def call(self, destination: str, path: str, interface: str, method: str,
             arguments: GLib.Variant, descriptors: Optional[Gio.UnixFDList] = None) -> Any:
        connection = Gio.DBusConnection.new_for_address_sync(
            self.desktop.session_bus, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.addCleanup(connection.close_sync, None)
        result, _ = connection.call_with_unix_fd_list_sync(
            destination, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 500,
            descriptors, None)
        return result.unpack()

    def show(self) -> None:
        self.call("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                  "org.freedesktop.FileManager1", "ShowItems",
                  GLib.Variant("(ass)", (["file:///a%FF.pdf"], "x")))

    def test_file_manager(self) -> None:
        with self.assertRaisesRegex(GLib.Error, "ServiceUnknown"):
            self.show()
        with FileManager(self.desktop) as manager:
            self.show()
            self.assertEqual(manager.shown(), [Shown(["file:///a%FF.pdf"], "x")])
        for behaviour, error in ((REFUSES, "does not want to"), (HANGS, "[Tt]imeout")):
            with FileManager(self.desktop, behaviour) as manager:
                with self.assertRaisesRegex(GLib.Error, error):
                    self.show()
                self.assertEqual(len(manager.shown()), 1)

    def test_portal(self) -> None:
        portal_path = "/org/freedesktop/portal/desktop"
        with Portal(self.desktop, colour_scheme=1) as portal, \
                tempfile.NamedTemporaryFile() as file:
            descriptors = Gio.UnixFDList.new_from_array([os.dup(file.fileno())])
            self.call("org.freedesktop.portal.Desktop", portal_path,
                      "org.freedesktop.portal.OpenURI", "OpenDirectory",
                      GLib.Variant("(sha{sv})", ("", 0, {})), descriptors)
            self.assertEqual(portal.opened(), [file.name])
            for method in ("Read", "ReadOne"):
                for scheme in (1, 2):
                    portal.set_colour_scheme(scheme)
                    self.assertEqual(
                        self.call("org.freedesktop.portal.Desktop", portal_path,
                                  "org.freedesktop.portal.Settings", method,
                                  GLib.Variant("(ss)", ("org.freedesktop.appearance",
                                                        "color-scheme"))), (scheme,))


class FaultyPrograms(unittest.TestCase):
    """A test of the window fails where the program misbehaves, also where it saw nothing wrong."""

    def failures(self, test: Any) -> str:
        class Case(WindowTestCase):
            pass
        Case.test = test  # type: ignore[attr-defined]
        result = unittest.TestResult()
        unittest.defaultTestLoader.loadTestsFromTestCase(Case).run(result)
        return "\n".join(text for _, text in result.errors + result.failures)

    def test_a_good_program_passes(self) -> None:
        self.assertEqual(self.failures(lambda case: case.expect_text("Quirebind")), "")

    def test_a_crash_fails(self) -> None:
        def crash(case: WindowTestCase) -> None:
            os.kill(case.program.process_id, signal.SIGABRT)
            case.assertEqual(case.program.wait_exit(), -signal.SIGABRT)
        self.assertIn("the program ended with -6", self.failures(crash))

    def test_a_complaint_fails(self) -> None:
        with tempfile.NamedTemporaryFile("w", suffix=".sh", delete=False) as script:
            script.write(f"#!/bin/sh\necho 'QObject: is not well' >&2\nexec '{PROGRAM}'\n")
        self.addCleanup(os.remove, script.name)
        os.chmod(script.name, 0o755)
        with mock.patch.dict(os.environ, QUIREBIND_PROGRAM=script.name):
            self.assertIn("QObject: is not well", self.failures(lambda case: None))


if __name__ == "__main__":
    unittest.main()
