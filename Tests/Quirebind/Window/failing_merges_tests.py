# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Merges that cannot be done: what is said, and that nothing is lost by it."""

import unittest

from driver import documents
from merging_tests import MergingTestCase


class Failing(MergingTestCase):

    def expect_failure(self, message: str) -> None:
        """Merges into `output` (which is there already where it is a source), and waits for that
        message."""
        replaces = True if self.output.exists() else None
        self.press("Merge PDFs…")
        self.save_as(self.output, replace=replaces)
        self.assertEqual(self.expect_alert(), message)
        self.dismiss_alert()
        self.expect_button("Show in Finder", there=False)
        self.expect_enabled("Merge PDFs…")
        self.expect_rows(["a.pdf, 2 pages", "b.pdf, 1 pages"])

    def test_a_source_is_never_overwritten(self) -> None:
        message = "Choose a different output file to preserve your original PDFs."
        original = self.b.read_bytes()
        self.output.with_name("alias.pdf").symlink_to(self.b)
        for path in (self.b, self.output.with_name("alias.pdf")):
            with self.subTest(path.name):
                self.output = path
                self.expect_failure(message)
                self.assertEqual(self.b.read_bytes(), original)
        self.assertEqual(sorted(path.name for path in self.documents.iterdir()),
                         ["a.pdf", "b.pdf", "results"])

    def test_a_source_that_went_bad_meanwhile(self) -> None:
        self.b.unlink()
        self.expect_failure("Could not read every page of b.pdf.")
        documents.damaged_pdf(self.b)
        self.expect_failure("Could not read every page of b.pdf.")
        documents.locked_pdf(self.b)
        self.expect_failure("b.pdf is locked. Unlock it in Preview before adding it.")
        self.assertEqual(self.left_beside_output(), [])
        # And once all is well again, it works.
        documents.simple_pdf(self.b)
        self.merge(self.output)
        self.expect_merged(self.output)

    def test_a_folder_that_is_not_there(self) -> None:
        self.output.parent.rmdir()
        self.expect_failure("No such file or directory")
        self.assertFalse(self.output.parent.exists())


if __name__ == "__main__":
    unittest.main()
