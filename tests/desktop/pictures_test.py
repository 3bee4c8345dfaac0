#!/usr/bin/env python3
"""The windows photographed: pictures_test.py light|dark SCALE. The pictures stay in the folder desktop-pictures of the
build. Status 77 where a tool is not installed."""

import os
import sys

from accessible import content, named
from desk import ABOUT, CONTENT, MENU_BAR, SETTINGS, version
from desk_case import DeskTest, main, story
from item import BUILD
from session import until

SCHEME, SCALE = sys.argv.pop(1), int(sys.argv.pop(1))
FOLDER = os.path.join(BUILD, "desktop-pictures")
PANES = ("Readout", "General", "About")


def is_preview(element):
    return element.kind == "picture"


class PicturesTest(DeskTest):
    scale = SCALE
    hears_programs = True

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.desk.start_service("appearance", SCHEME)
        cls.art = story(*version())["steps"][0]["art"]
        os.makedirs(FOLDER, exist_ok=True)

    def open(self):
        self.start("--uitest-show-preferences", "--uitest-fake-sensor")
        window = self.desk.wait_until_active(SETTINGS)
        self.reader.look(SETTINGS, is_preview)
        return window

    def take(self, window, name, *others):
        picture = window.drawn(*others)
        picture.save(os.path.join(FOLDER, f"{name}-{SCHEME}-{SCALE}x.png"))
        red, green, blue = picture.pixels(picture.height // 2)[-2 * SCALE]
        self.assertEqual(red + green + blue < 3 * 128, SCHEME == "dark", "the ground is of the scheme")
        return picture

    def test_every_pane_has_its_size_and_its_own_looks(self):
        window = self.open()
        pictures = []
        for pane in PANES:
            self.reader.do(SETTINGS, "Press", named(pane, "choice"))
            until(lambda pane=pane: {"kind": "choice", "name": pane, "isOn": True} in content(self.reader.see(SETTINGS)),
                  f"the pane {pane}")
            picture = self.take(window, pane.lower(), *pictures)
            self.assertEqual((picture.width, picture.height - MENU_BAR * SCALE),
                             tuple(SCALE * length for length in CONTENT))
            pictures.append(picture)

    def test_preview_shows_the_readout_pixel_for_pixel_in_the_middle_of_both_bars(self):
        window = self.open()
        rows, cell = self.art["rows"].split(), int(self.art["cell"]) * SCALE
        left, top, width, height = self.place_of_preview(window)
        gap = 10 * SCALE
        bar = (width - gap) // 2
        for start in (left, left + bar + gap):
            around = start, top, start + bar, top + height
            found = until(lambda around=around: self.session.screen().find_on_gradient(rows, cell, around),
                          "the readout in the bar")
            middle = found[0] + len(rows[0]) * cell / 2, found[1] + len(rows) * cell / 2
            self.assertLessEqual(abs(middle[0] - (start + bar / 2)), SCALE)
            self.assertLessEqual(abs(middle[1] - (top + height / 2)), SCALE)

    def place_of_preview(self, window):
        """In pixels of the screen, whatever the toolkit's own unit."""
        frame = self.reader.where(SETTINGS, lambda element: element.parent is None)
        preview = self.reader.where(SETTINGS, is_preview)
        left, top, width, _ = window.box()
        unit = width // frame[2]
        return (left + unit * (preview[0] - frame[0]), top + unit * (preview[1] - frame[1]), unit * preview[2],
                unit * preview[3])

    def test_about_panel_is_drawn(self):
        self.open()
        self.reader.do(SETTINGS, "Press", named(ABOUT, "item"))
        self.take(self.desk.wait_until_active(ABOUT), "about-panel")


if __name__ == "__main__":
    main(hears_programs=True)
