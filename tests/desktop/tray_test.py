#!/usr/bin/env python3
"""The program in the tray of a real desktop: tray_test.py HOST. Status 77 when the host is not installed."""

import sys
import unittest

import hosts
from desk_case import SessionTest, end_without
from item import MENU, MENU_WITHOUT_PET, Item, Shown
from session import until

HOST = {host.name: host for host in hosts.HOSTS}[sys.argv.pop(1)]


class TrayTest(SessionTest):
    subject = HOST.name

    @classmethod
    def setUpClass(cls):
        cls.host = HOST()
        cls.session = cls.host.session
        cls.addClassCleanup(cls.host.close)

    def start(self, **settings):
        self.item = Item(self.host, **settings)
        self.addCleanup(self.end)
        self.addCleanup(self.photograph)

    def end(self):
        status = self.item.end()
        self.assertEqual(status, 0, self.item.process.output())

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


if __name__ == "__main__":
    end_without(*HOST.programs)
    unittest.main(verbosity=2)
