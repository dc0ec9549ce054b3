# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What the documents say of files in the tree is so."""

import json
import re
import unittest
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
DOCUMENTATION = SOURCE / "Documentation"
DOCUMENTS = sorted([*SOURCE.glob("*.md"), *SOURCE.glob("[A-Z]*/*.md")])


def headings(document: Path) -> set[str]:
    """What the headings of a document are linked to by."""
    return {re.sub(r"[^\w -]", "", heading).strip().lower().replace(" ", "-")
            for heading in re.findall("(?m)^#+ (.*)$", document.read_text())}


def names_in_sources() -> set[str]:
    return {name for folder in ("Platform", "QuirebindCore", "Quirebind")
            for ending in ("h", "cpp") for file in (SOURCE / folder).rglob(f"*.{ending}")
            for name in re.findall(r"\w+", f"{file.stem} {file.read_text()}")}


class Documents(unittest.TestCase):

    def test_links_lead_somewhere(self) -> None:
        links = 0
        for document in DOCUMENTS:
            for link in re.findall(r"\]\(([^)\s]+)\)", document.read_text()):
                if re.match("https?:", link):
                    continue
                links += 1
                path, _, heading = link.partition("#")
                target = document.parent / path if path else document
                with self.subTest(document.name, link=link):
                    self.assertTrue(target.exists())
                    if heading:
                        self.assertIn(heading, headings(target))
        self.assertGreater(links, 50)

    def test_readme_names_what_is_not_kept(self) -> None:
        kept = (DOCUMENTATION / "WhatIsKept.md").read_text()
        section = re.search(r"(?s)\n## What Quirebind does not keep\n(.*?)\n## ", kept)
        lost = re.findall(r"(?m)^- (.*)\.$", section[1]) if section else []
        named = re.search(r"Not kept: ([^.]*)\.", (SOURCE / "README.md").read_text())
        self.assertEqual(" ".join(named[1].split()) if named else "", ", ".join(lost).lower())

    def test_architecture_speaks_of_what_there_is(self) -> None:
        there = names_in_sources()
        told = re.findall(r"`([\w:]+)`", (DOCUMENTATION / "Architecture.md").read_text())
        self.assertGreater(len(told), 50)
        for name in told:
            with self.subTest(name):
                self.assertLessEqual(set(re.findall(r"\w+", name)), there)

    def test_presets_that_run_tests_build_them(self) -> None:
        """Even where the program alone was built in the same folder before."""
        presets = json.loads((SOURCE / "CMakePresets.json").read_text())
        tested = {preset["configurePreset"] for preset in presets["testPresets"]}
        self.assertIn("release", tested)
        for preset in presets["configurePresets"]:
            if preset["name"] in tested:
                with self.subTest(preset["name"]):
                    self.assertEqual(preset["cacheVariables"].get("QUIREBIND_TESTS"), "ON")

    def test_every_package_that_is_installed_has_a_reason(self) -> None:
        script = (SOURCE / "Tools" / "install-packages").read_text()
        lists = re.findall(r'(?m)^[a-z]+="([^"$]*)"$', script)
        self.assertEqual(len(lists), 4)
        reasons = (DOCUMENTATION / "Dependencies.md").read_text()
        for package in sorted(set(" ".join(lists).split())):
            with self.subTest(package):
                self.assertRegex(reasons, rf"(?<![\w.+-]){re.escape(package)}(?![\w+-])")

    def test_licence_is_the_same_for_people_and_for_tools(self) -> None:
        self.assertEqual((SOURCE / "LICENSE").read_text(),
                         (SOURCE / "LICENSES" / "MIT.txt").read_text())

    def test_example_of_the_library_is_the_one_that_is_compiled(self) -> None:
        shown = re.search("(?s)```cpp\n(.*?)```", (DOCUMENTATION / "API.md").read_text())
        assert shown
        program = (DOCUMENTATION / "Examples" / "join.cpp").read_text()
        self.assertEqual(shown[1], re.sub("^(//.*\n)+\n", "", program))


if __name__ == "__main__":
    unittest.main()
