# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Light and dark, as the user has chosen for the desktop. The pictures that are saved are for
people to look at."""

import unittest

from driver import documents
from driver.desktop_services import HANGS, Portal
from driver.geometry import Rect
from driver.picture import Colour, Picture
from window_test_case import WindowTestCase

TEAL: Colour = (0x00, 0x86, 0x98)
LIGHT_TEAL: Colour = (0x6a, 0xc4, 0xdc)  # on dark ground


class LightAndDark(WindowTestCase):
    starts_program = False

    def ground(self, region: str) -> Colour:
        """The colour that most of a region has; of the preview, what is beside the pages, which are
        white in the dark as well."""
        area = self.region(region)
        if region == "preview":
            area = Rect(area.x + 3, area.y + area.height // 2, 4, 40)
        return next(iter(Picture.of(self.desktop, area).colours()))

    def is_dark(self, colour: Colour) -> bool:
        """Whether it is; fails where it is neither that nor light."""
        brightness = sum(colour)
        self.assertFalse(200 < brightness < 600, colour)
        return brightness <= 200

    def expect_scheme(self, dark: bool) -> None:
        """Waits until all of the window is in these colours."""
        def is_so(region: str) -> bool:
            return self.is_dark(self.ground(region)) == dark
        for region in ("header", "sidebar", "merge bar"):
            self.expect(lambda: is_so(region), f"the {region} is {'dark' if dark else 'light'}")
        accent, other = (LIGHT_TEAL, TEAL) if dark else (TEAL, LIGHT_TEAL)
        header = self.picture("header")
        self.assertGreater(header.count_close_to(accent), 200)
        self.assertEqual(header.count_close_to(other), 0)
        # The title is as far from its ground as can be.
        title = self.window.find("label", "Quirebind").extents
        brightest = [sum(colour) for colour in header.crop(title).colours()]
        self.assertGreater(max(brightest) - min(brightest), 550)

    def test_follows_the_desktop_from_the_start(self) -> None:
        for scheme, dark in ((1, True), (2, False), (0, False)):
            with self.subTest(scheme), Portal(self.desktop, colour_scheme=scheme):
                self.start_program()
                self.expect_scheme(dark)
                self.assertEqual(self.is_dark(self.ground("preview")), dark)
                self.picture().save(f"empty-{'dark' if dark else 'light'}")
                self.assertEqual(self.program.close_all(), 0)

    def test_follows_the_desktop_while_it_runs(self) -> None:
        with Portal(self.desktop) as portal:
            self.start_program()
            self.add(self.pdf("a.pdf", 3), self.pdf("b.pdf"))
            self.expect_rows(["a.pdf, 3 pages", "b.pdf, 1 pages"])
            self.expect_scheme(dark=False)
            self.key("F6")
            for scheme, dark in ((1, True), (2, False), (1, True)):
                portal.set_colour_scheme(scheme)
                self.expect_scheme(dark)
                self.assertGreater(self.picture("preview").count_close_to((255, 255, 255)), 9000)
            self.input.right_click(self.row("b.pdf"))
            self.expect_selected("b.pdf, 1 pages")
            self.picture().save("context-menu-dark")
            self.key("Escape")
            # What opens later has these colours, too.
            documents.damaged_pdf(self.documents / "damaged.pdf")
            self.press("Add PDFs…")
            self.choose(self.documents / "damaged.pdf")
            self.expect_alert()
            alert = Picture.of(self.desktop, self.dialogs()[0].extents)
            self.assertLess(sum(next(iter(alert.colours()))), 200)
            self.picture().save("alert-dark")
            self.dismiss_alert()
            self.press("Add PDFs…")
            panel = self.expect_panel() and self.panels()[0]
            Picture.of(self.desktop, panel.extents).save("panel-dark")
            self.assertLess(sum(next(iter(Picture.of(self.desktop, panel.extents).colours()))), 200)
            self.cancel_panel()

    def test_what_pages_lie_on_follows_too(self) -> None:
        with Portal(self.desktop, colour_scheme=1) as portal:
            self.start_program()
            self.add(self.pdf("a.pdf", 3))
            for scheme, dark in ((1, True), (2, False), (1, True)):
                portal.set_colour_scheme(scheme)
                self.expect_scheme(dark)
                self.picture().save(f"documents-{'dark' if dark else 'light'}")
                self.expect(lambda: self.is_dark(self.ground("preview")) == dark,
                            "what lies behind the page has changed as well", timeout=5)

    def test_a_portal_that_hangs_does_not_keep_the_window_away(self) -> None:
        with Portal(self.desktop, HANGS):
            self.start_program()
            self.expect_scheme(dark=False)


if __name__ == "__main__":
    unittest.main()
