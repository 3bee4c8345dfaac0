#!/usr/bin/env python3
"""The windows with assistive technology alone: settings_test.py. Status 77 where that is not installed."""

import hosts
from accessible import ACTIONS, content, named
from desk_case import DeskTest, main, story
from item import Item, Shown
from session import until
from desk import SETTINGS, version


class SettingsTest(DeskTest):
    hears_programs = True

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.story = story(*version())

    def open(self):
        self.start("--uitest-show-preferences", "--uitest-fake-sensor")
        self.desk.wait_for(SETTINGS)

    def operate(self, step):
        if step["how"] == "choose":
            self.reader.do(SETTINGS, "ShowMenu", named(step["name"], "picker"))
            item = named(step["item"], "item")
            self.reader.do(SETTINGS, "Press", lambda found: item(found) and found.has("showing"))
        else:
            self.reader.do(SETTINGS, ACTIONS[step["how"]], named(step["name"], "choice", "toggle", "button"))

    def assert_becomes(self, ask, wanted, step):
        try:
            until(lambda: ask() == wanted, "what the story tells")
        except AssertionError:
            self.assertEqual(ask(), wanted, f"after {step['identifier']} {step['item']}")

    def test_each_control_is_found_by_role_and_name_and_changes_its_setting_and_the_window(self):
        self.open()
        operated = set()
        for step in self.story["steps"]:
            if step["identifier"]:
                self.operate(step)
                operated.add(step["identifier"])
            self.assert_becomes(self.desk.settings, step["settings"], step)
            wanted = [{key: value for key, value in element.items() if key != "identifier"}
                      for element in step["elements"]]
            self.assert_becomes(lambda: content(self.reader.see(SETTINGS)), wanted, step)
        controls = {element["identifier"] for step in self.story["steps"] for element in step["elements"]
                    if element["kind"] in ("choice", "toggle", "picker", "button")}
        # The choices of a segmented picker are operated one by one, and told by the picker.
        left_out = {control for control in controls if operated.isdisjoint((control, control.rpartition(".")[0]))}
        self.assertEqual(left_out, {"prefs.quit"})

    def test_quit_button_ends_the_program(self):
        self.open()
        self.reader.do(SETTINGS, "Press", named("About", "choice"))
        self.reader.do(SETTINGS, "Press", named(self.story["quit"], "button"))
        until(lambda: not self.program.is_running(), "the end of the program")

    def test_strip_opens_its_menu_whose_choices_are_stored(self):
        self.start("--uitest-fake-sensor")
        strip = "61 degrees Celsius, comfy"
        self.reader.do(strip, "Press", lambda found: found.kind == "button")
        self.reader.do(strip, "Press", named("Ghost", "item"))
        self.assert_stored("pet", "ghost")
        until(lambda: {element.kind for element in self.reader.see(strip)} == {"button"}, "a strip without a menu")


class TrayTest(DeskTest):
    """With a panel, and the program in its tray."""

    hears_programs = True

    @classmethod
    def make_host(cls):
        return hosts.XfcePanel(hears_programs=True)

    def chosen(self):
        return {element.name for element in self.reader.see(SETTINGS) if element.kind == "choice" and
                element.has("checked")}

    def test_settings_open_from_the_menu_and_follow_what_is_chosen_there(self):
        item = Item(self.host)
        self.addCleanup(item.end)
        item.choose(Shown(), "Settings…")
        self.desk.wait_until_active(SETTINGS)
        until(lambda: {"Celsius (°C)", "Readout"} <= self.chosen(), "the choices of the window")
        item.choose(Shown(), "Fahrenheit")
        until(lambda: {"Fahrenheit (°F)", "Readout"} <= self.chosen(), "the choice of the menu in the window")
        self.assert_stored("unit", "fahrenheit")


if __name__ == "__main__":
    main(*hosts.XfcePanel.programs, hears_programs=True)
