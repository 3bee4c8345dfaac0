"""check_delegates.py [LAYER]: what is made a delegate, which AppKit does not keep alive, is kept by a member: the
compiler may let go of a local variable after its last use."""

import re
import sys
from pathlib import Path

import gate

layer = Path(sys.argv[1]) if len(sys.argv) > 1 else gate.LAYER
problems, seen = [], 0
for source in sorted(layer.rglob("*.mm")):
    for number, line in enumerate(source.read_text().splitlines(), 1):
        for value in re.findall(r"\.delegate = (\w+);", line):
            seen += 1
            if value != "nil" and not value.endswith("_") and not value.startswith("_"):
                problems.append(f"{source.name}:{number}: {value} is no member")
if not seen:
    problems.append(f"no delegate in {layer}")
gate.finish(problems, f"{seen} delegates set, each kept")
