# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Whatever names the version names the one of the project, and whatever dates it gives its date."""

import email.utils
import os
import re
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from packaging import BUILD, CMAKE, MANUAL_PAGE, METAINFO, RELEASE_DATE, SOURCE, VERSION, run


class Version(unittest.TestCase):

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.TemporaryDirectory(prefix="quirebind-version-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        run(CMAKE, "--install", BUILD, "--prefix", cls.folder)

    def installed(self, name: str) -> Path:
        (path,) = self.folder.rglob(name)
        return path

    def test_is_three_numbers(self) -> None:
        self.assertRegex(VERSION, r"^(0|[1-9]\d*)(\.(0|[1-9]\d*)){2}$")

    def test_of_the_changelog(self) -> None:
        # What comes next may be listed above it.
        headings = re.findall(r"(?m)^## (.*)$", (SOURCE / "CHANGELOG.md").read_text())
        versions = [heading for heading in headings if heading != "[Unreleased]"]
        self.assertEqual(versions[0], f"[{VERSION}] - {RELEASE_DATE}")

    def test_of_the_changelog_of_debian(self) -> None:
        text = (SOURCE / "Packaging/Linux/Debian/changelog").read_text()
        self.assertRegex(text, rf"^quirebind \({re.escape(VERSION)}-\d+\) ")
        dated = re.search("(?m)^ -- .*>  (.*)$", text)
        assert dated
        date = email.utils.parsedate_to_datetime(dated[1])
        self.assertEqual(date.strftime("%Y-%m-%d"), RELEASE_DATE)

    def test_in_software_centres(self) -> None:
        release = ElementTree.parse(self.folder / METAINFO).find("releases/release")
        assert release is not None
        self.assertEqual((release.get("version"), release.get("date")), (VERSION, RELEASE_DATE))

    def test_of_the_manual_page(self) -> None:
        self.assertIn(f'{RELEASE_DATE} "Quirebind {VERSION}"', (self.folder / MANUAL_PAGE).read_text())

    def test_of_the_package_for_cmake(self) -> None:
        text = self.installed("QuirebindConfigVersion.cmake").read_text()
        self.assertIn(f'set(PACKAGE_VERSION "{VERSION}")', text)

    def test_for_pkg_config(self) -> None:
        folder = self.installed("quirebind.pc").parent
        version = run("pkg-config", "--modversion", "quirebind",
                      env={**os.environ, "PKG_CONFIG_PATH": str(folder)})
        self.assertEqual(version.strip(), VERSION)


if __name__ == "__main__":
    unittest.main()
