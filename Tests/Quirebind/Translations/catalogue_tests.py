#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What has to be so of every catalogue, whoever wrote it: it says each text of the sources, no other,
and says it whole. QUIREBIND_LUPDATE names the tool that finds the texts; CTest sets it."""

import os
import re
import subprocess
import tempfile
import unicodedata
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

APPLICATION = Path(__file__).resolve().parents[3] / "Quirebind"
CATALOGUES = sorted((APPLICATION / "Translations").glob("*.ts"))
LANGUAGES = {"ar", "de", "es", "fr", "he", "it", "ja", "nl", "pl", "pt", "zh_CN"}

_PLACEHOLDER = re.compile(r"%(?:lld|n|L?\d+)")
# Of our own texts. The only others in the sources are some of the toolkit's, for which it has
# catalogues itself.
_CONTEXT = "Quirebind"


def _messages(catalogue: Path) -> "dict[str, ElementTree.Element]":
    """The messages of our texts, by key."""
    found: "dict[str, ElementTree.Element]" = {}
    for context in ElementTree.parse(catalogue).iterfind("context"):
        if context.findtext("name") != _CONTEXT:
            continue
        for message in context.iterfind("message"):
            key = message.findtext("source", "")
            assert key not in found, f"{catalogue.name} has “{key}” twice"
            found[key] = message
    return found


def _forms(message: ElementTree.Element) -> list[str]:
    """The translation: one text, or one for each kind of number."""
    translation = message.find("translation")
    assert translation is not None
    if message.get("numerus") == "yes":
        return [form.text or "" for form in translation.iterfind("numerusform")]
    return [translation.text or ""]


def _extracted(language: str) -> "dict[str, ElementTree.Element]":
    """The messages that are in the sources now, as a new catalogue of that language."""
    with tempfile.TemporaryDirectory() as folder:
        catalogue = Path(folder) / "new.ts"
        subprocess.run([os.environ["QUIREBIND_LUPDATE"], "-silent", "-locations", "none",
                        "-target-language", language, str(APPLICATION), "-ts", str(catalogue)],
                       check=True, capture_output=True)
        return _messages(catalogue)


class Catalogues(unittest.TestCase):

    def test_there_is_one_for_each_language(self) -> None:
        self.assertEqual({path.name for path in CATALOGUES},
                         {f"quirebind_{language}.ts" for language in LANGUAGES})
        for path in CATALOGUES:
            language = ElementTree.parse(path).getroot().get("language", "")
            self.assertEqual(path.stem, f"quirebind_{language}")

    def test_each_has_the_texts_of_the_sources_with_all_their_forms(self) -> None:
        for path in CATALOGUES:
            sources = _extracted(path.stem.split("_", 1)[1])
            self.assertGreater(len(sources), 20)
            catalogue = _messages(path)
            self.assertEqual(set(catalogue), set(sources), path.name)
            for key, message in catalogue.items():
                with self.subTest(path.name, key=key):
                    self.assertEqual(message.get("numerus"), sources[key].get("numerus"))
                    self.assertEqual(len(_forms(message)), len(_forms(sources[key])))

    def test_nothing_is_unfinished_or_left_over(self) -> None:
        for path in CATALOGUES:
            for translation in ElementTree.parse(path).iter("translation"):
                self.assertIsNone(translation.get("type"), path.name)

    def test_no_placeholder_is_lost_or_gained(self) -> None:
        for path in CATALOGUES:
            for key, message in _messages(path).items():
                for form in _forms(message):
                    with self.subTest(path.name, key=key, form=form):
                        self.assertNotEqual(form.strip(), "")
                        self.assertEqual(_PLACEHOLDER.findall(form), _PLACEHOLDER.findall(key))
                        self.assertEqual(form.count("%"), key.count("%"))

    def test_typography_is_that_of_the_texts(self) -> None:
        for path in CATALOGUES:
            for key, message in _messages(path).items():
                for form in _forms(message):
                    with self.subTest(path.name, key=key, form=form):
                        self.assertEqual(form, form.strip())
                        self.assertNotIn("...", form)
                        self.assertNotRegex(form, "['\"]")
                        self.assertEqual(form.endswith("…"), key.endswith("…"))
                        self.assertEqual(form.endswith((".", "。")), key.endswith("."))

    def test_what_is_read_from_right_to_left_begins_so(self) -> None:
        # A label takes its direction from its first letter, and would else put the words that come
        # first last.
        for language in ("ar", "he"):
            for key, message in _messages(APPLICATION / "Translations" /
                                          f"quirebind_{language}.ts").items():
                for form in _forms(message):
                    if form != key:
                        strong = [kind for kind in map(unicodedata.bidirectional,
                                                       _PLACEHOLDER.sub("", form))
                                  if kind in ("L", "R", "AL")]
                        self.assertIn(strong[0], ("R", "AL"), f"{language}: {form}")

    def test_nothing_speaks_of_another_kind_of_computer(self) -> None:
        for path in CATALOGUES:
            for message in _messages(path).values():
                for form in _forms(message):
                    self.assertNotRegex(form, r"\b(Mac|Finder)\b", path.name)


if __name__ == "__main__":
    unittest.main()
