# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Nothing moves where the user has told the desktop so; that the program is busy can still be seen.
What moves at all is the indicator of a merge that runs."""

import time
import unittest

from driver.desktop_services import Portal
from driver.picture import Colour, Picture
from window_test_case import WindowTestCase

_LOOKS = 8  # at a tenth of a second each; the indicator takes a step in that time


class Motion(WindowTestCase):
    program_variable = "QUIREBIND_HELD_MERGE_PROGRAM"
    starts_program = False

    def looks_while_merging(self) -> "list[dict[Colour, list]]":
        """Starts the program and a merge; returns what the indicator looks like again and again."""
        self.start_program()
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        hold = self.documents / "hold"
        hold.touch()
        self.addCleanup(hold.unlink, missing_ok=True)
        self.press("Merge PDFs…")
        self.save_as(self.documents / "joined.pdf")
        self.expect_button("Merging…")
        area = self.window.find("progress bar", "Merging…").extents
        looks = []
        for _ in range(_LOOKS):
            picture = Picture.of(self.desktop, area)
            looks.append({colour: picture.points_close_to(colour, 0)
                          for colour in picture.colours()})
            time.sleep(0.1)
        self.assertGreater(len(looks[0]), 3, "there is something to be seen")
        hold.unlink()
        self.expect_button("Show in Finder")
        return looks

    def test_what_is_busy_spins(self) -> None:
        looks = self.looks_while_merging()
        self.assertTrue(any(look != looks[0] for look in looks))

    def test_nothing_moves_where_the_desktop_says_so(self) -> None:
        with Portal(self.desktop) as portal:
            portal.set_animations(False)
            looks = self.looks_while_merging()
            self.assertTrue(all(look == looks[0] for look in looks))


if __name__ == "__main__":
    unittest.main()
