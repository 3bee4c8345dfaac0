#!/usr/bin/env python3
"""The strip that stands in for a tray: strip_test.py. Status 77 where a tool is not installed."""

import hosts
from desk import SETTINGS, STRIP
from desk_case import DeskTest, main
from item import MENU, Shown, opened_menu
from session import until


class StripTest(DeskTest):
    """On a desktop whose panel comes late."""

    @classmethod
    def make_host(cls):
        return hosts.XfcePanel(starts=False)

    def open(self):
        self.start()
        strip = self.desk.wait_for(STRIP)
        until(lambda: self.art_of(strip), "the readout in the strip")
        return strip

    def art_of(self, strip, shown=Shown()):
        """Where in the strip the readout stands."""
        return strip.picture().find_on_gradient(shown.art("readout"), 2)

    def open_menu(self, open_it):
        """The picture of the whole menu."""
        before = self.desk.session.steady_screen()
        _, top, _, height = self.desk.window(STRIP).box()
        open_it()
        return opened_menu(self.desk.session, before, top + height + 1)

    def click(self, strip):
        left, top, width, height = strip.box()
        self.desk.session.click(left + width // 2, top + height // 2)

    def test_readout_stands_in_the_middle_pixel_for_pixel(self):
        strip = self.open()
        left, top = self.art_of(strip)
        art = Shown().art("readout")
        _, _, width, height = strip.box()
        self.assertLessEqual(abs(left - (width - left - 2 * len(art[0]))), 1)
        self.assertLessEqual(abs(top - (height - top - 2 * len(art))), 1)

    def test_strip_stands_at_the_edge_above_the_others_on_every_workspace_and_in_no_taskbar(self):
        strip = self.open()
        self.assertEqual(strip.box()[1], 0)
        self.assertIn("4294967295", strip.property("_NET_WM_DESKTOP"))
        self.assertIn("ABOVE", strip.states())
        self.assertEqual(self.desk.taskbar(), [])
        self.desk.session.run("xdotool", "set_desktop", "1")
        self.addCleanup(self.desk.session.run, "xdotool", "set_desktop", "0")
        until(lambda: "= 1" in self.desk.property("-root", "_NET_CURRENT_DESKTOP"), "another workspace")
        self.assertTrue(strip.is_on_screen())
        until(lambda: self.art_of(strip), "the readout in the strip")

    def test_click_opens_the_menu_whose_choices_change_the_strip(self):
        strip = self.open()
        menu = self.open_menu(lambda: self.click(strip))
        self.desk.session.click(*menu.center(MENU.index("Ghost")))
        self.assert_stored("pet", "ghost")
        until(lambda: self.art_of(strip, Shown(pet="ghost")), "the ghost in the strip")

    def test_menu_works_with_the_keyboard_alone(self):
        strip = self.open()
        self.desk.session.run("xdotool", "windowfocus", strip.number)
        self.open_menu(lambda: self.desk.session.press("space"))
        for key in ("Up", "Up", "Up", "Up", "Return"):  # from below: quit, about, updates, settings
            self.desk.session.press(key)
        self.desk.wait_until_active(SETTINGS)

    def test_strip_gives_way_to_a_tray_and_comes_back_when_that_is_gone(self):
        self.open()
        self.host.start()
        self.addCleanup(self.host.kill)
        self.desk.wait_until_gone(STRIP)
        until(lambda: self.host.find(Shown()), "the item in the tray")
        self.host.kill()
        strip = self.desk.wait_for(STRIP)
        until(lambda: self.art_of(strip), "the readout in the strip")

    def test_strip_stays_where_it_was_dragged_also_after_a_restart(self):
        strip = self.open()
        left, top, width, height = strip.box()
        self.drag((left + 10, top + height // 2), (310, top + 60))
        until(lambda: strip.box()[0] == 300, "the strip where it was dragged, at the edge")
        self.assertEqual(strip.box(), (300, top, width, height))
        self.end()
        again = self.open()
        self.assertEqual(again.box(), (300, top, width, height))

    def drag(self, start, end):
        session = self.desk.session
        session.point(*start)
        session.run("xdotool", "mousedown", "1")
        for step in range(1, 6):
            session.point(*(old + (new - old) * step // 5 for old, new in zip(start, end)))
        session.run("xdotool", "mouseup", "1")
        session.point(2, self.desk.height - 2)


if __name__ == "__main__":
    main(*hosts.XfcePanel.programs)
