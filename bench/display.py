"""An X display with a window manager, which tells when a window is there."""

import os
import re
import subprocess
import time

from session import Lines

NEEDED = ("Xvfb", "openbox", "xprop", "xdotool")


class Display:
    """`with Display(session) as display:`; what the session starts from then on has the display."""

    def __init__(self, session):
        self.session = session

    def __enter__(self):
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x900x24", "-nolisten",
                                   "tcp", "-noreset"], pass_fds=[writing], stdin=subprocess.DEVNULL,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.session.started.append(server)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            self.session.environment["DISPLAY"] = f":{numbers.readline().strip()}"
        self.session.start(["openbox", "--sm-disable"])
        while not self.property("_NET_SUPPORTING_WM_CHECK"):
            time.sleep(0.1)
        spy = self.session.start(["xprop", "-root", "-spy", "_NET_CLIENT_LIST"])
        self.clients = Lines(spy.stdout)
        self.wait_for(0)
        return self

    def __exit__(self, *_):
        del self.session.environment["DISPLAY"]

    def property(self, name):
        found = subprocess.run(["xprop", "-root", name], env=self.session.environment, capture_output=True, text=True,
                               check=False)
        return re.search(r"0x[1-9a-f]", found.stdout)

    def wait_for(self, count):
        """When so many windows were there, in nanoseconds of the monotonic clock."""
        while len(re.findall(r"0x[1-9a-f][0-9a-f]*", self.clients.next())) != count:
            pass
        return time.monotonic_ns()

    def press(self, keys):
        subprocess.run(["xdotool", "key", keys], env=self.session.environment, check=True)
