#!/usr/bin/env python3
"""analysis_units.py BUILD FOLDER: writes the tests of the build into FOLDER as one translation unit for each set of
flags, so that their headers are read once and not by every test, and prints the units. What a test keeps in a nameless
namespace is in one with a name there, so that two may use the same words. FOLDER has their compile commands."""

import json
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
build, folder = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])

units = {}
for entry in json.loads((build / "compile_commands.json").read_text()):
    file = pathlib.Path(entry["file"])
    if file.is_relative_to(ROOT / "tests"):
        flags = re.sub(r" -W\S+| -o .*", "", entry["command"])
        units.setdefault(flags, {})[file.relative_to(ROOT)] = file.read_text()

commands = []
for flags, files in units.items():
    unit = folder / f"unit{len(commands)}.cpp"
    for path, text in files.items():
        copy = folder / path
        copy.parent.mkdir(parents=True, exist_ok=True)
        if text.count("\nnamespace {\n") == 1 and text.endswith("}  // namespace\n}  // namespace thermopix\n"):
            name = re.sub(r"\W", "_", str(path))
            text = text.replace("\nnamespace {\n", f"\nnamespace {name} {{\n")
        copy.write_text(text)
    # Each beside the headers that it names without a folder.
    folders = "".join(f" -iquote {place}" for place in sorted({ROOT / path.parent for path in files}))
    unit.write_text("".join(f'#include "{folder / path}"\n' for path in files))
    commands.append({"directory": str(build), "file": str(unit), "command": f"{flags}{folders} -c {unit}"})
    print(unit)
(folder / "compile_commands.json").write_text(json.dumps(commands))
