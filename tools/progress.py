#!/usr/bin/env python3
"""progress.py LOG TITLE COMMAND...: runs a build by ninja, or tests by ctest, and ends with its status. All that the
command says goes into LOG; shown are how far it is, in one line that is renewed on a terminal and once a minute
elsewhere, and at once what fails. The time runs from THERMOPIX_BEGAN, in seconds of the epoch, where that is set."""

import os
import re
import select
import subprocess
import sys
import time

BUILT = re.compile(r"\[(\d+)/(\d+)\] ")
STARTED = re.compile(r" +Start +\d+: ")
TESTED = re.compile(r" *(\d+)/(\d+) Test +#\d+: (.+?) \.*(?: +Passed|\*\*\*(.+?)) +([\d.]+) sec")
PASSED_OVER = ("Internal ctest ", "Test project ", "ninja: ", "-- ")
LARGEST_READ = 1 << 16


class Progress:
    def __init__(self, title, stream):
        self.title, self.stream = title, stream
        self.began = float(os.environ.get("THERMOPIX_BEGAN") or time.time())
        self.interval = 1 if stream.isatty() else 60
        self.shown_at, self.line, self.failed, self.is_testing = time.monotonic(), "", 0, False

    def take(self, line):
        """A line of the command's output."""
        built, tested = BUILT.match(line), TESTED.match(line)
        if built:
            self.line = f"built {built[1]} of {built[2]}"
        elif tested:
            self.is_testing = True
            self.failed += tested[4] is not None and tested[4] != "Skipped"
            self.line = f"tested {tested[1]} of {tested[2]}, {self.failed} failed"
            if tested[4]:
                self.say(f"{tested[4].strip()}: {tested[3]} ({tested[5]} s)")
        elif not self.is_testing and not STARTED.match(line) and not line.startswith(PASSED_OVER):
            self.say(line)
        self.show()

    def show(self):
        if self.line and time.monotonic() - self.shown_at >= self.interval:
            self.shown_at = time.monotonic()
            seconds = int(time.time() - self.began)
            text = f"{self.title}: {self.line}, {seconds // 60}:{seconds % 60:02}"
            self.stream.write(f"\r{text}\033[K" if self.stream.isatty() else f"{text}\n")
            self.stream.flush()

    def say(self, text):
        self.clear()
        self.stream.write(text + "\n")
        self.stream.flush()

    def clear(self):
        if self.stream.isatty():
            self.stream.write("\r\033[K")


def main():
    log, title, *command = sys.argv[1:]
    progress, rest = Progress(title, sys.stdout), b""
    with open(log, "wb", buffering=0) as file, subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                                   stderr=subprocess.STDOUT) as child:
        while True:
            ready, _, _ = select.select([child.stdout], [], [], progress.interval)
            data = os.read(child.stdout.fileno(), LARGEST_READ) if ready else None
            if data == b"":
                break
            file.write(data or b"")
            *lines, rest = (rest + (data or b"")).split(b"\n")
            for line in lines:
                progress.take(line.decode(errors="replace"))
            progress.show()
    progress.clear()
    return child.returncode


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
