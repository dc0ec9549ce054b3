# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What `cmake --install` makes of the application, and whether desktops can read it. Needs no
display."""

import configparser
import os
import re
import struct
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from packaging import (APP_ID, BUILD, CMAKE, DESKTOP_ENTRY, FILES, ICONS, MANUAL_PAGE, METAINFO,
                       SOURCE, files_below, run)

LANGUAGES = {"ar", "de", "es", "fr", "he", "it", "ja", "nl", "pl", "pt", "zh_CN"}
_LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"


def picture_size(path: Path) -> tuple[int, int]:
    """Width and height of a PNG file."""
    header = path.read_bytes()[:24]
    assert header.startswith(b"\x89PNG\r\n\x1a\n"), f"{path} is no PNG file"
    width, height = struct.unpack(">II", header[16:])
    return width, height


class InstalledFiles(unittest.TestCase):

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.TemporaryDirectory(prefix="quirebind-installed-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        run(CMAKE, "--install", BUILD, "--component", "Application", "--prefix", cls.folder)

    def desktop_entry(self) -> configparser.SectionProxy:
        parser = configparser.ConfigParser(interpolation=None, delimiters="=")
        parser.optionxform = str  # type: ignore[assignment,method-assign]
        parser.read(self.folder / DESKTOP_ENTRY, encoding="utf-8")
        return parser["Desktop Entry"]

    def metainfo(self) -> ElementTree.Element:
        return ElementTree.parse(self.folder / METAINFO).getroot()

    def test_are_those_of_the_application_and_no_others(self) -> None:
        self.assertEqual(files_below(self.folder), FILES)

    def test_nothing_that_is_installed_is_the_developers_tool(self) -> None:
        with tempfile.TemporaryDirectory(prefix="quirebind-installed-") as everything:
            run(CMAKE, "--install", BUILD, "--prefix", everything)
            files = files_below(Path(everything))
        self.assertLess(FILES, files, "the library is installed as well")
        self.assertFalse([file for file in files if "merge-pdfs" in file])
        programs = {file for file in files if re.match("s?bin/|libexec/", file)}
        self.assertEqual(programs, {"bin/quirebind", "libexec/quirebind/quirebind-renderer"})

    def test_programs_look_for_libraries_where_the_system_has_them(self) -> None:
        for program in ("bin/quirebind", "libexec/quirebind/quirebind-renderer"):
            self.assertTrue(os.access(self.folder / program, os.X_OK))
            self.assertNotRegex(run("readelf", "-d", self.folder / program), "RPATH|RUNPATH")

    def test_desktop_entry_is_valid(self) -> None:
        self.assertEqual(run("desktop-file-validate", self.folder / DESKTOP_ENTRY), "")

    def test_desktop_entry_says_what_the_program_can(self) -> None:
        entry = self.desktop_entry()
        self.assertEqual((entry["Exec"], entry["Icon"]), ("quirebind", APP_ID))
        self.assertNotIn("MimeType", entry)  # it takes no files on its command line

    def test_desktop_entry_speaks_all_languages(self) -> None:
        entry = self.desktop_entry()
        for key in ("GenericName", "Comment", "Keywords"):
            spoken = {found[1] for found in (re.fullmatch(rf"{key}\[(.*)\]", name)
                                             for name in entry) if found}
            self.assertEqual(spoken, LANGUAGES, key)

    def test_metainfo_is_valid(self) -> None:
        run("appstreamcli", "validate", "--no-net", "--no-color", self.folder / METAINFO)

    def test_metainfo_is_about_this_application(self) -> None:
        metainfo = self.metainfo()
        self.assertEqual(metainfo.findtext("id"), APP_ID)
        self.assertEqual(metainfo.findtext("launchable"), Path(DESKTOP_ENTRY).name)
        entry = self.desktop_entry()
        for summary in metainfo.iterfind("summary"):
            language = summary.get(_LANGUAGE, "").replace("-", "_")
            self.assertEqual(summary.text, entry[f"Comment[{language}]" if language else "Comment"])
        self.assertEqual({summary.get(_LANGUAGE, "").replace("-", "_")
                          for summary in metainfo.iterfind("summary")}, LANGUAGES | {""})

    def test_metainfo_shows_pictures_that_there_are(self) -> None:
        folder = SOURCE / "Documentation" / "screenshots"
        shown = list(self.metainfo().iterfind("screenshots/screenshot/image"))
        self.assertTrue(shown)
        for image in shown:
            self.assertRegex(image.text or "", r"^https://")
            picture = folder / Path(image.text or "").name
            self.assertEqual(picture_size(picture),
                             (int(image.get("width", "0")), int(image.get("height", "0"))))
            self.assertLess(picture.stat().st_size, 200_000, picture)

    def test_manual_page_has_no_warnings(self) -> None:
        page = self.folder / MANUAL_PAGE
        said = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page,
                   env={**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8"})
        self.assertNotIn("warning", said)
        self.assertEqual(run("lexgrog", page).count("join PDF documents into one"), 1)

    def test_icons_have_their_sizes(self) -> None:
        for size, icon in ICONS.items():
            self.assertEqual(picture_size(self.folder / icon), (size, size))

    def test_drawn_icons_are_not_empty(self) -> None:
        for size, icon in ICONS.items():
            colours = int(run("identify", "-format", "%k", self.folder / icon))
            self.assertGreater(colours, 10, f"{size} pixels")

    def test_confined_package_is_of_this_application_and_may_do_nothing_more(self) -> None:
        manifest = (SOURCE / "Packaging/Linux/Flatpak" / f"{APP_ID}.yaml").read_text()
        self.assertRegex(manifest, rf"(?m)^id: {re.escape(APP_ID)}$")
        granted = set(re.findall(r"(?m)^ +- (--(?:share|socket|filesystem|device|talk)\S*)", manifest))
        self.assertEqual(granted, {"--share=ipc", "--socket=wayland", "--socket=fallback-x11"})


if __name__ == "__main__":
    unittest.main()
