"""stand_in.py BUILD: writes a stand-in for a Mac to build on: an SDK whose headers are our declarations and whose
libraries are lists of names, a Homebrew prefix, and tools that Debian does not have. Nothing in it is Apple's."""

import re
import sys
from pathlib import Path

import gate

gate.skip_without_tools()

import declared
import facts

ALL_TARGETS = "x86_64-macos, arm64-macos"
FRAMEWORKS = ["AppKit", "CoreFoundation", "Foundation", "QuartzCore", "ServiceManagement", "Sparkle"]
OF_THE_SYSTEM = ["dispatch", "os", "sys"]

# Homebrew's libraries: the headers, the library here, and how a build finds them there.
LIBRARIES = {
    "fmt": (["fmt"], "libfmt.so.9", "libfmt.9.dylib"),
    "nlohmann_json": (["nlohmann"], None, None),
    "png16": (["png.h", "pngconf.h", "pnglibconf.h"], "libpng16.so.16", "libpng16.16.dylib"),
    "utf8proc": (["utf8proc.h"], "libutf8proc.so.2", "libutf8proc.3.dylib"),
}
SYSTEM_PLACES = [Path("/usr/include"), Path("/usr/include/libpng16"), *Path("/usr/include").glob("*-linux-gnu")]


def link(place, target):
    place.parent.mkdir(parents=True, exist_ok=True)
    if not (place.is_symlink() and place.readlink() == target):
        place.unlink(missing_ok=True)
        place.symlink_to(target)


def exported(library):
    """The names that a library of this machine gives to others, as a Mac's object files write them."""
    said = gate.output("llvm-nm-14", "-D", "--defined-only", "--no-sort", library)
    names = {line.split()[-1].split("@")[0] for line in said.splitlines() if line.strip()}
    # The other standard library marks in some names that texts are of its newer kind.
    return {"_" + name.replace("B5cxx11", "") for name in names} | {"_" + name for name in names}


def header_of_this_machine(name):
    return next(place / name for place in SYSTEM_PLACES if (place / name).exists())


def library_of_this_machine(name):
    places = [*Path("/usr/lib").glob("*-linux-gnu"), Path("/usr/lib/llvm-14/lib")]
    return next(place / name for place in places if (place / name).exists())


def write_library(place, install_name, symbols=(), classes=(), reexported=()):
    """A library of which there are only the names, in the form that Apple's SDKs have."""
    def named(names):
        return ", ".join(f"'{name}'" for name in sorted(names))
    text = ["--- !tapi-tbd", "tbd-version: 4", f"targets: [ {ALL_TARGETS} ]", f"install-name: '{install_name}'"]
    if reexported:
        text += ["reexported-libraries:", f"  - targets: [ {ALL_TARGETS} ]", f"    libraries: [ {named(reexported)} ]"]
    text += ["exports:", f"  - targets: [ {ALL_TARGETS} ]", f"    symbols: [ {named(symbols)} ]"]
    if classes:
        text.append(f"    objc-classes: [ {named(classes)} ]")
    gate.write_if_changed(place, "\n".join([*text, "...", ""]))


def standard_c():
    """The functions of standard C, as libc++'s headers for them name them."""
    headers = (gate.LIBCXX / name for name in ("cctype", "clocale", "cmath", "csetjmp", "csignal", "cstdio", "cstdlib",
                                               "cstring", "ctime", "cwchar", "cwctype"))
    return {name for header in headers for name in re.findall(r"^using ::(\w+)", header.read_text(), re.M)}


def write_headers(sdk):
    include = sdk / "usr" / "include"
    for header in (*gate.C_HEADERS.iterdir(), *(gate.C_HEADERS / "sys").iterdir()):
        if header.name != "sys":
            link(include / header.relative_to(gate.C_HEADERS), header)
    for folder in ("dispatch", "objc", "os"):
        link(include / folder, gate.DECLARATIONS / folder)
    link(include / "sys" / "sysctl.h", gate.DECLARATIONS / "sys" / "sysctl.h")
    link(include / "xlocale.h", gate.HERE / "libcxx" / "xlocale.h")
    # A Mac has zlib of its own.
    for header in ("zlib.h", "zconf.h"):
        link(include / header, header_of_this_machine(header))
    # libc++; Debian switches off its knowledge of which macOS brought what.
    library = include / "c++" / "v1"
    for header in gate.LIBCXX.iterdir():
        if header.name != "__config_site":
            link(library / header.name, header)
    kept = [line for line in (gate.LIBCXX / "__config_site").read_text().splitlines()
            if "_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS" not in line]
    gate.write_if_changed(library / "__config_site", "\n".join(kept) + "\n")


