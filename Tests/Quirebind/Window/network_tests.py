# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Nothing leaves the machine: a whole session where there is no network, with every system call
traced that could reach one."""

import os
import re
import subprocess
import unittest

from driver import documents
from driver.desktop_services import FileManager
from window_test_case import WindowTestCase

# Sockets of these kinds lead to programs of this machine only: the X server and D-Bus.
_LOCAL = {"AF_UNIX", "AF_UNSPEC"}
_WITHOUT_NETWORK = ["unshare", "--map-current-user", "--net"]


class Session(WindowTestCase):

    starts_program = False

    def setUp(self) -> None:
        super().setUp()
        alone = subprocess.run([*_WITHOUT_NETWORK, "true"], stderr=subprocess.PIPE, check=False)
        if alone.returncode != 0:
            self.skipTest("no network can be taken away here: " + alone.stderr.decode().strip())
        self.trace = self.documents / "trace"
        # -D: the program is what was started, strace runs beside it.
        self.program_wrapper = [*_WITHOUT_NETWORK, "strace", "-D", "-f", "-qq",
                                "-e", "trace=%network", "-o", str(self.trace)]
        # The leak sanitizer cannot work where a program is traced already.
        options = os.environ.get("ASAN_OPTIONS", "")
        self.start_program(environment={"ASAN_OPTIONS": f"{options}:detect_leaks=0"})

    def test_reaches_no_network(self) -> None:
        output = self.documents / "joined.pdf"
        with FileManager(self.desktop) as manager:
            self.add(self.pdf("a.pdf", 2), self.pdf("b.pdf"))
            self.expect(lambda: "a 1" in self.preview().description, "the preview shows its page")
            self.select("b.pdf")
            self.expect(lambda: "b 1" in self.preview().description, "the preview shows its page")
            self.press("Up")
            self.merge(output)
            self.press("Show in Finder")
            self.expect(manager.shown, "the file manager is asked")
        self.assertEqual(documents.page_labels(output), ["b 1", "a 1", "a 2"])
        self.input.key("ctrl+q")
        self.program.wait_exit()
        families = set(re.findall(r"\b[AP]F_[A-Z0-9_]+", self.trace.read_text()))
        self.assertIn("AF_UNIX", families, "the trace is one of the program")
        self.assertEqual(families - _LOCAL, set())


if __name__ == "__main__":
    unittest.main()
