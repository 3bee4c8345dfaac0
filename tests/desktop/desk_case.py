"""What the tests of the program's windows have in common."""

import os
import shutil
import sys
import unittest

from item import BUILD
from desk import TOOLS, Desk
from session import until

SKIPPED = 77


class DeskTest(unittest.TestCase):
    last_screen = None

    @classmethod
    def make_desk(cls):
        return Desk()

    @classmethod
    def setUpClass(cls):
        cls.desk = cls.make_desk()
        cls.addClassCleanup(cls.desk.close)

    def start(self, *arguments, **environment):
        """The program with fresh settings, unless it was stopped before; it is to end well, with the test at last."""
        self.program = self.desk.start(*arguments, **environment)
        self.said_before = len(self.program.output())
        self.addCleanup(self.end)
        self.addCleanup(self.photograph)
        return self.program

    def photograph(self):
        self.last_screen = self.desk.session.screen()

    def end(self):
        self.assertEqual(self.program.end(), 0, self.program.output())
        until(lambda: not any(window.is_of_program() for window in self.desk.windows()), "no window of the program")

    def said(self, text):
        """How often the program said this, since it was started."""
        return self.program.output()[self.said_before:].count(text)

    def start_another(self):
        """A second start, which ends by itself."""
        another = self.desk.start()
        self.addCleanup(another.end)
        until(lambda: not another.is_running(), "the end of the second program")
        self.assertEqual(another.end(), 0, another.output())

    def setUp(self):
        shutil.rmtree(os.path.dirname(self.desk.settings_file()), ignore_errors=True)

    def run(self, result=None):
        """What was on the screen and what the programs said stays behind when a test fails."""
        before = len(result.failures) + len(result.errors)
        super().run(result)
        if len(result.failures) + len(result.errors) > before and self.last_screen:
            picture = os.path.join(BUILD, f"desktop-{type(self).__name__}-{self._testMethodName}.png")
            self.last_screen.save(picture)
            print(f"the screen: {picture}", file=sys.stderr)
            for process in self.desk.session.processes:
                print(f"--- {process.name}\n{process.output()[-2000:]}", file=sys.stderr)


def main(*more_that_is_missing):
    """Runs the tests of the program, unless something is missing that they need."""
    missing = [tool for tool in TOOLS if not shutil.which(tool)] + list(more_that_is_missing)
    if missing:
        print(f"not installed: {', '.join(missing)}")
        sys.exit(1 if os.environ.get("THERMOPIX_REQUIRE_DESKTOP") == "1" else SKIPPED)
    unittest.main(verbosity=2)