def write_frameworks(sdk, folder):
    """A framework gives what its declarations declare, and no more: what uses another must link that."""
    rows = declared.read(sdk, "arm64")
    table, _ = facts.read()
    runtime = {fact.name for fact in table if fact.kind == "runtime"}
    for name in FRAMEWORKS:
        frameworks = folder / "frameworks" if name == "Sparkle" else sdk / "System" / "Library" / "Frameworks"
        install = "@rpath" if name == "Sparkle" else "/System/Library/Frameworks"
        place = frameworks / f"{name}.framework"
        link(place / "Headers", gate.DECLARATIONS / name)
        here = {(kind, each) for (kind, _, each), row in rows.items() if row.library == name}
        write_library(place / f"{name}.tbd", f"{install}/{name}.framework/Versions/A/{name}",
                      symbols={"_" + each for kind, each in here if kind != "class"},
                      classes={each for kind, each in here if kind == "class"},
                      reexported=["/usr/lib/libobjc.A.dylib"] if name == "Foundation" else [])
    usr = sdk / "usr" / "lib"
    write_library(usr / "libobjc.A.tbd", "/usr/lib/libobjc.A.dylib",
                  {"_" + name for name in runtime if re.match("_?objc_|__objc_", name)})
    link(usr / "libobjc.tbd", Path("libobjc.A.tbd"))
    # Of the C library, too, only what is known to be there, as this machine's has more: the table's, and what is
    # standard C.
    of_the_system = {name for (_, _, name), row in rows.items() if row.library in OF_THE_SYSTEM}
    of_the_table = {name for name in runtime if "objc" not in name}
    write_library(usr / "libSystem.tbd", "/usr/lib/libSystem.B.dylib",
                  {"_" + name for name in of_the_system | of_the_table | standard_c()} | {"dyld_stub_binder"})
    write_library(usr / "libc++.tbd", "/usr/lib/libc++.1.dylib",
                  exported(gate.LIBCXX_LIBRARIES / "libc++.so.1") | exported(gate.LIBCXX_LIBRARIES / "libc++abi.so.1"))
    write_library(usr / "libz.tbd", "/usr/lib/libz.1.dylib", exported(library_of_this_machine("libz.so.1")))


def write_homebrew(prefix):
    for headers, library, installed in LIBRARIES.values():
        for header in headers:
            link(prefix / "include" / header, header_of_this_machine(header))
        if library:
            name = installed.split(".")[0]
            write_library(prefix / "lib" / f"{name}.tbd", f"/opt/homebrew/lib/{installed}",
                          exported(library_of_this_machine(library)))
    gate.write_if_changed(prefix / "lib" / "pkgconfig" / "libutf8proc.pc",
                          f"Name: libutf8proc\nDescription: Unicode\nVersion: 2.9.0\nLibs: -L{prefix}/lib -lutf8proc\n"
                          f"Cflags: -I{prefix}/include\n")
    for package, target, lines in (
            ("fmt", "fmt::fmt", f"IMPORTED_LOCATION {prefix}/lib/libfmt.tbd\n"),
            ("nlohmann_json", "nlohmann_json::nlohmann_json", "")):
        kind = "SHARED" if lines else "INTERFACE"
        gate.write_if_changed(prefix / "lib" / "cmake" / package / f"{package}Config.cmake",
                              f"add_library({target} {kind} IMPORTED)\nset_target_properties({target} PROPERTIES\n"
                              f"    {lines}    INTERFACE_INCLUDE_DIRECTORIES {prefix}/include)\n")


def write_tools(tools, native):
    """What a Mac has and Debian has not, or under another name."""
    for name in ("codesign", "ditto", "iconutil", "sw_vers"):
        link(tools / name, gate.HERE / "tools" / name)
    link(tools / "install_name_tool", Path("/usr/bin/llvm-install-name-tool-14"))
    # The programs of the build that run during it are made for the Mac; their twins of this machine run instead.
    gate.write_if_changed(tools / "run", f'#!/bin/sh\nprogram=$(basename "$1")\nshift\nexec "{native}/$program" "$@"\n')
    (tools / "run").chmod(0o755)


build = Path(sys.argv[1]).resolve()
folder = gate.stand_in(build)
write_headers(folder / "sdk")
write_frameworks(folder / "sdk", folder)
write_homebrew(folder / "homebrew")
write_tools(folder / "tools", build)
gate.finish([], "written")
