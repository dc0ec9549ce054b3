# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Much of everything: many documents, many failures, and little room for them."""

import os
import unittest

from driver.geometry import Point, Rect, Size
from driver.picture import Picture
from window_test_case import WindowTestCase


class ManyDocuments(WindowTestCase):

    def summary(self) -> str:
        """What the merge bar says first. Found without asking for every row of the list."""
        merge_bar = self.window.children[0].children[-1]
        return merge_bar.texts()[0]

    def test_a_thousand_are_listed_by_one_drop(self) -> None:
        first = self.pdf("document 0001.pdf", 2)
        paths = [first]
        for number in range(2, 1001):
            paths.append(self.documents / f"document {number:04}.pdf")
            os.link(first, paths[-1])
        self.assertEqual(self.drop(paths, on="preview"), "copy")
        self.expect(lambda: self.summary().startswith("1,000 documents · 2,000 "), "all are listed",
                    timeout=30)
        rows = self.document_list().children
        self.assertEqual([rows[at].name for at in (0, 499, 999)],
                         [f"document {number:04}.pdf, 2 pages" for number in (1, 500, 1000)])
        area = self.document_list().extents
        self.key("F6")
        for key, shown, hidden in (("End", 999, 0), ("Home", 0, 999), ("End", 999, 0)):
            self.key(key)
            self.expect(lambda: rows[shown].selected and area.contains(rows[shown].extents),
                        f"row {shown} is in sight")
            self.assertFalse(area.contains(rows[hidden].extents))
        self.picture().save("a-thousand-documents")
        # The wheel, and the buttons, work on it as on any other.
        self.input.wheel(area.centre, -5)
        self.expect(lambda: rows[999].extents.bottom > area.bottom + 40, "the list scrolls")
        self.press("Up")
        self.expect(lambda: self.document_list().children[998].selected, "it moves up")
        self.press("Remove")
        self.expect(lambda: self.summary().startswith("999 documents · 1,998 "), "it is taken off")


class ManyFailures(WindowTestCase):
    desktop_options = {"width": 1024, "height": 600}

    def test_the_alert_fits_on_a_small_screen(self) -> None:
        missing = [self.documents / f"missing {number}.pdf" for number in range(1, 301)]
        self.drop([*missing, self.pdf("a.pdf")], on=self.region("preview").at(0.5, 0.3))
        message = self.expect_alert().split("\n")
        self.assertEqual(len(message), 300)
        self.assertEqual(message[0], "Could not read every page of missing 1.pdf.")
        alert, button = self.dialogs()[0].extents, self.button("OK").extents
        self.assertTrue(Rect(0, 0, 1024, 600).contains(alert), alert)
        self.assertTrue(alert.contains(button), button)
        top = self.text_drawn()
        Picture.of_screen(self.desktop).save("alert-of-300-failures")
        self.assertGreater(len(top.colours()), 10)
        self.input.wheel(alert.centre, 3)
        wheeled = self.expect_drawn_other_than(top)
        self.key("Tab", "Page_Down", "Page_Down")
        paged = self.expect_drawn_other_than(wheeled)
        self.key("Up")
        self.expect_drawn_other_than(paged)
        self.press("OK")
        self.expect(lambda: not self.dialogs(), "the alert has closed")
        self.expect_rows(["a.pdf, 1 pages"])

    def text_drawn(self) -> Picture:
        """The middle of the alert, where its text is."""
        area = self.dialogs()[0].extents
        return Picture.of(self.desktop, Rect(area.x + 60, area.y + area.height // 4,
                                             area.width - 100, area.height // 3))

    def expect_drawn_other_than(self, before: Picture) -> Picture:
        """Waits until other text is to be seen there; returns its picture."""
        def changed() -> "Picture | None":
            now = self.text_drawn()
            return now if now.colours() != before.colours() else None
        return self.expect(changed, "the text scrolls")


class SmallScreen(WindowTestCase):
    desktop_options = {"width": 1366, "height": 768, "factor": 2}

    def test_has_room_for_what_is_needed_to_save(self) -> None:
        screen = Rect(0, 0, self.desktop.width, self.desktop.height)
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        self.key("ctrl+Return")
        self.expect_panel()
        panel = self.panels()[-1]
        for part in (*panel.find_all("text"), *panel.find_all("push button", "Save")):
            self.assertTrue(screen.contains(part.extents), f"{part.role} {part.extents}")
        Picture.of_screen(self.desktop).save("save-panel-on-a-small-screen")
        self.cancel_panel()

    def test_shows_all_of_a_long_name_before_its_file_is_replaced(self) -> None:
        name = "W" * 200
        self.pdf(f"{name}.pdf")
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        self.key("ctrl+Return")
        # Without the suffix, so that we are the ones who ask.
        self._answer_panel(str(self.documents / name))
        question = self.expect(
            lambda: next((dialog for dialog in self.dialogs() if dialog.find_all("push button")
                          and any("already exists" in text for text in dialog.texts())), None),
            "it is asked whether to replace it")
        Picture.of_screen(self.desktop).save("question-on-a-small-screen")
        self.assertTrue(Rect(0, 0, self.desktop.width, self.desktop.height)
                        .contains(question.extents), question.extents)
        self.key("Escape")


class SmallestSize(WindowTestCase):

    def test_everything_has_room(self) -> None:
        self.add(*(self.pdf(f"{number}.pdf", 123) for number in range(9)))
        self.expect_text("9 documents · 1,107 pages")
        self.merge(self.documents / "joined.pdf")
        self.assertEqual(self.program.resize(1, 1), Size(760, 520))
        self.expect(lambda: self.region("columns").width == 760, "the columns are narrower")
        self.picture().save("smallest-size")
        window = self.region("window")
        areas = [node.accessible.extents for node in self.window.walk()
                 if node.role in ("label", "push button")]
        for area in areas:
            self.assertTrue(window.contains(area), area)
        beside = [area for area in areas if area.y > self.region("columns").bottom]
        for one in beside:
            for other in beside:
                self.assertTrue(one == other or one.right <= other.x or other.right <= one.x
                                or one.bottom <= other.y or other.bottom <= one.y)
        # The divider, a pixel wide, can be dragged, but neither column becomes too narrow: not the
        # sidebar below 310, nor the preview below 360.
        columns = self.region("columns")
        for target, width in ((columns.x, 310), (columns.right, 760 - 1 - 360)):
            edge = self.region("sidebar").right
            self.input.drag(Point(edge, columns.centre.y), Point(target, columns.centre.y))
            self.expect(lambda: self.region("sidebar").width == width, f"it is {width} wide")
            self.picture().save(f"smallest-size-sidebar-{width}")


if __name__ == "__main__":
    unittest.main()
