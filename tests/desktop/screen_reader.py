"""What assistive technology sees of the programs on its session, and does with them, over AT-SPI.

Runs inside the session, with Debian's own Python. Each line of standard input is a request, answered with one line:
{"see": TITLE} with the elements of the program's windows of this title, outermost first, and {"do": ACTION, "on": KEY}
with whether the element took the action, or {"where": KEY} with its left, top, width and height. Null where the
program changed something in the meantime.
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

PROGRAM = "thermopix"
DEEPEST = 30


def switch_on():
    """As a desktop does where somebody uses assistive technology."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                  GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))), None,
                  Gio.DBusCallFlags.NONE, -1)


class Reader:
    def __init__(self):
        switch_on()
        Atspi.init()
        Atspi.set_timeout(60000, 60000)
        self.elements = {}

    def see(self, title):
        self.elements = {}
        desktop = Atspi.get_desktop(0)
        # Nothing is remembered: each look is at what is there now.
        desktop.set_cache_mask(Atspi.Cache.NONE)
        seen = []
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if not application or application.get_name() != PROGRAM:
                continue
            application.set_cache_mask(Atspi.Cache.NONE)
            for number in range(application.get_child_count()):
                window = application.get_child_at_index(number)
                if window and window.get_name() == title:
                    self.collect(window, None, 0, seen)
        return seen

    def collect(self, element, parent, depth, seen):
        key = len(seen)
        self.elements[key] = element
        seen.append(self.describe(element, key, parent))
        for index in range(element.get_child_count() if depth < DEEPEST else 0):
            child = element.get_child_at_index(index)
            if child:
                self.collect(child, key, depth + 1, seen)

    @staticmethod
    def describe(element, key, parent):
        states = [state.value_nick for state in element.get_state_set().get_states()]
        described = {"key": key, "parent": parent, "role": element.get_role_name(), "name": element.get_name(),
                     "states": states, "labels": []}
        for relation in element.get_relation_set() if described["role"] == "combo box" else ():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                described["labels"] += [relation.get_target(index).get_name()
                                        for index in range(relation.get_n_targets())]
        return described

    def act(self, key, action):
        element = self.elements[key]
        for index in range(Atspi.Action.get_n_actions(element)):
            if Atspi.Action.get_action_name(element, index) == action:
                return bool(Atspi.Action.do_action(element, index))
        raise LookupError(f"no action {action}")

    def answer(self, request):
        if "see" in request:
            return self.see(request["see"])
        if "where" in request:
            box = self.elements[request["where"]].get_extents(Atspi.CoordType.SCREEN)
            return [box.x, box.y, box.width, box.height]
        return self.act(request["on"], request["do"])


def main():
    reader = Reader()
    for line in sys.stdin:
        try:
            answer = reader.answer(json.loads(line))
        except GLib.Error:
            answer = None
        print(json.dumps(answer), flush=True)


if __name__ == "__main__":
    main()
