"""A desktop with a window manager, and the program's windows on it."""

import json
import os
import re
import subprocess

from item import BUILD, install_machine, install_program
from session import Session, until

FOLDER = os.path.dirname(os.path.abspath(__file__))
SETTINGS = "Thermopix Settings"
CONTENT = (720, 520)
# Above the content of the Settings window, in points.
MENU_BAR = 24
ABOUT = "About Thermopix"
# The strip of the modelled machine.
STRIP = "57 degrees Celsius, comfy"
TOOLS = ("dbus-send", "xprop", "xwininfo", "openbox")
# A pane has text in several shades on several grounds.
FEWEST_COLORS = 40


def version():
    """The program's version and build number."""
    words = subprocess.check_output([os.path.join(BUILD, "thermopix"), "--version"], text=True).split()
    return words[1], words[2].strip("()")


class Desk:
    """Where windows are: with nothing but a window manager, so that the program has no tray, or with a tray's host."""

    width, height = 1280, 900

    def __init__(self, host=None, scale=1, hears_programs=False):
        self.scale = scale
        if host:
            self.session, self.width, self.height = host.session, host.width, host.height
        else:
            self.session = Session(self.width * scale, self.height * scale, hears_programs)
            self.session.start("openbox", "--sm-disable")
        self.session.environment["QT_SCALE_FACTOR"] = str(scale)
        until(lambda: self.property("-root", "_NET_SUPPORTING_WM_CHECK"), "a window manager")

    def close(self):
        self.session.close()

    # --- the program ---

    def start(self, *arguments, **environment):
        """The program on the modelled machine; with a sensor of the tests' own where the arguments say so."""
        return self.session.start(install_program(self.session), *arguments,
                                  THERMOPIX_SYSFS_ROOT=install_machine(self.session), **environment)

    def start_service(self, *arguments):
        """One of the services of a desktop, ready to be used."""
        script = self.session.install(os.path.join(FOLDER, "desktop_services.py"), "bin", "desktop_services.py")
        service = self.session.start("/usr/bin/python3", "-B", script, *arguments)
        name = until(service.output, f"the service of {arguments}").split()[0]
        until(lambda: self.session.has_service(name), f"{name} on the bus")
        return service

    def settings_file(self):
        return os.path.join(self.session.home, ".config", "thermopix", "preferences.v1")

    def settings(self):
        """What is stored; none when nothing is."""
        try:
            with open(self.settings_file(), encoding="utf-8") as file:
                return json.load(file)
        except FileNotFoundError:
            return None

    def store(self, **settings):
        self.session.write(".config/thermopix/preferences.v1", json.dumps(settings))

    # --- windows ---

    def property(self, *arguments):
        """The text of a property; none without the property or the window."""
        output = self.session.run("xprop", *arguments)
        text = (output or b"").decode(errors="replace")
        return None if not text or "not found" in text or "no such atom" in text else text

    def windows(self):
        """What the window manager looks after, bottom first."""
        stack = self.property("-root", "_NET_CLIENT_LIST_STACKING") or ""
        return [Window(self, number) for number in re.findall(r"0x[0-9a-f]+", stack)]

    def window(self, title):
        """The mapped window of this title."""
        return next((window for window in self.windows() if window.title == title), None)

    def wait_for(self, title):
        return until(lambda: self.window(title), f"a window called {title}")

    def wait_until_gone(self, title):
        until(lambda: not self.window(title), f"no window called {title}")

    def wait_until_active(self, title):
        window = self.wait_for(title)
        until(lambda: self.active_title() == title, f"an active {title}")
        return window

    def active_title(self):
        active = re.search(r"0x[0-9a-f]+", self.property("-root", "_NET_ACTIVE_WINDOW") or "")
        return Window(self, active[0]).title if active else None

    def taskbar(self):
        """The titles in a taskbar."""
        return [window.title for window in self.windows() if window.stands_in_taskbar()]


class Window:
    def __init__(self, desk, number):
        self.desk, self.number = desk, number
        self.title = self.quoted("_NET_WM_NAME")

    def property(self, name):
        return self.desk.property("-notype", "-id", self.number, name) or ""

    def quoted(self, name):
        found = re.search(r'"(.*)"', self.property(name))
        return found[1].encode().decode("unicode_escape").encode("latin-1").decode() if found else ""

    def states(self):
        return re.findall(r"_NET_WM_STATE_(\w+)", self.property("_NET_WM_STATE"))

    def stands_in_taskbar(self):
        return "SKIP_TASKBAR" not in self.states() and "_NET_WM_WINDOW_TYPE_DOCK" not in self.property(
            "_NET_WM_WINDOW_TYPE")

    def is_of_program(self):
        return '"thermopix' in self.property("WM_CLASS")

    def is_minimized(self):
        return "HIDDEN" in self.states()

    def process(self):
        return int(re.search(r"\d+", self.property("_NET_WM_PID"))[0])

    def box(self):
        """Left, top, width and height of its content on the screen."""
        output = (self.desk.session.run("xwininfo", "-id", self.number) or b"").decode(errors="replace")
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        found = [re.search(name + r": +(-?\d+)", output) for name in names]
        return tuple(int(number[1]) for number in found) if all(found) else None

    def is_on_screen(self):
        return b"IsViewable" in (self.desk.session.run("xwininfo", "-id", self.number) or b"")

    def picture(self):
        """What of the screen it covers."""
        left, top, width, height = self.box()
        return self.desk.session.screen().crop(left, top, left + width, top + height)

    def drawn(self, *others):
        """What it covers, as soon as its content is drawn, unlike these pictures, and nothing on the screen moves."""
        def picture():
            self.desk.session.steady_screen()
            seen = self.picture()
            is_drawn = len(seen.colors(0, 0, seen.width, seen.height)) > FEWEST_COLORS
            return seen if is_drawn and all(map(seen.differs_from, others)) else None

        return until(picture, f"a drawn {self.title}")
