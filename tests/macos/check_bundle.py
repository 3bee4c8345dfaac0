"""check_bundle.py BUILD [TARGET APP]: Thermopix.app, of both builds or this one, has what a Mac looks for in it, and
its program is of the right kind and finds its libraries."""

import plistlib
import re
import struct
import sys
from pathlib import Path

import gate

gate.skip_without_tools()
PICTURES = {b"icp4", b"ic11", b"icp5", b"ic12", b"ic07", b"ic13", b"ic08", b"ic14", b"ic09", b"ic10"}
PROCESSORS = {"arm64": "ARM64", "x86_64": "X86_64"}
MINIMUM_SYSTEM = "13.0"


def first(pattern, path):
    return re.search(pattern, path.read_text(), re.M).group(1)


def check_dictionary(dictionary, updates):
    wanted = {
        "CFBundleIdentifier": first(r' identifier = "(.*)"', gate.SOURCES / "environment" / "AppInfo.h"),
        "CFBundleShortVersionString": first(r"^project\(thermopix VERSION ([\d.]+)", gate.ROOT / "CMakeLists.txt"),
        "CFBundleName": first(r' name = "(.*)"', gate.SOURCES / "environment" / "AppInfo.h"),
        "CFBundlePackageType": "APPL", "LSMinimumSystemVersion": MINIMUM_SYSTEM, "LSUIElement": True,
        "NSHighResolutionCapable": True, "NSPrincipalClass": "NSApplication",
    }
    yield from (f"{key} is {dictionary.get(key)!r}, not {value!r}" for key, value in wanted.items()
                if dictionary.get(key) != value)
    yield from (f"{key} is {value!r}" for key, value in dictionary.items() if value == "" or "@" in str(value))
    if not re.fullmatch(r"\d+", dictionary.get("CFBundleVersion", "")):
        yield "CFBundleVersion is no number"
    for key in ("SUFeedURL", "SUPublicEDKey", "SUEnableAutomaticChecks"):
        if (key in dictionary) != updates:
            yield f"{key} is {'missing' if updates else 'there, without the update framework'}"


def check_icon(icon):
    data, kinds, at = icon.read_bytes(), set(), 8
    while at < len(data):
        kind, size = struct.unpack(">4sI", data[at:at + 8])
        kinds.add(kind)
        at += size
    if data[:4] != b"icns" or kinds != PICTURES:
        yield f"{icon.name} lacks {sorted(PICTURES - kinds)}"


def check_program(program, contents, target):
    headers = gate.output("llvm-objdump-14", "--macho", "--private-headers", program)
    for what, pattern in (("made for " + target, PROCESSORS[target] + r"\s.*EXECUTE"), ("for a Mac", "platform macos"),
                          ("for the oldest system", f"minos {MINIMUM_SYSTEM}")):
        if not re.search(pattern, headers):
            yield f"the program is not {what}"
    places = re.findall(r"path (\S+) \(offset", headers)
    for library in re.findall(r"^\t(\S+) \(comp", gate.output("llvm-objdump-14", "--macho", "--dylibs-used", program), re.M):
        if library.startswith("@rpath/"):
            if "@executable_path/../Frameworks" not in places:
                yield f"{library} is looked for nowhere"
            if not (contents / "Frameworks" / library.split("/")[1]).is_dir():
                yield f"{library} is not in the bundle"
        elif not library.startswith(("/System/Library/Frameworks/", "/usr/lib/", "/opt/homebrew/lib/")):
            yield f"{library} is no place on a Mac"


def check(app, target):
    contents = app / "Contents"
    dictionary = plistlib.loads((contents / "Info.plist").read_bytes())
    yield from check_dictionary(dictionary, updates=target == "x86_64")
    yield from check_icon(contents / "Resources" / (dictionary["CFBundleIconFile"] + ".icns"))
    yield from check_program(contents / "MacOS" / dictionary["CFBundleExecutable"], contents, target)
    if not (contents / "_CodeSignature" / "CodeResources").is_file():
        yield "not signed"


apps = {sys.argv[2]: Path(sys.argv[3])} if len(sys.argv) > 2 else {
    target: gate.app_build(sys.argv[1], target) / "Thermopix.app" for target in gate.TARGETS}
gate.finish([f"{target}: {problem}" for target, app in apps.items() for problem in check(app, target)],
            f"{len(apps)} bundles, whole")
