"""The program as somebody meets it who uses assistive technology."""

import json
import os
import subprocess

from session import until

FOLDER = os.path.dirname(os.path.abspath(__file__))
# What the elements are that say something or can be operated.
KINDS = {"label": "text", "image": "picture", "push button": "button", "radio button": "choice", "check box": "toggle",
         "combo box": "picker", "menu item": "item"}
ACTIONS = {"press": "Press", "toggle": "Toggle"}


def is_installed():
    """Whether the session's Python can speak to the programs."""
    asked = subprocess.run(["/usr/bin/python3", "-c", "import gi; gi.require_version('Atspi', '2.0')"], check=False,
                           stderr=subprocess.DEVNULL)
    return asked.returncode == 0 and os.path.exists("/usr/libexec/at-spi-bus-launcher")


def named(name, *kinds):
    """Whether an element is the one of this name and of one of these kinds."""
    return lambda element: element.name == name and element.kind in kinds


class ScreenReader:
    def __init__(self, session):
        script = session.install(os.path.join(FOLDER, "screen_reader.py"), "bin", "screen_reader.py")
        with open(os.path.join(session.folder, "screen_reader.log"), "ab") as log:
            self.child = subprocess.Popen(session.as_user(["/usr/bin/python3", "-B", script]), text=True,
                                          env=session.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                          stderr=log)

    def close(self):
        self.child.kill()
        self.child.wait()
        self.child.stdin.close()
        self.child.stdout.close()

    def ask(self, request):
        self.child.stdin.write(json.dumps(request) + "\n")
        self.child.stdin.flush()
        return json.loads(self.child.stdout.readline())

    def see(self, title):
        """All elements of the window; none while there is no such window."""
        return [Element(described) for described in self.ask({"see": title}) or ()]

    def look(self, title, is_wanted=lambda element: True):
        """All elements of the window, as soon as there is one that is wanted, and that one."""
        def found():
            elements = self.see(title)
            wanted = next(filter(is_wanted, elements), None)
            return wanted and (elements, wanted)

        return until(found, f"an element of {title}")

    def where(self, title, is_wanted):
        """Left, top, width and height on the screen of the first element that is wanted, as soon as there is one."""
        return until(lambda: self.ask({"where": self.look(title, is_wanted)[1].key}), f"a place in {title}")

    def do(self, title, action, is_wanted):
        """Does the action to the first element that is wanted, as soon as there is one."""
        until(lambda: self.ask({"on": self.look(title, is_wanted)[1].key, "do": action}), f"{action} in {title}")


class Element:
    def __init__(self, described):
        self.key, self.parent = described["key"], described["parent"]
        self.role, self.spoken, self.states = described["role"], described["name"], described["states"]
        self.label = " ".join(described["labels"])
        self.kind = KINDS.get(self.role, "group" if self.role == "panel" and self.spoken else "")
        # A picker is called by its label, and says what is chosen.
        self.name = self.label if self.kind == "picker" else self.spoken

    def has(self, state):
        return state in self.states

    def summary(self):
        """What the story of the settings says of such an element."""
        summary = {"kind": self.kind, "name": self.name}
        if self.kind in ("choice", "toggle"):
            summary["isOn"] = self.has("checked")
        if self.kind == "picker":
            summary["choice"] = self.spoken
        return summary


def content(elements):
    """What a window's elements say, in reading order, without its menu bar."""
    hidden = {element.key for element in elements if element.role == "menu bar"}
    for element in elements:
        if element.parent in hidden:
            hidden.add(element.key)
    return [element.summary() for element in elements if element.kind and element.key not in hidden]
