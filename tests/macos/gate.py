"""Compiles for macOS where there is no Mac: clang's Apple targets, libc++, and declarations of our own."""

import json
import os
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
SOURCES = ROOT / "src"
LAYER = SOURCES / "platform" / "macos"
DECLARATIONS = HERE / "declarations"
FACTS = HERE / "facts.tsv"

TARGETS = {"arm64": "arm64-apple-macos13", "x86_64": "x86_64-apple-macos13"}

COMPILER = "clang++-14"
LIBCXX = Path("/usr/lib/llvm-14/include/c++/v1")
LIBCXX_LIBRARIES = Path("/usr/lib/llvm-14/lib")
# The C library's headers of this machine know another processor than the targets do; these serve both.
C_HEADERS = Path("/usr/aarch64-linux-gnu/include")

SKIPPED = 77


def skip_without_tools():
    """Ends the process, as CTest understands it, where the compiler or the libraries are not installed."""
    needed = [LIBCXX / "__config_site", C_HEADERS / "stdio.h"]
    missing = [str(path) for path in needed if not path.exists()]
    missing += [tool for tool in (COMPILER, "ld64.lld-14", "llvm-objdump-14", "llvm-nm-14", "cmake", "ninja")
                if shutil.which(tool) is None]
    if missing:
        print("not installed:", ", ".join(missing))
        sys.exit(SKIPPED)


def write_if_changed(path, text):
    """What is made of a file goes by its time."""
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def stand_in(build):
    """Where the stand-in for a Mac is, see stand_in.py."""
    return Path(build) / "macos"


def app_build(build, target):
    """The build of Thermopix.app for a processor."""
    return stand_in(build) / target


def objects(build, target):
    """The objects of the layer."""
    folder = app_build(build, target) / "src" / "platform" / "macos" / "CMakeFiles" / "thermopix_macos_application.dir"
    return sorted(folder.rglob("*.o"))


def commands(build, target):
    """How the build of Thermopix.app compiles each source."""
    entries = json.loads((app_build(build, target) / "compile_commands.json").read_text())
    return {Path(entry["file"]): shlex.split(entry["command"]) for entry in entries}


def call(*command, **options):
    """Runs the command to its end."""
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, **options)


def complaint(*command, **options):
    """What the command says; None when it is content."""
    result = call(*command, **options)
    return None if result.returncode == 0 else result.stdout + result.stderr


def output(*command, **options):
    """What the command prints; where it fails, the check does."""
    result = call(*command, **options)
    if result.returncode != 0:
        finish([result.stdout + result.stderr], "")
    return result.stdout


def compile_copy(command, source, copy, target):
    """Compiles a copy of a source as the build compiles the source; what the compiler says, or None."""
    command = command[next(i for i, part in enumerate(command) if Path(part).name == COMPILER):]
    command[command.index("-o") + 1] = target
    # Beside a source stand no headers of it that are not found from src/ too.
    return complaint(*(copy if part == str(source) else part for part in command))


def finish(problems, said):
    for problem in problems:
        print(problem)
    if problems:
        sys.exit(1)
    print(said)
