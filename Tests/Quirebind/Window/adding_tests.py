# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""How documents come into the list: through the panel and by drop, and what becomes of files that
cannot be listed."""

import os
import unittest
from pathlib import Path
from typing import Callable

from driver import documents
from driver.accessibility import Accessible
from driver.desktop_services import ANSWERS, Documents, REFUSES
from driver.drag_source import file_uri
from driver.picture import Colour
from window_test_case import WindowTestCase

TEAL: Colour = (0x00, 0x86, 0x98)


class Panel(WindowTestCase):

    def open_panel(self, way: Callable[[], object]) -> Accessible:
        """Opens the panel; returns it."""
        way()
        self.expect_panel()
        return self.panels()[-1]

    def folder(self) -> str:
        """The folder that the open panel shows."""
        self.expect_panel()
        return self.panels()[-1].find("combo box").name

    def files(self) -> set[str]:
        """What the open panel lists."""
        tree = self.panels()[-1].find("tree", "Files")
        return {item.name for item in tree.find_all("tree item")}

    def test_opens_by_the_button_and_by_its_key_and_cancelling_it_changes_nothing(self) -> None:
        ways = (lambda: self.press("Add PDFs…"), lambda: self.key("ctrl+o"))
        for documents_listed in ([], ["a.pdf, 1 pages", "b.pdf, 2 pages"]):
            for way in ways:
                self.open_panel(way)
                self.cancel_panel()
                self.expect_rows(documents_listed)
                self.expect_selected(*documents_listed[1:])
                self.expect_enabled("Merge PDFs…", bool(documents_listed))
            if not documents_listed:
                self.add(self.pdf("a.pdf"), self.pdf("b.pdf", 2))
                self.select("b.pdf")

    def test_offers_pdf_files_and_folders_only(self) -> None:
        for name in ("a.pdf", "B.PDF", "notes.txt", "picture.png", "pdf"):
            documents.simple_pdf(self.program.home / name)
        (self.program.home / "folder").mkdir()
        panel = self.open_panel(lambda: self.press("Add PDFs…"))
        self.expect(lambda: {"a.pdf", "B.PDF", "folder"} <= self.files(), "they are listed")
        self.assertEqual(self.files() & {"notes.txt", "picture.png", "pdf"}, set())
        types = panel.find_all("combo box")[-1]
        self.assertRegex(types.name, r"PDF.*\(\*\.pdf\)")

    def test_several_documents_can_be_chosen_at_once(self) -> None:
        for name in ("a.pdf", "b.pdf", "c.pdf"):
            documents.simple_pdf(self.program.home / name)
        panel = self.open_panel(lambda: self.press("Add PDFs…"))
        first = self.expect(lambda: panel.find("tree item", "a.pdf"), "a document is offered")
        self.input.click(first)
        self.key("shift+Down", "shift+Down", "Return")
        self.expect_rows(["a.pdf, 1 pages", "b.pdf, 1 pages", "c.pdf, 1 pages"])
        self.expect_selected("a.pdf, 1 pages")

    def test_begins_in_the_folder_that_was_chosen_from_last(self) -> None:
        home = self.program.home
        (home / "Documents").mkdir()
        self.open_panel(lambda: self.press("Add PDFs…"))
        self.assertEqual(self.folder(), str(home / "Documents"))
        self.choose(self.pdf("letters/a.pdf"), self.pdf("letters/b.pdf"))
        for button in ("Add PDFs…", "Merge PDFs…"):
            self.press(button)
            self.assertEqual(self.folder(), str(self.documents / "letters"))
            self.cancel_panel()
        self.merge(self.pdf("results/old.pdf").with_name("new.pdf"))
        self.open_panel(lambda: self.press("Add PDFs…"))
        self.assertEqual(self.folder(), str(self.documents / "results"))
        self.cancel_panel()


class Names(WindowTestCase):

    def test_every_name_arrives_as_it_is(self) -> None:
        names = ["two words.pdf", "Übersicht – Größe.pdf", "مستند.pdf", "תוכן 1.pdf", "#1 100%.pdf",
                 "a&b <i>.pdf", "日本語.pdf"]
        paths = [self.pdf(name, label="x") for name in names]
        rows = [f"{name}, 1 pages" for name in names]
        self.add(*paths)
        self.expect_rows(rows)
        self.expect_selected(rows[0])
        self.picture().save("names")
        self.drop(paths, on="sidebar")
        self.expect_rows(rows * 2)
        # A screen reader reads the name of the document that is shown.
        self.key("F6", "End")
        self.expect(lambda: self.preview().name == names[-1], "the last document is shown")

    def test_a_name_that_is_not_utf8_arrives_unharmed(self) -> None:
        path = os.fsencode(self.documents) + b"/caf\xe9.pdf"
        documents.simple_pdf(path, pages=2, label="cafe")
        # Another file, whose name a program would try that reads the bytes as text.
        self.pdf("caf\ufffd.pdf", label="wrong")
        uris = b"file://" + os.fsencode(self.documents) + b"/caf%E9.pdf\r\n"
        self.assertEqual(self.drop(uris, on="preview"), "copy")
        row = "caf\ufffd.pdf, 2 pages"
        self.expect_rows([row])
        self.drop([self.pdf("b.pdf")], on="preview")
        self.expect_rows([row, "b.pdf, 1 pages"])
        self.select("b.pdf")
        self.select("caf\ufffd.pdf")
        self.expect(lambda: "cafe 1" in self.preview().description, "the preview shows its page")
        self.merge(self.documents / "joined.pdf")
        self.assertEqual(documents.page_labels(self.documents / "joined.pdf"),
                         ["cafe 1", "cafe 2", "b 1"])

    def test_a_document_may_be_listed_twice(self) -> None:
        path = self.pdf("a.pdf", 2)
        self.drop([path, path], on="preview")
        self.expect_rows(["a.pdf, 2 pages"] * 2)
        self.expect_selected("a.pdf, 2 pages")  # one of them
        self.add(path)
        self.expect_text("3 documents · 6 pages")
        self.merge(self.documents / "joined.pdf")
        self.assertEqual(documents.page_labels(self.documents / "joined.pdf"), ["a 1", "a 2"] * 3)


class Failures(WindowTestCase):

    def failing(self) -> list[Path]:
        """Files that cannot be listed, and why the alert says so."""
        documents.damaged_pdf(self.documents / "damaged é.pdf")
        documents.locked_pdf(self.documents / "locked.pdf")
        (self.documents / "folder.pdf").mkdir()
        (self.documents / "notes.txt").write_text("Not a document.")
        return [self.documents / name for name in
                ("damaged é.pdf", "locked.pdf", "missing.pdf", "folder.pdf", "notes.txt")]

    MESSAGE = ("Could not read every page of damaged é.pdf.\n"
               "locked.pdf is locked. Unlock it in Preview before adding it.\n"
               "Could not read every page of missing.pdf.\n"
               "Could not read every page of folder.pdf.\n"
               "Could not read every page of notes.txt.")

    def test_each_is_told_on_a_line_of_its_own_and_the_others_are_listed(self) -> None:
        failing = self.failing()
        files = [failing[0], self.pdf("z.pdf"), *failing[1:4], self.pdf("a.pdf", 3), failing[4]]
        self.assertEqual(self.drop(files, on="sidebar"), "copy")
        self.assertEqual(self.expect_alert(), self.MESSAGE)
        self.picture().save("failures")
        # Already there, below the alert.
        self.expect_rows(["z.pdf, 1 pages", "a.pdf, 3 pages"])
        self.expect_selected("z.pdf, 1 pages")
        self.dismiss_alert()
        self.expect_rows(["z.pdf, 1 pages", "a.pdf, 3 pages"])
        self.expect_focus("Add PDFs…")

    def test_a_damaged_document_chosen_in_the_panel(self) -> None:
        damaged = self.failing()[0]
        self.press("Add PDFs…")
        self.choose(damaged, self.pdf("a.pdf"))
        self.assertEqual(self.expect_alert(), "Could not read every page of damaged é.pdf.")
        self.dismiss_alert()
        self.expect_rows(["a.pdf, 1 pages"])
        # It can be tried again once it is whole.
        documents.simple_pdf(damaged, label="x")
        self.add(damaged)
        self.expect_rows(["a.pdf, 1 pages", "damaged é.pdf, 1 pages"])

    def test_only_failures_leave_the_list_empty(self) -> None:
        self.drop(self.failing()[:1], on="preview")
        self.expect_alert()
        self.dismiss_alert()
        self.expect_text("Drop your PDFs here")
        self.expect_enabled("Merge PDFs…", False)


class Drops(WindowTestCase):

    def test_the_order_of_a_drop_is_kept(self) -> None:
        names = ["c.pdf", "a.pdf", "d.pdf", "b.pdf"]
        self.drop([self.pdf(name) for name in names], on="preview")
        self.expect_rows([f"{name}, 1 pages" for name in names])
        self.expect_selected("c.pdf, 1 pages")
        # What comes later does not take the selection.
        self.select("d.pdf")
        self.drop([self.pdf("e.pdf")], on="preview")
        self.expect_rows([f"{name}, 1 pages" for name in [*names, "e.pdf"]])
        self.expect_selected("d.pdf, 1 pages")

    def test_what_is_no_file_is_refused_or_left_out(self) -> None:
        link = b"https://example.org/a.pdf\r\n"
        highlight = []
        for nothing in (link, b"# a comment\r\nmailto:a@example.org\r\n"):
            with self.subTest(nothing):
                action = self.drop(nothing, on="preview", while_hovering=lambda: highlight.append(
                    self.picture("preview").count_close_to(TEAL)))
                self.assertEqual((action, highlight[-1]), ("none", 0))
        self.expect_rows([])
        file = file_uri(self.pdf("a.pdf")).encode() + b"\r\n"
        self.assertEqual(self.drop(b"# two\r\n" + link + file, on="preview"), "copy")
        self.expect_rows(["a.pdf, 1 pages"])

    def test_files_that_only_the_portal_knows_are_asked_for(self) -> None:
        paths = [self.pdf("b.pdf"), self.pdf("a.pdf", 2)]
        key = b"key:" + b"\n".join(os.fsencode(path) for path in paths)
        self.assertEqual(self.drop(key, on="preview"), "copy")
        self.expect_rows([])  # nobody answers here
        for behaviour, listed in ((REFUSES, []), (ANSWERS, ["b.pdf, 1 pages", "a.pdf, 2 pages"])):
            with Documents(self.desktop, behaviour) as portal:
                self.assertEqual(self.drop(key, on="preview"), "copy")
                self.expect(lambda: portal.calls("RetrieveFiles"), "the portal is asked")
                self.expect_rows(listed)

    def test_a_window_takes_no_files_while_something_is_asked_in_front_of_it(self) -> None:
        documents.damaged_pdf(self.documents / "damaged.pdf")
        self.drop([self.documents / "damaged.pdf"], on="sidebar")
        self.expect_alert()
        corner = self.region("sidebar").at(0.1, 0.9)  # where neither covers it
        self.assertEqual(self.drop([self.pdf("a.pdf")], on=corner), "none")
        self.dismiss_alert()
        self.press("Add PDFs…")
        self.expect_panel()
        self.assertEqual(self.drop([self.pdf("a.pdf")], on=corner), "none")
        self.cancel_panel()
        self.expect_rows([])
        self.assertEqual(self.drop([self.pdf("a.pdf")], on=corner), "copy")
        self.expect_rows(["a.pdf, 1 pages"])


if __name__ == "__main__":
    unittest.main()
