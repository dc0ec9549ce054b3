# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What a screen reader finds in the window: what everything is, what it is called, what state it is
in; and that all can be done through it."""

import unittest

from driver import documents
from driver.accessibility import Accessible, Node
from window_test_case import ALERT_TITLE, WindowTestCase

# What says nothing of what a thing is for.
_NO_ROLES = ("unknown", "filler", "layered pane", "invalid")
# What can have the focus, and users know how to use once they hear it.
_FOCUSABLE = ("push button", "list", "list item", "grip", "document", "paragraph", "label")
_CONTROLS = ("push button", "list", "list item", "progress bar", "grip", "text", "scroll pane")


class AccessibilityTestCase(WindowTestCase):

    def check_controls(self, place: Accessible) -> list[Node]:
        """Checks that all in there that can be used can be told from each other and be understood;
        returns that."""
        nodes = list(place.walk())
        parts = [node for node in nodes if "focusable" in node.states or node.role in _CONTROLS]
        for node in parts:
            with self.subTest(f"{node.role} “{node.name}”"):
                self.assertNotIn(node.role, _NO_ROLES)
                if "focusable" in node.states:
                    self.assertIn(node.role, _FOCUSABLE)
                self.assertNotEqual(node.name, "")
                self.assertNotIn("&", node.name)
                self.assertEqual("enabled" in node.states, "sensitive" in node.states)
                self.assertIn("visible", node.states)
                if node.role != "label":  # that may be longer than what shows of it
                    self.assertTrue(place.extents.contains(node.accessible.extents),
                                    node.accessible.extents)
                if node.role == "push button":
                    self.assertIn("focusable", node.states)
                    self.assertEqual("Press" in node.accessible.actions(), "enabled" in node.states)
        return parts


class Controls(AccessibilityTestCase):

    def test_of_the_empty_window(self) -> None:
        self.assertEqual((self.window.role, self.window.name), ("frame", "Quirebind"))
        self.assertIn("active", self.window.states)
        parts = {node.name: node for node in self.check_controls(self.window)}
        self.assertEqual(set(parts), {"Add PDFs…", "Merge PDFs…",
                                      "Divider between the documents and the preview"})
        self.assertLessEqual({"enabled", "focusable", "focused"}, parts["Add PDFs…"].states)
        self.assertNotIn("enabled", parts["Merge PDFs…"].states)

    def test_with_documents(self) -> None:
        self.add(self.pdf("a.pdf", 3), self.pdf("b.pdf"))
        self.expect(lambda: self.preview().name == "a.pdf", "it is previewed")
        parts = self.check_controls(self.window)
        self.assertEqual({node.name for node in parts},
                         {"Add PDFs…", "YOUR DOCUMENTS", "a.pdf, 3 pages", "b.pdf, 1 pages", "Up",
                          "Down", "Remove", "Divider between the documents and the preview",
                          "a.pdf", "Merge PDFs…"})
        for node in parts:
            with self.subTest(node.name):
                self.assertLessEqual({"enabled", "focusable"}, node.states)
        self.merge(self.documents / "joined.pdf")
        self.assertIn("Show in Finder", [node.name for node in self.check_controls(self.window)])

    def test_of_an_alert(self) -> None:
        documents.damaged_pdf(self.documents / "damaged.pdf")
        documents.locked_pdf(self.documents / "locked.pdf")
        self.press("Add PDFs…")
        self.choose(self.documents / "damaged.pdf", self.documents / "locked.pdf")
        message = self.expect_alert()
        alert = self.dialogs()[0]
        self.assertIn(alert.role, ("dialog", "alert"))
        self.assertEqual(alert.name, ALERT_TITLE)
        self.assertEqual(alert.description, message)
        self.assertLessEqual({"active", "enabled"}, alert.states)
        self.assertEqual(alert.texts(), [ALERT_TITLE, message])
        self.check_controls(alert)
        self.assertTrue(self.button("OK").focused)

    def test_of_an_alert_that_scrolls(self) -> None:
        self.drop([self.documents / f"missing {number}.pdf" for number in range(40)], on="preview")
        message = self.expect_alert()
        self.assertEqual(self.dialogs()[0].description, message)
        self.check_controls(self.dialogs()[0])


class List(AccessibilityTestCase):

    def test_rows_are_told_by_name_and_pages_and_which_is_selected(self) -> None:
        self.add(self.pdf("ü 1.pdf", 12), self.pdf("مستند.pdf", label="x"), self.pdf("c.pdf", 2))
        names = ["ü 1.pdf, 12 pages", "مستند.pdf, 1 pages", "c.pdf, 2 pages"]
        self.expect_rows(names)
        self.key("F6", "Down")
        self.expect_selected(names[1])
        for row in self.rows():
            self.assertEqual(row.role, "list item")
            self.assertLessEqual({"selectable", "focusable", "enabled"}, row.states)
            self.assertTrue(self.document_list().extents.contains(row.extents))
        self.assertEqual([row.focused for row in self.rows()], [False, True, False])
        tops = [row.extents.y for row in self.rows()]
        self.assertEqual(tops, sorted(set(tops)))
        self.key("alt+Up")
        self.expect_rows([names[1], names[0], names[2]])
        self.expect_selected(names[1])

    def test_the_preview_tells_what_it_shows(self) -> None:
        self.add(self.pdf("a.pdf", 3), self.pdf("b.pdf", label="other words"))
        for keys, name, description in ((["F6"], "a.pdf", "Page 1 of 3\na 1"),
                                        (["F6", "End"], "a.pdf", "Page 3 of 3\na 3"),
                                        (["shift+F6", "End"], "b.pdf",
                                         "Page 1 of 1\nother words 1")):
            with self.subTest(keys):
                self.key(*keys)
                self.expect(lambda: (self.preview().name, self.preview().description)
                            == (name, description), f"{name}: {description}")


class Doing(AccessibilityTestCase):

    def test_everything_can_be_pressed(self) -> None:
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"), self.pdf("c.pdf"))
        for button, names in (("Down", "bac"), ("Up", "abc"), ("Remove", "bc")):
            self.expect_enabled(button).press()
            self.expect_rows([f"{name}.pdf, 1 pages" for name in names])
        self.button("Add PDFs…").press()
        self.choose(self.documents / "a.pdf")
        self.expect_rows([f"{name}.pdf, 1 pages" for name in "bca"])
        self.button("Merge PDFs…").press()
        self.save_as(self.documents / "joined.pdf")
        self.button("Show in Finder").press()
        self.expect(self.program.opened_elsewhere, "the folder is opened")
        self.button("Merge PDFs…").press()
        self.save_as(self.documents / "c.pdf", replace=True)
        self.expect_alert()
        self.button("OK").press()
        self.expect(lambda: not self.dialogs(), "the alert has closed")


class Merging(AccessibilityTestCase):
    program_variable = "QUIREBIND_HELD_MERGE_PROGRAM"

    def test_while_a_merge_runs(self) -> None:
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        self.expect_enabled("Merge PDFs…")
        hold = self.documents / "hold"
        hold.touch()
        self.addCleanup(hold.unlink, missing_ok=True)
        self.press("Merge PDFs…")
        self.save_as(self.documents / "joined.pdf")
        self.expect_button("Merging…")
        parts = self.check_controls(self.window)
        self.assertEqual([node.role for node in parts if node.name == "Merging…"],
                         ["progress bar", "push button"])
        for node in parts:
            # What the toolkit says of a row is not about the list that it is in.
            if node.role != "list item":
                with self.subTest(node.name):
                    self.assertNotIn("enabled", node.states)
        self.program.close()
        message = self.expect(lambda: self.dialogs() and self.dialogs()[0], "it is said that it "
                              "is still running")
        self.check_controls(message)
        self.assertEqual(message.texts()[0], "The merge is still running")
        self.press("Keep Window Open")
        hold.unlink()
        self.expect_button("Show in Finder")


if __name__ == "__main__":
    unittest.main()
