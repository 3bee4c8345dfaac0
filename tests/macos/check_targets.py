"""check_targets.py [DESCRIPTION]: the layer's build description names every source of it, and none that is not there."""

import re
import sys
from pathlib import Path

import gate

description = Path(sys.argv[1]) if len(sys.argv) > 1 else gate.LAYER / "CMakeLists.txt"
named = set(re.findall(r"[\w/]+\.(?:cpp|mm)", description.read_text()))
there = {str(path.relative_to(gate.LAYER)) for path in gate.layer_sources()}
problems = [f"{name}: in no target" for name in sorted(there - named)]
problems += [f"{name}: named, but not there" for name in sorted(named - there)]
gate.finish(problems, f"{len(there)} sources")
