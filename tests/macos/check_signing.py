"""check_signing.py BUILD: sign-and-notarize refuses a bundle that only runs where it was built, and does with an installed
one what Apple asks for, in that order. The tools that it calls only write down how they were called."""

import os
import shutil
import sys
import tempfile
from pathlib import Path

import gate

gate.skip_without_tools()
SCRIPT = gate.ROOT / "packaging" / "macos" / "sign-and-notarize"
TOOLS = ("codesign", "ditto", "shasum", "spctl", "xcrun")
WANTED = [
    "codesign libpng16.16.dylib runtime", "codesign Autoupdate runtime", "codesign Sparkle.framework runtime",
    "codesign Thermopix.app runtime", "codesign --verify", "ditto", "xcrun notarytool", "xcrun stapler", "ditto", "spctl",
    "shasum",
]
problems = []


def run(scratch, app):
    """Status, what was said, and how the tools were called."""
    tools, log = scratch / "tools", scratch / "log"
    tools.mkdir(exist_ok=True)
    for name in TOOLS:
        (tools / name).write_text(f'#!/bin/sh\necho {name} "$@" >>"{log}"\n')
        (tools / name).chmod(0o755)
    if not (tools / "otool").exists():
        (tools / "otool").symlink_to("/usr/bin/llvm-otool-14")
    log.write_text("")
    environment = os.environ | {"PATH": f"{tools}:{os.environ['PATH']}", "THERMOPIX_SIGNING_IDENTITY": "somebody",
                                "THERMOPIX_NOTARY_PROFILE": "profile"}
    result = gate.call(SCRIPT, app, scratch / "Thermopix.zip", env=environment)
    return result.returncode, result.stdout + result.stderr, log.read_text().splitlines()


def short(call):
    words = call.split()
    if words[:2] == ["codesign", "--force"]:
        hardened = "runtime" if "--options runtime" in call else "not hardened"
        return f"codesign {Path(words[-1]).name} {hardened}"
    return " ".join(words[:2]) if words[0] in ("codesign", "xcrun") else words[0]


with tempfile.TemporaryDirectory() as folder:
    scratch = Path(folder)
    app = scratch / "Thermopix.app"
    shutil.copytree(gate.app_build(sys.argv[1], "x86_64") / "Thermopix.app", app, symlinks=True)

    status, said, calls = run(scratch, app)
    if status == 0 or "/opt/homebrew/lib/libfmt" not in said or calls:
        problems.append(f"a bundle that was only built is signed: {status} {said} {calls}")

    program = app / "Contents" / "MacOS" / "Thermopix"
    libraries = gate.output("llvm-otool-14", "-L", program)
    for library in {line.split()[0] for line in libraries.splitlines()[1:] if "/opt/homebrew" in line}:
        gate.output("llvm-install-name-tool-14", "-change", library, f"@rpath/{Path(library).name}", program)
    frameworks = app / "Contents" / "Frameworks"
    (frameworks / "libpng16.16.dylib").write_bytes(b"")
    current = frameworks / "Sparkle.framework" / "Versions" / "Current"
    current.mkdir(parents=True)
    (current / "Autoupdate").write_bytes(b"")
    status, said, calls = run(scratch, app)
    if status != 0 or [short(call) for call in calls] != WANTED:
        problems.append(f"an installed bundle: {status} {said} {[short(call) for call in calls]}")

gate.finish(problems, "refused what was only built, signed what was installed from the inside out")
