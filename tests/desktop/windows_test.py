#!/usr/bin/env python3
"""The program's windows among others on a desktop: windows_test.py. Status 77 where a tool is not installed."""

from desk import ABOUT, CONTENT, MENU_BAR, SETTINGS, STRIP
from desk_case import DeskTest, main
from session import until

ENTRY = "Thermopix"


class WindowsTest(DeskTest):
    def open_by_second_start(self):
        self.start()
        self.desk.wait_for(STRIP)
        self.start_another()

    def press(self, key):
        self.desk.session.press(key)

    def assert_taskbar(self, *titles):
        until(lambda: self.desk.taskbar() == list(titles), f"a taskbar with {titles}")

    def test_settings_open_in_the_middle_in_one_size_that_cannot_be_changed(self):
        self.start("--uitest-show-preferences", "--uitest-fake-sensor")
        window = self.desk.wait_until_active(SETTINGS)
        left, top, width, height = window.box()
        self.assertEqual((width, height - MENU_BAR), CONTENT)
        self.assertLess(abs(left + width / 2 - self.desk.width / 2), 5)
        self.assertLess(abs(top + height / 2 - self.desk.height / 2), 40, "apart from the frame")
        hints = window.property("WM_NORMAL_HINTS")
        self.assertIn(f"minimum size: {width} by {height}", hints)
        self.assertIn(f"maximum size: {width} by {height}", hints)

    def test_closed_settings_come_back_as_they_were_when_the_program_is_started_again(self):
        self.open_by_second_start()
        window = self.desk.wait_until_active(SETTINGS)
        first = window.drawn()
        self.open_second_pane(window)
        second = window.drawn(first)
        self.press("ctrl+w")
        self.desk.wait_until_gone(SETTINGS)
        self.start_another()
        again = self.desk.wait_until_active(SETTINGS)
        until(lambda: not again.picture().differs_from(second), "the same pane")

    def open_second_pane(self, window):
        left, top, _, _ = window.box()
        self.desk.session.click(left + 90, top + MENU_BAR + 66)
        self.desk.session.point(2, self.desk.height - 2)

    def test_second_start_brings_the_settings_before_other_windows(self):
        self.open_by_second_start()
        self.desk.wait_until_active(SETTINGS)
        left, top, _, _ = self.desk.window(SETTINGS).box()
        self.desk.session.click(left + 20, top + 12)  # the program's own menu
        self.press("Down")
        self.press("Return")
        self.desk.wait_until_active(ABOUT)
        self.start_another()
        self.desk.wait_until_active(SETTINGS)

    def test_minimized_settings_are_restored_by_a_second_start(self):
        self.open_by_second_start()
        for key in ("ctrl+m", "ctrl+h"):
            window = self.desk.wait_until_active(SETTINGS)
            self.press(key)
            until(window.is_minimized, f"minimized Settings after {key}")
            self.assert_taskbar(SETTINGS)
            self.start_another()
            until(lambda: not window.is_minimized(), "restored Settings")

    def test_without_dock_entry_the_program_is_in_the_taskbar_while_it_has_a_window(self):
        self.start()
        self.desk.wait_for(STRIP)
        self.assert_taskbar()
        self.start_another()
        self.desk.wait_until_active(SETTINGS)
        self.assert_taskbar(SETTINGS)
        self.press("ctrl+w")
        self.assert_taskbar()

    def test_dock_entry_stays_and_opens_the_settings(self):
        self.desk.store(showInDock=True, showPreferencesOnLaunch=True)
        self.start()
        self.desk.wait_until_active(SETTINGS)
        self.assert_taskbar(SETTINGS)
        self.press("ctrl+w")
        self.assert_taskbar(ENTRY)
        self.desk.session.run("xdotool", "windowactivate", self.desk.window(ENTRY).number)
        self.desk.wait_until_active(SETTINGS)
        self.assert_taskbar(SETTINGS)


if __name__ == "__main__":
    main()
