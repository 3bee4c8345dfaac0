#!/usr/bin/env python3
"""The windows photographed: pictures_test.py light|dark SCALE. The pictures stay in the folder desktop-pictures of the
build. Status 77 where a tool is not installed."""

import json
import os
import subprocess
import sys

import accessible
from accessible import ScreenReader, content
from desk import ABOUT, MENU_BAR, SETTINGS, Desk, version
from desk_case import DeskTest, main
from item import BUILD
from session import until

SCHEME, SCALE = sys.argv.pop(1), int(sys.argv.pop(1))
FOLDER = os.path.join(BUILD, "desktop-pictures")
CONTENT = (720, 520)
PANES = ("Readout", "General", "About")
# A pane has text in several shades on several grounds.
FEWEST_COLORS = 40


class PicturesTest(DeskTest):
    @classmethod
    def make_desk(cls):
        return Desk(scale=SCALE, hears_programs=True)

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.desk.start_service("appearance", SCHEME)
        cls.reader = ScreenReader(cls.desk.session)
        cls.addClassCleanup(cls.reader.close)
        story = json.loads(subprocess.check_output([os.path.join(BUILD, "thermopix_settings_story"), *version()]))
        cls.art = story["steps"][0]["art"]
        os.makedirs(FOLDER, exist_ok=True)

    def open(self):
        self.start("--uitest-show-preferences", "--uitest-fake-sensor")
        window = self.desk.wait_until_active(SETTINGS)
        until(lambda: self.preview(), "the preview")
        return window

    def preview(self):
        return next((element for element in self.reader.see(SETTINGS) if element.kind == "picture"), None)

    def take(self, window, name):
        """A picture of a window on which nothing moves any more."""
        self.desk.session.steady_screen()
        picture = window.picture()
        picture.save(os.path.join(FOLDER, f"{name}-{SCHEME}-{SCALE}x.png"))
        return picture

    def assert_is_drawn(self, picture):
        self.assertGreater(len(picture.colors(0, 0, picture.width, picture.height)), FEWEST_COLORS)
        red, green, blue = picture.pixels(picture.height // 2)[-2 * SCALE]
        self.assertEqual(red + green + blue < 3 * 128, SCHEME == "dark", "the ground is of the scheme")

    def test_every_pane_has_its_size_and_its_own_looks(self):
        window = self.open()
        pictures = []
        for pane in PANES:
            self.reader.do(SETTINGS, "Press", lambda found, pane=pane: found.kind == "choice" and found.name == pane)
            until(lambda pane=pane: {"kind": "choice", "name": pane, "isOn": True} in content(self.reader.see(SETTINGS)),
                  f"the pane {pane}")
            picture = self.take(window, pane.lower())
            self.assertEqual((picture.width, picture.height - MENU_BAR * SCALE),
                             tuple(SCALE * length for length in CONTENT))
            self.assert_is_drawn(picture)
            for other in pictures:
                self.assertTrue(picture.differs_from(other))
            pictures.append(picture)

    def test_preview_shows_the_readout_pixel_for_pixel_in_the_middle_of_both_bars(self):
        window = self.open()
        rows, cell = self.art["rows"].split(), int(self.art["cell"]) * SCALE
        left, top, width, height = self.place_of_preview(window)
        screen = self.desk.session.steady_screen()
        gap = 10 * SCALE
        bar = (width - gap) // 2
        for start in (left, left + bar + gap):
            found = screen.find_on_gradient(rows, cell, (start, top, start + bar, top + height))
            self.assertIsNotNone(found, "the readout in the bar")
            middle = found[0] + len(rows[0]) * cell / 2, found[1] + len(rows) * cell / 2
            self.assertLessEqual(abs(middle[0] - (start + bar / 2)), SCALE)
            self.assertLessEqual(abs(middle[1] - (top + height / 2)), SCALE)

    def place_of_preview(self, window):
        """In pixels of the screen, whatever the toolkit's own unit."""
        elements = self.reader.see(SETTINGS)
        frame = self.reader.where(elements[0])
        preview = self.reader.where(next(element for element in elements if element.kind == "picture"))
        left, top, width, _ = window.box()
        unit = width // frame[2]
        return (left + unit * (preview[0] - frame[0]), top + unit * (preview[1] - frame[1]), unit * preview[2],
                unit * preview[3])

    def test_about_panel_is_drawn(self):
        self.open()
        self.reader.do(SETTINGS, "Press", lambda found: found.role == "menu item" and found.name == ABOUT)
        self.assert_is_drawn(self.take(self.desk.wait_until_active(ABOUT), "about-panel"))


if __name__ == "__main__":
    main(*([] if accessible.is_installed() else ["python3-gi, gir1.2-atspi-2.0, at-spi2-core"]))
