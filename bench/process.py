"""Figures of a running process, from /proc."""

import pathlib
import re


def memory(process):
    """Resident and proportional set size in kB."""
    text = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text()
    return tuple(int(re.search(rf"^{name}:\s+(\d+) kB", text, re.M)[1]) for name in ("Rss", "Pss"))


def children(process):
    """The processes that it has started and that have not ended."""
    return pathlib.Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()


def wake_ups(process):
    """How often the threads of the process have gone to sleep of their own accord."""
    threads = pathlib.Path(f"/proc/{process.pid}/task").glob("*/status")
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", thread.read_text(), re.M)[1]) for thread in threads)
