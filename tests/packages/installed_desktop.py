#!/usr/bin/env python3
"""Uses an installed Thermopix as a desktop does: installed_desktop.py [--windows] ANSWER

Runs on a session bus of its own, on which it plays the tray and the notifications. The bus starts the program; its
item and its menu are looked at, and its answer about updates must hold ANSWER. With --windows, there is a display, on
which Settings is opened and looked for.
"""
import atexit
import os
import subprocess
import sys
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PATIENCE = 60  # seconds; how long a loaded machine may take for anything
NAME = "io.github.thermopix.Thermopix"
WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
NOTIFICATIONS = "org.freedesktop.Notifications"

PLAYED = Gio.DBusNodeInfo.new_for_xml(f"""
<node>
  <interface name="{WATCHER}">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
    <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
    <signal name="StatusNotifierHostRegistered"/>
  </interface>
  <interface name="{NOTIFICATIONS}">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="Notify">
      <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
      <arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
    </method>
    <method name="CloseNotification"><arg type="u" direction="in"/></method>
    <method name="GetServerInformation">
      <arg type="s" direction="out"/><arg type="s" direction="out"/><arg type="s" direction="out"/>
      <arg type="s" direction="out"/>
    </method>
  </interface>
</node>""")


def until(condition, what):
    """Serves the bus until the answer is not false, and gives it."""
    deadline = time.monotonic() + PATIENCE
    while True:
        while GLib.MainContext.default().iteration(False):
            pass
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            sys.exit(f"not within {PATIENCE} s: {what}")
        time.sleep(0.02)


class Desktop:
    """A tray and a notification service, which remember what they are told."""

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.items, self.notifications, self.owned = [], [], set()
        for path, interface in (("/StatusNotifierWatcher", WATCHER), ("/org/freedesktop/Notifications", NOTIFICATIONS)):
            self.bus.register_object(path, PLAYED.lookup_interface(interface), self.called, self.asked, None)
            Gio.bus_own_name_on_connection(self.bus, interface, Gio.BusNameOwnerFlags.NONE,
                                           lambda bus, name: self.owned.add(name), None)
        until(lambda: len(self.owned) == 2, "the bus gives the tray and the notifications their names")

    def called(self, _bus, sender, _path, _interface, method, parameters, invocation):
        answer = None
        if method == "RegisterStatusNotifierItem":
            place = parameters.unpack()[0]
            self.items.append((sender, place if place.startswith("/") else "/StatusNotifierItem"))
        elif method == "GetCapabilities":
            answer = GLib.Variant("(as)", (["body"],))
        elif method == "Notify":
            self.notifications.append(parameters.unpack()[3:5])
            answer = GLib.Variant("(u)", (len(self.notifications),))
        elif method == "GetServerInformation":
            answer = GLib.Variant("(ssss)", ("played", "played", "1", "1.2"))
        invocation.return_value(answer)

    def asked(self, _bus, _sender, _path, _interface, name):
        return {"IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "RegisteredStatusNotifierItems": GLib.Variant("as", []),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def call(self, to, path, interface, method, parameters=None):
        replies = []
        self.bus.call(to, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, PATIENCE * 1000, None,
                      lambda bus, result: replies.append(bus.call_finish(result)))
        return until(lambda: replies, f"{to} answers {method}")[0].unpack()

    def has(self, name):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                         GLib.Variant("(s)", (name,)))[0]


class Menu:
    """The item's menu, by the titles of its entries."""

    def __init__(self, desktop, sender, path):
        self.desktop, self.sender, self.path = desktop, sender, path
        layout = self.call("GetLayout", GLib.Variant("(iias)", (0, -1, [])))[1]
        self.entries = {entry[1].get("label", ""): entry[0] for entry in layout[2]}

    def call(self, method, parameters):
        return self.desktop.call(self.sender, self.path, "com.canonical.dbusmenu", method, parameters)

    def choose(self, title):
        check(title in self.entries, f"the menu has {title!r}: {list(self.entries)}")
        self.call("Event", GLib.Variant("(isvu)", (self.entries[title], "clicked", GLib.Variant("i", 0), 0)))


def check(is_true, what):
    if not is_true:
        sys.exit(f"not so: {what}")


def window_titles():
    found = subprocess.run(["xwininfo", "-root", "-tree"], stdout=subprocess.PIPE, text=True, check=True)
    return found.stdout


def display_of_its_own():
    """Ends with this test."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                              pass_fds=[writing], stdout=sys.stderr)
    atexit.register(server.kill)
    os.close(writing)
    with os.fdopen(reading) as lines:
        number = lines.readline().strip()
    check(number, "the display comes up")
    os.environ["DISPLAY"] = f":{number}"


def main():
    has_windows = "--windows" in sys.argv[1:]
    desktop = Desktop()
    if has_windows:
        display_of_its_own()
        desktop.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                     "UpdateActivationEnvironment", GLib.Variant("(a{ss})", ({"DISPLAY": os.environ["DISPLAY"]},)))
    desktop.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "StartServiceByName",
                 GLib.Variant("(su)", (NAME, 0)))
    sender, path = until(lambda: desktop.items, "an item in the tray")[0]
    (item,) = desktop.call(sender, path, "org.freedesktop.DBus.Properties", "GetAll", GLib.Variant("(s)", (ITEM,)))
    check(item["Id"] == "thermopix", f"the item's identifier: {item['Id']}")
    pictures = item["IconPixmap"]
    check(pictures and all(len(pixels) == 4 * width * height for width, height, pixels in pictures),
          "the item has a picture")
    check(any(any(pixels[::4]) for _, _, pixels in pictures), "something is drawn in it")
    print("the item is in the tray:", ", ".join(f"{width}x{height}" for width, height, _ in pictures))

    menu = Menu(desktop, sender, item["Menu"])
    check(any("57°C" in title for title in menu.entries), f"the menu's reading: {list(menu.entries)}")
    menu.choose("Check for Updates…")
    title, body = until(lambda: desktop.notifications, "an answer about updates")[0]
    check(sys.argv[-1] in f"{title}: {body}", f"the answer about updates: {title}: {body}")
    print(f"about updates it says: {title}: {body}")

    if has_windows:
        menu.choose("Settings…")
        until(lambda: '"Thermopix Settings"' in window_titles(),
              "the Settings window on the display")
        print("Settings is on the display")

    menu.choose("Quit Thermopix")
    until(lambda: not desktop.has(NAME), "the program's end")
    print("it ends when it is told to")


if __name__ == "__main__":
    main()
