"""What a tick costs, counted between two points in the life of the unchanged program, over many ticks: the program
runs with a clock that jumps over its waits, once under callgrind and once under strace."""

import collections
import re

from session import PATIENCE

WARM_UP = 10
WAKE_UPS = 100
# Hotter than every other sensor of the modelled laptop, and far enough apart that each tick shows another number.
CHANGES = {"sensor": "devices/platform/coretemp.0/hwmon/hwmon5/temp1_input", "values": "66000\n,80000\n"}


def _environment(session, changes, quiet):
    variables = {
        "LD_PRELOAD": str(session.build / "thermopix_bench_fast_clock.so"),
        "BENCH_WARMUP": str(WARM_UP), "BENCH_WAKEUPS": str(WAKE_UPS), "BENCH_QUIET": str(quiet),
    }
    if changes:
        variables["BENCH_INPUT"] = str(session.machine / CHANGES["sensor"])
        variables["BENCH_VALUES"] = CHANGES["values"]
    return variables


def _run(session, command, variables):
    # The tools get the variables for the program, not for themselves.
    process = session.start(command, **variables)
    process.communicate(timeout=10 * PATIENCE)
    session.started.remove(process)
    if process.returncode != 0:
        raise RuntimeError(f"{command} ended with {process.returncode}")


def instructions(session, program, changes=False):
    """User instructions of all threads, a tick."""
    output = session.home / "callgrind"
    for old in session.home.glob("callgrind*"):
        old.unlink()
    _run(session, ["valgrind", "--tool=callgrind", f"--callgrind-out-file={output}", *program],
         _environment(session, changes, quiet=2000))
    # The first dump is the one that the clock asked for.
    totals = re.search(r"^totals: (\d+)", (session.home / "callgrind.1").read_text(), re.M)[1]
    return int(totals) / WAKE_UPS


def system_calls(session, program, changes=False):
    """The system calls a tick by name, and the files that the first tick reads."""
    log = session.home / "strace"
    variables = [part for entry in _environment(session, changes, quiet=500).items() for part in ("-E", "=".join(entry))]
    _run(session, ["strace", "-f", "-y", "-o", log, *variables, *program], {})
    text = log.read_text(errors="replace")
    stretch = text[text.index('"bench:begin"'):text.index('"bench:end"')].splitlines()[1:-1]
    calls = collections.Counter()
    files = []
    for line in stretch:
        if call := re.match(r"\d+ +(\w+)\(", line):
            calls[call[1]] += 1
        if read := re.match(r"\d+ +pread64\(\d+<([^>]*)>", line):
            files.append(read[1])
    # The two waits of the clock itself at the ends lie outside; the last poll is the one that ends the stretch.
    tick = files[:len(files) // WAKE_UPS]
    if tick * WAKE_UPS != files:
        raise RuntimeError("the ticks do not all read the same files")
    return {name: count / WAKE_UPS for name, count in calls.items()}, tick
