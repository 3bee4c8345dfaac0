"""compile.py BUILD TARGET WHAT: `common` reads the headers that the core shares, `layer` compiles the macOS layer into
objects, and a folder of src/ checks that room of the core (`.` those sources that stand in no room)."""

import sys

import gate

build, target, what = sys.argv[1:]
gate.skip_without_tools()
folder = gate.prepare(build)

if what == "common":
    said = gate.precompile(folder, target)
    gate.finish([said] if said else [], "read")
elif what == "layer":
    output = gate.objects(folder, target)
    output.mkdir(parents=True, exist_ok=True)
    for stale in output.glob("*.o"):
        stale.unlink()
    sources = gate.layer_sources()
    said = [gate.compile_source(source, folder, target, output / (source.name + ".o")) for source in sources]
    gate.finish([each for each in said if each], f"{len(sources)} objects")
else:
    sources = gate.room_sources(what)
    said = [gate.check_source(source, folder, target) for source in sources]
    nothing = [] if sources else [f"no source in {what}"]
    gate.finish([each for each in said if each] + nothing, f"{len(sources)} sources")
