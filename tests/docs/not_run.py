"""The commands of the documents that a test does not run to their end: why, and what is asked instead."""

import json
import re
import shlex

from documents import NotRun, RunsOn


def knows_dev_command(tree, command):
    name, *rest = shlex.split(command)[1:]
    for option in ("", *(word for word in rest if word.startswith("--"))):
        if not tree.has_subcommand(name, option):
            return f"./dev knows no {name} {option}"
    return None


def knows_fuzzer(tree, command):
    name = shlex.split(command)[2]
    targets = (tree.root / "tests/fuzz/CMakeLists.txt").read_text()
    wrong = None if re.search(rf"thermopix_\w*{name}\w*_fuzz", targets) else f"no fuzzer is called {name}"
    return knows_dev_command(tree, command) or wrong


def knows_label(tree, command):
    """Of CTest; a label is the room of some test."""
    words = shlex.split(command)
    label = words[words.index("-L") + 1]
    tests = (path.read_text() for path in (tree.root / "tests").rglob("CMakeLists.txt"))
    is_label = any(re.search(rf"(ROOM|LABELS) [\"\w;]*\b{label}\b", text) for text in tests)
    wrong = None if is_label else f"no test has the label {label}"
    return wrong or (knows_dev_command(tree, command) if words[0] == "./dev" else None)


def knows_preset(tree, command):
    presets = json.loads((tree.root / "CMakePresets.json").read_text())
    kind = "buildPresets" if "--build" in command else "configurePresets"
    known = {preset["name"] for preset in presets[kind]}
    words = shlex.split(command)
    name = words[words.index("--preset") + 1]
    return None if name in known else f"no preset is called {name}"


def has_files(*paths):
    """The files that the command stands or falls with."""

    def missing(tree, _):
        lacking = [path for path in paths if not (tree.root / path).exists()]
        return f"there is no {', '.join(lacking)}" if lacking else None

    return missing


MINUTES = "builds and tests for minutes"
INSTALLS = "installs packages on the machine"
STAYS = "builds, and stays until it is interrupted"

TABLE = {
    "cp -r build/release/seen/. tests": NotRun("rewrites the source", has_files("tests/fakes/Golden.h")),
    "git diff --stat tests/diagnostics/golden": NotRun("needs a clone", has_files("tests/diagnostics/golden")),
    "./dev fuzz sysfs_tree 300": NotRun(MINUTES, knows_fuzzer),
    "thermopix --terminal": RunsOn("57 degrees Celsius, comfy"),
    "./dev run": NotRun(STAYS, knows_dev_command),
    "./dev test": NotRun(MINUTES, knows_dev_command),
    "./dev test --all": NotRun(MINUTES, knows_dev_command),
    "./dev test --stress": NotRun(MINUTES, knows_dev_command),
    "./dev test --stress 20 -R \"desktop: strip\"": NotRun(MINUTES, knows_dev_command),
    "./dev test -L pixels": NotRun(MINUTES, knows_label),
    "./dev test Smoother": NotRun(MINUTES, knows_dev_command),
    "ctest --test-dir build/release -L base": NotRun("is the one that runs this test", knows_label),
    "./dev package": NotRun(MINUTES, knows_dev_command),
    "./dev package --test": NotRun(MINUTES, knows_dev_command),
    "sudo apt install ./build/package/*.deb": NotRun(
        INSTALLS, has_files("tools/package.sh", "packaging/debian/control")),
    "./dev lint": NotRun(MINUTES, knows_dev_command),
    "./dev fmt": NotRun("rewrites the source", knows_dev_command),
    "./dev coverage": NotRun(MINUTES, knows_dev_command),
    "./dev bench": NotRun("measures for minutes", knows_dev_command),
    "./dev setup": NotRun(INSTALLS, knows_dev_command),
    "./dev fuzz unicode 300": NotRun(MINUTES, knows_fuzzer),
    "./dev shots": NotRun("builds, and needs every desktop", knows_dev_command),
    "brew install cmake ninja fmt nlohmann-json libpng utf8proc pkg-config": NotRun(
        INSTALLS + ", a Mac", has_files("docs/macos.md")),
    "cmake --preset macos": NotRun("needs a Mac", knows_preset),
    "cmake --build --preset macos": NotRun("needs a Mac", knows_preset),
}
