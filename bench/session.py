"""A private home, buses and tray for one measured program; nothing reaches the user's own session."""

import json
import os
import pathlib
import queue
import shutil
import subprocess
import tempfile
import threading

PATIENCE = 60  # seconds before something is called stuck; never a measure

DEFAULTS = {
    "unit": "celsius", "style": "arcade", "size": "compact", "pet": "none", "source": "cpu", "refreshInterval": 2,
    "showsUnitLetter": False, "openAtLogin": False, "showPreferencesOnLaunch": False, "showInDock": False,
    "checkForUpdatesAutomatically": True,
}


class Lines:
    """The lines that a process prints, waited for with patience."""

    def __init__(self, stream):
        self.lines = queue.Queue()
        threading.Thread(target=self._read, args=(stream,), daemon=True).start()

    def _read(self, stream):
        for line in stream:
            self.lines.put(line.rstrip("\n"))
        self.lines.put(None)

    def next(self, start=""):
        """The rest of the next line that starts so."""
        while True:
            line = self.lines.get(timeout=PATIENCE)
            if line is None:
                raise RuntimeError(f"the process ended before it printed '{start}'")
            if line.startswith(start):
                return line[len(start):].strip()


class Session:
    """`with Session(...) as session:`; settings are those of DEFAULTS but for the ones given."""

    def __init__(self, build, tree, **settings):
        self.build = build
        self.settings = {**DEFAULTS, **settings}
        self.tree = tree

    def __enter__(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="thermopix-bench-"))
        (self.home / "run").mkdir(mode=0o700)
        configuration = self.home / "config" / "thermopix"
        configuration.mkdir(parents=True)
        (configuration / "preferences.v1").write_text(json.dumps(self.settings))
        self.machine = self.home / "machine"
        shutil.copytree(self.tree, self.machine, symlinks=True)
        self.environment = {
            "PATH": os.environ["PATH"], "HOME": str(self.home), "LANG": "C.UTF-8", "G_DEBUG": "",
            "XDG_CONFIG_HOME": str(self.home / "config"), "XDG_RUNTIME_DIR": str(self.home / "run"),
            "THERMOPIX_SYSFS_ROOT": str(self.machine),
        }
        self.started = []
        self.tray = self.start([self.build / "thermopix_bench_tray"], stdin=subprocess.PIPE)
        self.tray_lines = Lines(self.tray.stdout)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.tray_lines.next("session ")
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = self.tray_lines.next("system ")
        return self

    def __exit__(self, *_):
        for process in reversed(self.started):
            if process is not self.tray:
                process.terminate()
                process.wait(PATIENCE)
        self.tray.stdin.close()
        self.tray.wait(PATIENCE)
        shutil.rmtree(self.home)

    def start(self, command, stdin=subprocess.DEVNULL, **environment):
        process = subprocess.Popen([str(part) for part in command], env={**self.environment, **environment},
                                   stdin=stdin, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                   cwd=self.home)
        self.started.append(process)
        return process

    def stop(self, process):
        process.terminate()
        process.wait(PATIENCE)
        process.stdout.close()
        self.started.remove(process)

    def tell_tray(self, command):
        self.tray.stdin.write(command + "\n")
        self.tray.stdin.flush()

    def messages(self):
        """How many messages of each kind have crossed the session bus."""
        self.tell_tray("messages")
        _, *kinds = self.tray_lines.next("messages ").split()
        return {kind: int(count) for kind, count in (entry.split("=") for entry in kinds)}

    def shown(self):
        """Waits until the tray has the item and its picture; when it registered, in monotonic microseconds."""
        registered = int(self.tray_lines.next("registered "))
        if not self.tray_lines.next().startswith("picture"):
            raise RuntimeError("the item has no picture")
        return registered
