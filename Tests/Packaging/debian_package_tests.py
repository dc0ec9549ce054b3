# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The package for Debian: built, looked over, installed into an empty root, and used from there. The
libraries that the program needs are those of the machine: to fetch them would take minutes."""

import os
import re
import sys
import tempfile
import unittest
from pathlib import Path

from packaging import (APP_ID, BUILD, CMAKE, FILES, MANUAL_PAGE, SOURCE, VERSION, files_below,
                       run)

sys.path.insert(0, str(SOURCE / "Tests" / "Quirebind" / "Window"))

from driver import documents  # noqa: E402
from window_test_case import WindowTestCase  # noqa: E402

PROGRAMS = ("usr/bin/quirebind", "usr/libexec/quirebind/quirebind-renderer")
EXPECTED = ({f"usr/{file}" for file in FILES - {MANUAL_PAGE}}
            | {f"usr/{MANUAL_PAGE}.gz", "usr/share/doc/quirebind/copyright",
               "usr/share/doc/quirebind/changelog.Debian.gz",
               "usr/share/lintian/overrides/quirebind"})


class DebianPackage(WindowTestCase):

    starts_program = False

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        folder = tempfile.TemporaryDirectory(prefix="quirebind-package-")
        cls.addClassCleanup(folder.cleanup)
        made, cls.root = Path(folder.name) / "made", Path(folder.name) / "root"
        # A umask that keeps all from others must not be seen in the package.
        run(Path(CMAKE).with_name("cpack"), "-G", "DEB", "-B", made, cwd=BUILD, umask=0o077)
        (cls.package,) = made.glob("*.deb")
        cls.dpkg("--install", cls.package)
        os.environ["QUIREBIND_PROGRAM"] = str(cls.root / PROGRAMS[0])

    @classmethod
    def dpkg(cls, *arguments: object) -> str:
        """Runs dpkg on the root, which has nothing but this package."""
        (cls.root / "var/lib/dpkg/info").mkdir(parents=True, exist_ok=True)
        (cls.root / "var/lib/dpkg/updates").mkdir(exist_ok=True)
        (cls.root / "var/lib/dpkg/status").touch()
        options = ["--force-depends", "--force-not-root"]
        as_root = [] if os.geteuid() == 0 else ["fakeroot"]
        return run(*as_root, "dpkg", f"--root={cls.root}", f"--log={cls.root}/var/log", *options,
                   *arguments)

    def field(self, name: str) -> str:
        return run("dpkg-deb", "--field", self.package, name).strip()

    def installed(self) -> set[str]:
        return {file for file in files_below(self.root) if not file.startswith("var/")}

    def test_lintian_finds_nothing(self) -> None:
        as_root = ["--allow-root"] if os.geteuid() == 0 else []
        self.assertEqual(run("lintian", *as_root, "--fail-on", "error,warning", self.package), "")

    def test_has_the_files_of_the_application_and_no_others(self) -> None:
        self.assertEqual(self.installed(), EXPECTED)

    def test_can_be_read_by_everybody(self) -> None:
        for line in run("dpkg-deb", "--contents", self.package).splitlines():
            self.assertRegex(line, "^(drwxr-xr-x|-rwxr-xr-x|-rw-r--r--) root/root ")

    def test_says_what_it_is(self) -> None:
        self.assertEqual(self.field("Package"), "quirebind")
        self.assertRegex(self.field("Version"), rf"^{re.escape(VERSION)}-\d+$")
        self.assertRegex(self.field("Description"), "^join PDF documents into one\n")

    def test_asks_for_every_library(self) -> None:
        depends = self.field("Depends")
        for program in PROGRAMS:
            for library in re.findall(r"NEEDED.*\[(.*)\]", run("readelf", "-d", self.root / program)):
                # By its name only: dpkg knows one of the two ways into a merged /usr.
                owners = run("dpkg-query", "--search", f"*/{library}")
                packages = {line.split(":")[0] for line in owners.splitlines()}
                self.assertTrue(any(re.search(rf"(^| ){re.escape(package)}( |,|$)", depends)
                                    for package in packages), f"{library}: {packages}")

    def test_programs_are_hardened(self) -> None:
        for program in PROGRAMS:
            run(CMAKE, "-D", f"program={self.root / program}", "-P",
                SOURCE / "Tests/Package/IsHardened.cmake")

    def test_installed_program_merges_what_it_shows(self) -> None:
        program = self.start_program()
        self.assertEqual([window.title for window in program.windows()], ["Quirebind"])
        self.add(self.pdf("a.pdf", 2), self.pdf("b.pdf"))
        # It has found its helper: nothing else can read a page.
        self.expect(lambda: "a 1" in self.preview().description, "the preview shows its page")
        output = self.documents / "joined.pdf"
        self.merge(output)
        self.picture().save("installed")
        self.assertEqual(documents.page_labels(output), ["a 1", "a 2", "b 1"])

    def test_desktops_know_the_window_by_its_entry(self) -> None:
        program = self.start_program()
        entry = (self.root / f"usr/share/applications/{APP_ID}.desktop").read_text()
        expected = re.search("(?m)^StartupWMClass=(.*)$", entry)
        assert expected
        names = self.desktop.run("xprop", "-id", program.windows()[0].id, "WM_CLASS").decode()
        self.assertIn(f'"{expected[1]}"', names)

    def test_leaves_nothing_when_it_is_removed(self) -> None:
        self.addCleanup(self.dpkg, "--install", self.package)
        self.dpkg("--purge", "quirebind")
        self.assertEqual(self.installed(), set())


if __name__ == "__main__":
    unittest.main()
