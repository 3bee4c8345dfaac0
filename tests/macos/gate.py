"""Compiles for macOS where there is no Mac: clang's Apple targets, libc++, and declarations of our own."""

import os
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
# The C library's headers of this machine know another processor than the targets do; these serve both.
C_HEADERS = Path("/usr/aarch64-linux-gnu/include")
THIRD_PARTY = ["fmt", "nlohmann", "png.h", "pngconf.h", "pnglibconf.h", "utf8proc.h"]

WARNINGS = """-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wunused -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough
    -Wunguarded-availability -Wnullable-to-nonnull-conversion -Warc-retain-cycles -Wundeclared-selector
    -Wstrict-selector-match -Wobjc-messaging-id -Werror""".split()

# What most of the core includes; read once for each target.
COMMON_HEADERS = """algorithm array chrono functional map memory optional string string_view tuple variant vector
    fmt/format.h""".split()

SKIPPED = 77


def skip_without_tools():
    """Ends the process, as CTest understands it, where the compiler or the libraries are not installed."""
    needed = [LIBCXX / "__config_site", C_HEADERS / "stdio.h"]
    missing = [str(path) for path in needed if not path.exists()]
    missing += [tool for tool in (COMPILER, "llvm-objdump-14", "llvm-nm-14") if shutil.which(tool) is None]
    if missing:
        print("not installed:", ", ".join(missing))
        sys.exit(SKIPPED)


def write_if_changed(path, text):
    """Precompiled headers go by the time of what they were made of."""
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def prepare(build):
    """Puts what the compiler must find besides our own headers into the build's folder; returns that folder."""
    folder = Path(build) / "macos"
    libcxx = folder / "libcxx"
    libcxx.mkdir(parents=True, exist_ok=True)
    shutil.copy2(HERE / "libcxx" / "xlocale.h", libcxx)
    # Debian switches off libc++'s knowledge of which macOS brought what.
    site = (LIBCXX / "__config_site").read_text().splitlines()
    kept = [line for line in site if "_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS" not in line]
    write_if_changed(libcxx / "__config_site", "\n".join(kept) + "\n")
    third_party = folder / "third-party"
    third_party.mkdir(exist_ok=True)
    places = [Path("/usr/include"), Path("/usr/include/libpng16"), *Path("/usr/include").glob("*-linux-gnu")]
    for name in THIRD_PARTY:
        link = third_party / name
        if not link.exists():
            link.unlink(missing_ok=True)
            link.symlink_to(next(place / name for place in places if (place / name).exists()))
    return folder


def flags(folder, target, declarations=DECLARATIONS):
    return [
        "-target", TARGETS[target], "-std=c++20", "-U__nonnull", "-U__nullable", "-D_GNU_SOURCE",
        "-nostdinc++", "-nostdlibinc", f"-I{SOURCES}", f"-I{declarations}",
        "-isystem", str(folder / "libcxx"), "-isystem", str(LIBCXX), "-isystem", str(C_HEADERS),
        "-isystem", str(folder / "third-party"), *WARNINGS,
    ]


def language(source):
    return ["-x", "objective-c++", "-fobjc-arc", "-fblocks"] if source.suffix == ".mm" else ["-x", "c++"]


def run(command):
    """What the compiler says; None when it is content."""
    result = subprocess.run(command, capture_output=True, text=True)
    return None if result.returncode == 0 else result.stderr


def common_headers(folder, target):
    return folder / target / "common.pch"


def precompile(folder, target):
    output = common_headers(folder, target)
    output.parent.mkdir(exist_ok=True)
    header = output.with_suffix(".h")
    header.write_text("".join(f"#include <{name}>\n" for name in COMMON_HEADERS))
    return run([COMPILER, "-x", "c++-header", *flags(folder, target), "-o", str(output), str(header)])


def check_source(source, folder, target, declarations=DECLARATIONS):
    """Compiles without an output."""
    common = []
    if source.suffix == ".cpp" and common_headers(folder, target).exists():
        common = ["-include-pch", str(common_headers(folder, target))]
    return run([COMPILER, *common, *language(source), *flags(folder, target, declarations), "-fsyntax-only",
                str(source)])


def compile_source(source, folder, target, output):
    """Compiles into an object for the target."""
    return run([COMPILER, *language(source), *flags(folder, target), "-c", "-O1", "-o", str(output), str(source)])


def layer_sources():
    return sorted(path for path in LAYER.rglob("*") if path.suffix in (".cpp", ".mm"))


def room_sources(room):
    """The sources of a room of the core; `.` are those that stand in no room."""
    if room == ".":
        return sorted(SOURCES.glob("*.cpp"))
    return sorted((SOURCES / room).rglob("*.cpp"))


def objects(folder, target):
    return folder / target / "objects"


def finish(problems, said):
    for problem in problems:
        print(problem)
    if problems:
        sys.exit(1)
    print(said)
