#!/usr/bin/env python3
"""The program when its windows fail: failure_test.py. Status 77 where a tool is not installed."""

import json
import os
import random
import signal
import time

import hosts
from accessible import named
from desk import SETTINGS, STRIP
from desk_case import DeskTest, main, story
from item import Shown
from session import until

SEED = 20
KILLS = 8
READING = "57 degrees Celsius"
LONGEST_LIFE = 0.15  # seconds from an operation to the end of the process


class KilledWindowsTest(DeskTest):
    hears_programs = True

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.pets = {step["name"]: step["settings"]["pet"] for step in story("1", "1")["steps"]
                    if step["identifier"].startswith("prefs.pet.")}

    def chosen_pet(self):
        return next((self.pets[element.name] for element in self.reader.see(SETTINGS)
                     if element.name in self.pets and element.has("checked")), None)

    def test_killed_at_any_moment_they_lose_no_setting_and_come_back_when_asked_for(self):
        chance = random.Random(SEED)
        self.desk.store(pet="cat", showsUnitLetter=True)
        self.start()
        self.desk.wait_for(STRIP)
        for _ in range(KILLS):
            self.start_another()
            process = self.desk.wait_for(SETTINGS).process()
            until(lambda: self.chosen_pet() == self.desk.settings()["pet"], "a window that shows what is stored")
            before = self.desk.settings()
            name = chance.choice([name for name, pet in self.pets.items() if pet != before["pet"]])
            self.reader.do(SETTINGS, "Press", named(name, "choice"))
            time.sleep(chance.uniform(0, LONGEST_LIFE))
            os.kill(process, signal.SIGKILL)
            # The log writes a line that is repeated once, with its count.
            until(lambda: self.said("ended by signal 9"), "a line about the end")
            self.desk.wait_until_gone(SETTINGS)
            self.assertIn(self.desk.settings(), (before, {**before, "pet": self.pets[name]}))
            self.assertTrue(self.program.is_running())
            until(lambda: any(window.title.startswith(READING) for window in self.desk.windows()), "the strip")


class MissingWindowsTest(DeskTest):
    """With a tray, which does not need them."""

    make_host = hosts.XfcePanel

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.notifications = cls.desk.start_service("notifications")
        watcher = "org.kde.StatusNotifierWatcher"
        until(lambda: cls.desk.session.has_service(watcher), f"{watcher} on the bus")

    def bodies(self):
        notifications = [json.loads(line) for line in self.notifications.output().splitlines()[1:]]
        self.assertLessEqual({notification["summary"] for notification in notifications},
                             {"Thermopix cannot show its windows"})
        return [notification["body"] for notification in notifications]

    def item(self):
        return self.host.find(Shown())

    def assert_goes_on_and_tells(self, sentence, **environment):
        told = len(self.bodies())
        self.start(**environment)
        until(self.item, "the item in the tray")
        for number in (1, 2):
            # A start that has a display would take the place of one that has none.
            self.start_another(**environment)
            until(lambda number=number: len(self.bodies()) == told + number, "a notification")
            self.assertEqual(self.bodies()[told:], [sentence] * number)
            self.assertTrue(self.said(f"[Thermopix/windows] {sentence}"))
        self.assertTrue(self.item())
        self.assertTrue(self.program.is_running())

    def test_windows_that_cannot_be_shown_are_told_in_the_log_and_by_a_notification(self):
        no_display = "There is no display to show windows on."
        for sentence, environment in (
                ("thermopix-windows is not installed.", {"THERMOPIX_WINDOWS": "/nowhere/to/be/found"}),
                (no_display, {"DISPLAY": ""}), (no_display, {"DISPLAY": ":4711"})):
            with self.subTest(environment):
                self.assert_goes_on_and_tells(sentence, **environment)
                self.end()


if __name__ == "__main__":
    main(*hosts.XfcePanel.programs, hears_programs=True)
