"""What the tests of the program on a desktop have in common."""

import json
import os
import shutil
import subprocess
import sys
import unittest

import accessible
from accessible import ScreenReader
from desk import TOOLS, Desk
from item import BUILD, missing_programs
from session import until

SKIPPED = 77


class SessionTest(unittest.TestCase):
    """Of a class with a `session`: what was on its screen and what its programs said stays behind when a test fails."""

    last_screen = None
    subject = ""

    def photograph(self):
        self.last_screen = self.session.screen()

    def run(self, result=None):
        before = len(result.failures) + len(result.errors)
        super().run(result)
        if len(result.failures) + len(result.errors) > before and self.last_screen:
            picture = os.path.join(BUILD, f"desktop-{self.subject or type(self).__name__}-{self._testMethodName}.png")
            self.last_screen.save(picture)
            print(f"the screen: {picture}", file=sys.stderr)
            for process in self.session.processes:
                print(f"--- {process.name}\n{process.output()[-2000:]}", file=sys.stderr)


class DeskTest(SessionTest):
    """With the program's windows: on a bare desk, or on that of a tray's host."""

    scale = 1
    # Whether assistive technology is used, which is `reader` then.
    hears_programs = False
    host = None

    @classmethod
    def make_host(cls):
        return None

    @classmethod
    def setUpClass(cls):
        cls.host = cls.make_host()
        cls.desk = Desk(cls.host, cls.scale, cls.hears_programs)
        cls.session = cls.desk.session
        cls.addClassCleanup(cls.desk.close)
        if cls.hears_programs:
            cls.reader = ScreenReader(cls.session)
            cls.addClassCleanup(cls.reader.close)

    def start(self, *arguments, **environment):
        """The program with fresh settings, unless it was stopped before; it is to end well, with the test at last."""
        self.program = self.desk.start(*arguments, **environment)
        self.said_before = len(self.program.output())
        self.addCleanup(self.end)
        self.addCleanup(self.photograph)
        return self.program

    def end(self):
        self.assertEqual(self.program.end(), 0, self.program.output())
        until(lambda: not any(window.is_of_program() for window in self.desk.windows()), "no window of the program")

    def said(self, text):
        """How often the program said this, since it was started."""
        return self.program.output()[self.said_before:].count(text)

    def start_another(self, **environment):
        """A second start, which ends by itself."""
        another = self.desk.start(**environment)
        self.addCleanup(another.end)
        until(lambda: not another.is_running(), "the end of the second program")
        self.assertEqual(another.end(), 0, another.output())

    def assert_stored(self, name, value):
        until(lambda: (self.desk.settings() or {}).get(name) == value, f"{name} stored as {value}")

    def setUp(self):
        shutil.rmtree(os.path.dirname(self.desk.settings_file()), ignore_errors=True)


def story(*version):
    """The core's own account of what the windows say."""
    return json.loads(subprocess.check_output([os.path.join(BUILD, "thermopix_settings_story"), *version]))


def end_without(*programs):
    """Ends the process, as CTest understands it, where one of these programs is not installed."""
    missing = missing_programs(programs)
    if missing:
        print(f"not installed: {', '.join(missing)}")
        sys.exit(1 if os.environ.get("THERMOPIX_REQUIRE_DESKTOP") == "1" else SKIPPED)


def main(*programs, hears_programs=False):
    """Runs the tests, unless something is missing that they need."""
    end_without(*TOOLS, *programs, *(["python3-gi, gir1.2-atspi-2.0, at-spi2-core"]
                                     if hears_programs and not accessible.is_installed() else []))
    unittest.main(verbosity=2)
