"""check_targets.py: the layer's build description names every source of it, and none that is not there."""

import re

import gate

named = set(re.findall(r"[\w/]+\.(?:cpp|mm)", (gate.LAYER / "CMakeLists.txt").read_text()))
there = {str(path.relative_to(gate.LAYER)) for path in gate.layer_sources()}
problems = [f"{name}: in no target" for name in sorted(there - named)]
problems += [f"{name}: named, but not there" for name in sorted(named - there)]
gate.finish(problems, f"{len(there)} sources")
