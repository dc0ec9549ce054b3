# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Names that are too long for a row, and the tool tips that tell them in full."""

import re
import unittest

from driver.accessibility import Accessible, Gone
from driver.geometry import Rect
from driver.picture import Picture
from window_test_case import WindowTestCase


class LongNames(WindowTestCase):

    def tool_tip(self) -> Accessible:
        """The tool tip. Raises Gone where none shows."""
        for frame in self.program.frames():
            if frame.role == "tool tip":
                return frame
        raise Gone("no tool tip shows")

    def expect_tool_tip(self, row: Accessible) -> Accessible:
        """Points at the row, and waits for what is told of it."""
        self.input.move_to(self.region("header").centre)
        self.expect(lambda: "tool tip" not in [frame.role for frame in self.program.frames()],
                    "no tool tip shows")
        self.input.move_to(row)
        return self.expect(self.tool_tip, "there is a tool tip")

    def test_are_cut_in_the_middle_and_told_in_full(self) -> None:
        begin, end = "The beginning of " * 5, " the end" * 10
        names = [f"{begin}one{end}.pdf", f"{begin}two{end}.pdf", f"{begin}one{end} 2.pdf", "a.pdf"]
        self.add(*(self.pdf(name, label="x") for name in names))
        self.expect_rows([f"{name}, 1 pages" for name in names])
        self.input.click(self.document_list().extents.at(0.5, 0.95))  # so that no row is selected
        self.expect_selected()
        self.input.move_to(self.region("header").centre)
        rows = [row.extents for row in self.rows()]
        self.assertEqual({row.height for row in rows}, {rows[-1].height})
        picture = self.picture("sidebar")
        picture.save("long-names")
        drawn = [list(picture.crop(row).colours().items()) for row in rows]
        # Names that differ only where they are cut look the same, others do not.
        self.assertEqual(drawn[0], drawn[1])
        self.assertNotEqual(drawn[0], drawn[2])
        # And they are cut: nothing is drawn close to the edge of the row.
        for row in rows:
            edge = Rect(row.right - 12, row.y, 12, row.height)
            self.assertEqual(len(picture.crop(edge).colours()), 1)
        for row, name in list(zip(self.rows(), names))[1:3]:
            self.assertEqual(_letters(self.expect_tool_tip(row)), str(self.documents / name))

    def test_a_tool_tip_says_the_name_letter_for_letter(self) -> None:
        name = "<b>bold<br>one & two<i>.pdf"
        self.add(self.pdf(name, label="x"))
        self.assertEqual(_letters(self.expect_tool_tip(self.row(name))), str(self.documents / name))

    def test_a_tool_tip_stays_on_the_screen(self) -> None:
        name = "word_" * 49 + "end.pdf"
        self.add(self.pdf(name, label="x"))
        tip = self.expect_tool_tip(self.row(name))
        Picture.of_screen(self.desktop).save("long-tool-tip")
        screen = Rect(0, 0, self.desktop.width, self.desktop.height)
        self.assertTrue(screen.contains(tip.extents), tip.extents)

    def test_that_are_equal_are_told_apart_by_their_folders(self) -> None:
        home = self.program.home
        names = ["~/May/a.pdf", "~/ملفات/a.pdf"]
        self.add(*(self.pdf(str(home / name[2:])) for name in names))
        for row, name in zip(self.rows(), names):
            self.assertEqual(row.description, name)
            self.assertEqual(_letters(self.expect_tool_tip(row)), name)
            Picture.of_screen(self.desktop).save(f"tool-tip-{names.index(name)}")


def _letters(tip: Accessible) -> str:
    """What a tool tip says, without the characters that only keep its names in their order."""
    return re.sub("[\u2068\u2069]", "", tip.name)


if __name__ == "__main__":
    unittest.main()
