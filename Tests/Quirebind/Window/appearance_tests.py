# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""How the window looks on screens of any density and from right to left. The pictures that are
saved are for people to look at."""

import unittest

from driver import documents
from driver.geometry import Rect
from driver.picture import Colour, Picture
from window_test_case import WindowTestCase

TEAL: Colour = (0x00, 0x86, 0x98)


class AppearanceTestCase(WindowTestCase):

    def show_everything(self, output: str = "joined.pdf") -> None:
        """Lists and merges, so that all buttons are there."""
        self.add(self.pdf("a.pdf", 3), self.pdf("b.pdf", 12))
        self.expect_rows(["a.pdf, 3 pages", "b.pdf, 12 pages"])
        self.merge(self.documents / output)
        self.expect(lambda: self.preview().description.startswith("Page 1 of 3\n"),
                    "the first page is drawn")

    def parts(self) -> dict[str, Rect]:
        """Where in the window all texts and buttons are; no two of them share a place, none leaves
        the window."""
        window = self.region("window")
        found = {}
        for node in self.window.walk():
            if node.role in ("label", "push button"):
                area = node.accessible.extents
                self.assertTrue(window.contains(area), f"{node.name} {area}")
                found[f"{node.role} {node.name}"] = Rect(area.x - window.x, area.y - window.y,
                                                         *area.size)
        for name, area in found.items():
            for other, place in found.items():
                self.assertTrue(name == other or not _overlap(area, place),
                                f"{name} {area}, {other} {place}")
        return found

    def icon(self) -> Picture:
        """The teal picture beside the title."""
        area = self.picture("header").bounds_of(TEAL)
        assert area is not None, "nothing is teal"
        return self.picture("header").crop(area)


class Density:
    """All is as large for the eye, and as sharp as the screen allows."""

    class TestCase(AppearanceTestCase):

        def test_everything_keeps_its_size_and_is_sharp(self) -> None:
            scale = self.desktop.scale
            self.assertEqual(self.program.geometry().size, (940 * scale, 640 * scale))
            self.show_everything()
            self.picture().save(f"{self.desktop.dpi}-dpi-times-{self.desktop.factor}")
            parts = self.parts()
            for region, width in (("header", 940), ("sidebar", 360), ("preview", 579),
                                  ("merge bar", 940)):
                self.assertLessEqual(abs(self.region(region).width / scale - width), 1, region)
            # In relation to each other: what stands in a row, and what depends on the font.
            font = parts["label Bring your pages together."].height / scale
            for name, lines in (("push button Add PDFs…", 1.8), ("push button Merge PDFs…", 1.9),
                                ("push button Up", 1.8), ("label Quirebind", 1.65)):
                with self.subTest(name):
                    self.assertAlmostEqual(parts[name].height / scale / font, lines, delta=0.15)
            self.assertLess(self.softness(self.icon()), 1.4)

        def test_pages_are_drawn_for_this_density(self) -> None:
            # Lines of two pixels and gaps of two: they would run into one another on a page that
            # was drawn smaller, and enlarged.
            page = (self.region("preview").width - 44 * self.desktop.scale) / 200
            documents.comb_pdf(self.documents / "comb.pdf", 4 / page)
            self.add(self.documents / "comb.pdf")
            middle = self.region("preview").centre
            area = Rect(middle.x - 100, middle.y - 5, 200, 10)

            def drawn() -> bool:
                picture = Picture.of(self.desktop, area)
                black = picture.count_close_to((0, 0, 0), 60)
                white = picture.count_close_to((255, 255, 255), 60)
                return min(black, white) > 0.25 * area.width * area.height
            self.expect(drawn, "black and white lines are to be told apart")

        def softness(self, icon: Picture) -> float:
            """How many pixels lie between the two colours of an icon where one becomes the other,
            on average over its rows. None where the edge lies on the border of a pixel, one where
            it does not; a picture that was enlarged has as many more as it was."""
            ground = icon.pixel(icon.area.x, icon.area.y)
            between = []
            for y in range(icon.area.y, icon.area.bottom):
                last, length = ground, 0
                for x in range(icon.area.x, icon.area.right):
                    colour = icon.pixel(x, y)
                    if colour not in (ground, TEAL):
                        length += 1
                        continue
                    if colour != last:
                        between.append(length)
                    last, length = colour, 0
            return sum(between) / len(between)


class At96(Density.TestCase):
    desktop_options = {"width": 1000, "height": 720}


class At144(Density.TestCase):
    desktop_options = {"width": 1500, "height": 1080, "dpi": 144}


class At192(Density.TestCase):
    desktop_options = {"width": 2000, "height": 1440, "dpi": 192}


class TwiceAsLarge(Density.TestCase):
    """By QT_SCALE_FACTOR."""
    desktop_options = {"width": 2000, "height": 1440, "factor": 2}


class LargeLetters(AppearanceTestCase):
    """Letters twice as large, and nothing else."""
    desktop_options = {"width": 1366, "height": 768}
    starts_program = False

    def test_all_fits_on_a_small_screen(self) -> None:
        # The toolkit has no setting of its own for this, but reads that of a desktop.
        settings = self.documents / "settings" / "kdeglobals"
        settings.parent.mkdir()
        settings.write_text("[General]\nfont=Sans Serif,18,-1,5,50,0,0,0,0,0\n")
        self.start_program(environment={"QT_QPA_PLATFORMTHEME": "kde", "KDE_SESSION_VERSION": "5",
                                        "XDG_CONFIG_HOME": str(settings.parent)})
        self.assertGreater(self.button("Add PDFs…").extents.height, 40)
        self.show_everything()
        self.program.move(0, 24)
        least = self.program.resize(1, 1)
        self.assertLessEqual(least.width, 1366)
        self.assertLessEqual(least.height, 768 - 40)
        self.expect(lambda: self.region("window").size == least, "it is as small as it gets")
        self.parts()
        self.picture().save("large-letters")


class SmallScreen:
    """All of a window is in sight when it opens."""

    class TestCase(AppearanceTestCase):

        def test_the_window_opens_within_it(self) -> None:
            frame = self.desktop.run("xprop", "-id", self.program.windows()[0].id,
                                     "_NET_FRAME_EXTENTS").decode()
            left, right, top, bottom = (int(width) for width in frame.split("=")[1].split(","))
            inside = self.program.geometry()
            window = Rect(inside.x - left, inside.y - top, inside.width + left + right,
                          inside.height + top + bottom)
            screen = Rect(0, 0, self.desktop.width, self.desktop.height)
            self.assertTrue(screen.contains(window), window)
            self.show_everything()
            self.parts()
            self.picture().save(f"small-{screen.width}-times-{self.desktop.scale}")


class At800(SmallScreen.TestCase):
    desktop_options = {"width": 800, "height": 600}


class LaptopAt120(SmallScreen.TestCase):
    desktop_options = {"width": 1366, "height": 768, "dpi": 120}


class WideAt192(SmallScreen.TestCase):
    desktop_options = {"width": 1920, "height": 1080, "dpi": 192}


class RightToLeft(AppearanceTestCase):

    def test_everything_is_mirrored(self) -> None:
        self.show_everything()
        width = self.region("window").width
        mirrored = {name: Rect(width - area.right, area.y, *area.size)
                    for name, area in self.parts().items()}
        self.program.close_all()
        self.start_program(["-reverse"])
        self.show_everything("second.pdf")
        self.picture().save("right-to-left")
        # The toolkit's splitter is a pixel off from right to left.
        self.assertLessEqual(abs(self.region("sidebar").right - self.region("window").right), 1)
        self.assertLess(self.button("Add PDFs…").extents.right, self.region("window").centre.x)
        # Each text and button has the place that the other side had, in full length.
        for name, area in self.parts().items():
            with self.subTest(name):
                self.assertEqual(area.size, mirrored[name].size)
                self.assertLessEqual(abs(area.x - mirrored[name].x), 2)
                self.assertEqual(area.y, mirrored[name].y)
        row = self.row("a.pdf").extents
        icon = self.picture("sidebar").bounds_of(TEAL, 8, row.inset(3))
        assert icon is not None, "the row has no icon"
        self.assertGreater(icon.x, row.centre.x)
        self.input.drag(self.row("a.pdf"), self.row("b.pdf").extents.at(0.5, 0.9))
        self.expect_rows(["b.pdf, 12 pages", "a.pdf, 3 pages"])

    def test_the_arrow_keys_move_the_divider_where_they_point(self) -> None:
        self.program.close_all()
        self.start_program(["-reverse"])
        self.key("Tab")
        self.expect_focus("Divider between the documents and the preview")
        for key, least, most in (("Left", 370, 380), ("Left", 386, 396), ("Right", 370, 380)):
            before = self.region("sidebar").width
            self.key(key)
            self.expect(lambda: self.region("sidebar").width != before, "the divider moves")
            width = self.region("sidebar").width
            self.assertTrue(least <= width <= most, width)


def _overlap(one: Rect, other: Rect) -> bool:
    return (one.x < other.right and other.x < one.right and one.y < other.bottom
            and other.y < one.bottom)


if __name__ == "__main__":
    unittest.main()
