"""A desktop session of its own: directories, a message bus, an X display. Everything ends with it."""

import os
import pwd
import shutil
import signal
import subprocess
import tempfile
import time

from picture import Picture

PATIENCE = 180  # seconds; how long a loaded machine may take for anything


def until(condition, what):
    """Asks again and again until the answer is not false, and gives it; fails when the patience is over."""
    deadline = time.monotonic() + PATIENCE
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {PATIENCE} s: {what}")
        time.sleep(0.05)


class Process:
    """A program of the session, with its output in a file."""

    def __init__(self, session, command, environment):
        self.name = os.path.basename(command[0])
        self.log = os.path.join(session.folder, f"{self.name}.log")
        with open(self.log, "ab") as log:
            # Hosts that are killed leave nothing behind, nor does a test that is killed.
            self.child = subprocess.Popen(session.as_user(command), env=environment, stdin=subprocess.DEVNULL,
                                          stdout=log, stderr=log, start_new_session=True)

    def output(self):
        with open(self.log, "rb") as log:
            return log.read().decode(errors="replace")

    def is_running(self):
        return self.child.poll() is None

    def end(self, with_signal=signal.SIGTERM):
        """Asks it to end, and gives its status; what it started goes with it."""
        if self.is_running():
            self.child.send_signal(with_signal)
        try:
            status = self.child.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.child.kill()
            status = self.child.wait()
        try:
            os.killpg(self.child.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        return status


class Session:
    """Runs as an unprivileged user when root started it, since compositors refuse root."""

    def __init__(self, width, height, hears_programs=False):
        self.user = pwd.getpwnam("nobody") if os.geteuid() == 0 else None
        self.processes = []
        self.folder = tempfile.mkdtemp(prefix="thermopix-desktop-")
        self.home = self.make_folder("home")
        self.runtime = self.make_folder("runtime")
        self.own(self.folder)
        self.environment = {
            "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/games",
            "LANG": "C.UTF-8",
            "HOME": self.home,
            "XDG_RUNTIME_DIR": self.runtime,
            "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.runtime}/no-system-bus",
            "GSETTINGS_BACKEND": "keyfile",
            "NO_AT_BRIDGE": "1",
        }
        # Whether the program speaks to assistive technology; the desktop itself never does.
        self.environment.update({"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"} if hears_programs else
                                {"QT_ACCESSIBILITY": "0"})
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "ASAN_SYMBOLIZER_PATH"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        if "ASAN_OPTIONS" in self.environment:
            # The keyboard's library copies parts of texts that have no end of their own, which is no error.
            self.environment["ASAN_OPTIONS"] += ":strict_string_checks=0"
        self.start_display(width, height)
        self.start_bus()

    # --- the user and the files of the user ---

    def as_user(self, command):
        prefix = ["setpriv", "--pdeathsig", "KILL"]
        if self.user:
            prefix += [f"--reuid={self.user.pw_uid}", f"--regid={self.user.pw_gid}", "--clear-groups"]
        return [*prefix, *command]

    def own(self, path):
        if self.user:
            os.chown(path, self.user.pw_uid, self.user.pw_gid)

    def make_folder(self, *parts):
        path = self.folder
        for part in os.path.join(*parts).split("/"):
            path = os.path.join(path, part)
            if not os.path.isdir(path):
                os.mkdir(path, 0o700)
                self.own(path)
        return path

    def write(self, path, text):
        """A file below the home folder."""
        self.make_folder("home", os.path.dirname(path))
        file = os.path.join(self.home, path)
        with open(file, "w", encoding="utf-8") as stream:
            stream.write(text)
        self.own(file)
        return file

    def install(self, source, *parts):
        """A copy that the user can read, wherever the source is."""
        target = os.path.join(self.folder, *parts)
        if os.path.isdir(source):
            shutil.copytree(source, target, symlinks=True)
        else:
            self.make_folder(*parts[:-1])
            shutil.copy(source, target)
        for folder, folders, files in os.walk(target):
            for name in (".", *folders, *files):
                path = os.path.join(folder, name)
                if self.user and not os.path.islink(path):
                    self.own(path)
        if os.path.isfile(target):
            self.own(target)
        return target

    # --- programs ---

    def start(self, *command, **environment):
        process = Process(self, command, {**self.environment, **environment})
        self.processes.append(process)
        return process

    def run(self, *command):
        """The output of a program that ends by itself; none when it fails."""
        done = subprocess.run(self.as_user(command), env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=PATIENCE, check=False)
        return done.stdout if done.returncode == 0 else None

    def start_display(self, width, height):
        reading, writing = os.pipe()
        with open(os.path.join(self.folder, "Xvfb.log"), "wb") as log:
            server = subprocess.Popen(
                self.as_user(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24", "-nolisten",
                              "tcp", "-noreset"]),
                env=self.environment, pass_fds=[writing], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            number = numbers.readline().strip()  # ends, empty, when the server ends
        assert number, f"no display; see {self.folder}/Xvfb.log"
        self.server = server
        self.environment["DISPLAY"] = f":{number}"

    def start_bus(self):
        address = f"unix:path={self.runtime}/bus"
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.start("dbus-daemon", "--session", "--nofork", f"--address={address}")
        until(lambda: os.path.exists(f"{self.runtime}/bus"), "the message bus")

    def has_service(self, name):
        """Whether a program on the message bus has this name."""
        return self.run("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
                        "/org/freedesktop/DBus", "org.freedesktop.DBus.GetNameOwner", f"string:{name}")

    def close(self):
        for process in reversed(self.processes):
            process.end(signal.SIGKILL)
        self.server.kill()
        self.server.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    # --- what a user sees and does ---

    def screen(self):
        return Picture.from_ppm(self.run("import", "-silent", "-window", "root", "-depth", "8", "ppm:-"))

    def steady_screen(self):
        """A picture of a screen on which nothing moves any more."""
        seen = [None, self.screen()]

        def is_steady():
            seen[:] = [seen[1], self.screen()]
            return seen[0].rgb == seen[1].rgb

        until(is_steady, "a screen on which nothing moves")
        return seen[1]

    def point(self, x, y):
        self.run("xdotool", "mousemove", str(x), str(y))

    def click(self, x, y, button=1):
        self.point(x, y)
        self.run("xdotool", "click", str(button))

    def press(self, key):
        self.run("xdotool", "key", key)
