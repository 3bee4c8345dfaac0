#!/usr/bin/env python3
"""The program in the tray of a real desktop: tray_test.py HOST. Status 77 when the host is not installed."""

import os
import sys
import unittest

import hosts
from item import BUILD, MENU, MENU_WITHOUT_PET, Item, Shown, missing_programs
from session import until

SKIPPED = 77


class TrayTest(unittest.TestCase):
    host_class = None
    last_screen = None

    @classmethod
    def setUpClass(cls):
        cls.host = cls.host_class()
        cls.addClassCleanup(cls.host.close)

    def start(self, **settings):
        self.item = Item(self.host, **settings)
        self.addCleanup(self.end)
        self.addCleanup(self.photograph)

    def photograph(self):
        self.last_screen = self.host.session.screen()

    def end(self):
        status = self.item.end()
        self.assertEqual(status, 0, self.item.process.output())

    def run(self, result=None):
        """What was on the screen and what the programs said stays behind when a test fails."""
        before = len(result.failures) + len(result.errors)
        super().run(result)
        if len(result.failures) + len(result.errors) > before and self.last_screen:
            picture = os.path.join(BUILD, f"desktop-{self.host.name}-{self._testMethodName}.png")
            self.last_screen.save(picture)
            print(f"the screen: {picture}", file=sys.stderr)
            for process in self.host.session.processes:
                print(f"--- {process.name}\n{process.output()[-2000:]}", file=sys.stderr)

    def test_item_stands_in_the_middle_of_the_bar_pixel_for_pixel_and_leaves_with_the_program(self):
        shown = Shown()
        self.start()
        left, top = self.item.wait_for(shown)
        width, height = self.item.size(shown)
        bar = self.host.bar_height * self.host.scale
        self.assertLessEqual(abs(top - (bar - top - height)), self.host.scale + 1, "centred in the bar")
        self.assertGreaterEqual(left, 0)
        self.assertLessEqual(left + width, self.host.session.screen().width)
        self.end()
        until(lambda: not self.item.place(shown), "an empty tray")

    def test_every_style_is_crisp(self):
        if self.host.shape == "digits":
            return  # these are the same in every style
        for style in ("micro", "segment"):
            with self.subTest(style=style):
                self.start(style=style)
                self.item.wait_for(Shown(style=style))
                self.end()

    def test_click_opens_the_whole_menu_with_the_choices_marked(self):
        self.start()
        menu = self.item.open_menu(Shown())
        for chosen, others in (("Cat", ("No pet", "Westie", "Mac", "Ghost")), ("Celsius", ("Fahrenheit",)),
                               ("Arcade", ("Micro", "Segment", "Dot Matrix"))):
            mark = menu.mark(MENU.index(chosen)).rgb
            for other in others:
                self.assertNotEqual(mark, menu.mark(MENU.index(other)).rgb, f"{chosen} is marked, {other} is not")
        self.item.close_menu()

    def test_choices_of_the_menu_change_the_item(self):
        self.start()
        self.item.choose(Shown(), "Fahrenheit")
        fahrenheit = Shown(value=135, unit="fahrenheit")
        self.item.wait_for(fahrenheit)
        self.item.choose(fahrenheit, "No pet")
        without_pet = Shown(value=135, unit="fahrenheit", pet="none")
        self.item.wait_for(without_pet)
        self.item.choose(without_pet, "Celsius", MENU_WITHOUT_PET)
        self.item.wait_for(Shown(pet="none"))

    def test_item_is_back_when_the_host_was_killed_and_started_again(self):
        self.start()
        self.item.wait_for(Shown())
        self.host.kill()
        until(lambda: not self.item.place(Shown()), "a screen without the host")
        self.host.start()
        self.item.wait_for(Shown())


def main():
    host = next(host for host in hosts.HOSTS if host.name == sys.argv[1])
    missing = missing_programs(host)
    if missing:
        print(f"not installed: {', '.join(missing)}")
        return 1 if os.environ.get("THERMOPIX_REQUIRE_DESKTOP") == "1" else SKIPPED
    TrayTest.host_class = host
    tests = unittest.defaultTestLoader.loadTestsFromTestCase(TrayTest)
    return 0 if unittest.TextTestRunner(verbosity=2).run(tests).wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
