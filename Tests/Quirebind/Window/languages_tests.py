# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The window in the languages of its users, one for each kind of script."""

import unittest

from driver.picture import Picture
from window_test_case import WindowTestCase


class Languages(WindowTestCase):
    starts_program = False

    def open(self, languages: str) -> None:
        """Starts the program for a user who has chosen these languages."""
        self.start_program(environment={"LANGUAGE": languages})

    def listed(self, *pages: int) -> list[str]:
        """Drops documents of so many pages; returns what their rows are called then."""
        self.drop([self.pdf(f"{count}.pdf", count) for count in pages],
                  on=self.window.extents.centre)

        def rows() -> list[str]:
            return [row.name for row in self.window.find_all("list item")]
        self.expect(lambda: len(rows()) == len(pages), "the documents are listed")
        return rows()

    def test_german(self) -> None:
        self.open("de_DE")
        self.expect_button("PDFs hinzufügen…")
        self.expect_text("Bringen Sie Ihre Seiten zusammen.")
        self.assertEqual(self.listed(1, 2), ["1.pdf, 1 Seite", "2.pdf, 2 Seiten"])
        self.expect_text("Dokumente: 2 · Seiten: 3")
        # Longer than in English, and still no button is squeezed.
        up, down, remove = (self.button(name).extents
                            for name in ("Nach oben", "Nach unten", "Entfernen"))
        self.assertLess(up.width, down.width)
        self.assertLess(down.right, remove.x)

    def test_polish_has_three_kinds_of_numbers(self) -> None:
        self.open("pl")
        self.assertEqual(self.listed(1, 2, 5, 22),
                         ["1.pdf, 1 strona", "2.pdf, 2 strony", "5.pdf, 5 stron",
                          "22.pdf, 22 strony"])

    def test_japanese(self) -> None:
        self.open("ja")
        self.expect_button("PDF を結合…")
        self.assertEqual(self.listed(1), ["1.pdf, 1 ページ"])

    def test_arabic_is_laid_out_from_right_to_left(self) -> None:
        self.open("ar_EG")
        self.assertEqual(self.listed(2, 3, 12),
                         ["2.pdf, 2 صفحتان", "3.pdf, 3 صفحات", "12.pdf, 12 صفحة"])
        middle = self.window.extents.centre.x
        self.assertLess(self.button("دمج ملفات PDF…").extents.right, middle)
        self.assertGreater(self.window.find("list").extents.x, middle)

    def test_a_name_in_latin_letters_stands_above_hebrew(self) -> None:
        self.open("he")
        name = self.window.find("label", "Quirebind").extents
        ink = Picture.of(self.desktop, name).bounds_of((0x1b, 0x1f, 0x23), 60)
        assert ink is not None, "the name is not to be seen"
        self.assertLessEqual(name.right - ink.right, 4)

    def test_an_english_message_stands_below_the_hebrew_title(self) -> None:
        self.open("he")
        self.drop([self.documents / "missing.pdf"], on=self.window.extents.centre)
        alert = self.expect(lambda: self.dialogs()[0], "the alert shows")
        seen = 0
        for label in alert.find_all("label"):
            area = label.extents
            ink = Picture.of(self.desktop, area).bounds_of((0x1b, 0x1f, 0x23), 60)
            assert ink is not None, f"“{label.name}” is not to be seen"
            self.assertLessEqual(area.right - ink.right, 4, label.name)
            seen += 1
        self.assertEqual(seen, 2)

    def test_who_reads_english_first_is_not_given_another(self) -> None:
        self.open("en_GB:de_DE")
        self.expect_button("Add PDFs…")
        self.expect_text("Processed privately on your Mac")

    def test_a_language_without_a_catalogue_gives_way_to_the_next(self) -> None:
        self.open("eo:fr_CA")
        self.expect_button("Ajouter des PDF…")


if __name__ == "__main__":
    unittest.main()
