"""The program in the tray of a host, as a user meets it."""

import json
import os
import shutil
import subprocess
from dataclasses import dataclass

from picture import MenuPicture
from session import until

SOURCES = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# Where the programs were built.
BUILD = os.environ.get("THERMOPIX_BUILD", os.path.join(SOURCES, "build", "release"))

SEPARATOR = ""
# What the menu shows for the modelled machine with a pet.
MENU = ("Comfy — 57°C", "Perfectly comfortable.", "CPU · hottest of 5 sensors · thermal state nominal", SEPARATOR,
        "Pet", "No pet", "Cat", "Westie", "Mac", "Ghost", SEPARATOR,
        "Unit", "Celsius", "Fahrenheit", SEPARATOR,
        "Style", "Arcade", "Micro", "Segment", "Dot Matrix", SEPARATOR,
        "Settings…", "Check for Updates…", "About Thermopix", "Quit Thermopix")
# Without a pet there is no line about its mood.
MENU_WITHOUT_PET = ("57°C", *MENU[2:])


def missing_programs(programs):
    return [tool for tool in ("Xvfb", "dbus-daemon", "setpriv", "xdotool", "import", *programs) if not shutil.which(tool)]


@dataclass(frozen=True)
class Shown:
    """What the item shows."""

    value: int = 57
    unit: str = "celsius"
    style: str = "arcade"
    pet: str = "cat"

    def art(self, shape):
        """Its rows, from the program's own rasterizer."""
        rows = subprocess.check_output([os.path.join(BUILD, "thermopix_art"), shape, str(self.value), self.unit,
                                        self.style, self.pet], text=True)
        return rows.splitlines()


def install_program(session):
    """Where the program is, in the session, beside the program of its windows."""
    program = os.path.join(session.folder, "bin", "thermopix")
    if not os.path.exists(program):
        for name in ("thermopix", "thermopix-windows"):
            if os.path.exists(os.path.join(BUILD, name)):
                session.install(os.path.join(BUILD, name), "bin", name)
    return program


def install_machine(session):
    """The modelled machine's folder in the session."""
    machine = os.path.join(session.folder, "machine")
    if not os.path.exists(machine):
        session.install(os.path.join(SOURCES, "tests/fixtures/sysfs/intel-laptop"), "machine")
    return machine


def opened_menu(session, before, top, menu=MENU):
    """The picture of the menu that opens below the line `top`, once every entry is there."""
    def opened():
        picture = MenuPicture(before, session.steady_screen(), top)
        return picture if len(picture.entries) == len(menu) else None

    return until(opened, f"an open menu with {len(menu)} entries")


class Item:
    """The program, started with settings of its own on the modelled machine."""

    def __init__(self, host, environment=None, **settings):
        self.host, self.session = host, host.session
        program, machine = install_program(self.session), install_machine(self.session)
        folder = os.path.join(self.session.home, ".config", "thermopix")
        shutil.rmtree(folder, ignore_errors=True)
        if settings:
            self.session.write(".config/thermopix/preferences.v1", json.dumps(settings))
        self.process = self.session.start(program, THERMOPIX_SYSFS_ROOT=machine, **environment or {})

    def end(self):
        return self.process.end()

    def place(self, shown):
        """Where in the bar the item stands; none when it does not."""
        place = self.host.find(shown)
        # Some panels are first seen in the middle of the screen.
        return place if place and place[1] < self.host.bar_height * self.host.scale else None

    def wait_for(self, shown):
        return until(lambda: self.place(shown), f"{self.host.name} shows {shown}")

    def size(self, shown):
        art = shown.art(self.host.shape)
        cell = self.host.cell(art)
        return len(art[0]) * cell, len(art) * cell

    def open_menu(self, shown, menu=MENU):
        """Opens the menu with the mouse; its picture, once every entry is there."""
        left, top = self.wait_for(shown)
        width, height = self.size(shown)
        before = self.session.steady_screen()
        self.session.click(left + width // 2, top + height // 2, self.host.menu_button)
        return opened_menu(self.session, before, self.host.bar_height * self.host.scale + 2, menu)

    def choose(self, shown, title, menu=MENU):
        """Chooses an entry of the menu with the mouse."""
        opened = self.open_menu(shown, menu)
        self.session.click(*opened.center(menu.index(title)))

    def close_menu(self):
        self.session.press("Escape")
        self.session.point(2, self.session.screen().height - 2)
