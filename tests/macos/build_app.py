"""build_app.py BUILD TARGET: configures and builds Thermopix.app for one of Apple's processors with the preset that a
Mac builds it with, on a stand-in for a Mac. The build for Intel is one that updates itself."""

import json
import os
import sys
from pathlib import Path

import gate

build, target = Path(sys.argv[1]).resolve(), sys.argv[2]
gate.skip_without_tools()
folder, output = gate.stand_in(build), gate.app_build(build, target)


def preset(name):
    """The cache variables of a preset of CMakePresets.json with those of what it inherits."""
    presets = {each["name"]: each for each in json.loads((gate.ROOT / "CMakePresets.json").read_text())["configurePresets"]}
    chosen = presets[name]
    inherited = preset(chosen["inherits"]) if "inherits" in chosen else {}
    return inherited | chosen.get("cacheVariables", {})


variables = preset("macos") | {
    "CMAKE_TOOLCHAIN_FILE": gate.HERE / "toolchain.cmake",
    "THERMOPIX_STAND_IN": folder,
    "CMAKE_OSX_ARCHITECTURES": target,
    # Here, a warning is an error; and what the optimiser makes of it is not looked at.
    "THERMOPIX_WERROR": "ON",
    "CMAKE_CXX_FLAGS_RELEASE": "-O0",
    "CMAKE_OBJCXX_FLAGS_RELEASE": "-O0",
}
if target == "x86_64":
    variables |= {"THERMOPIX_PRECOMPILE": "ON",
                  "THERMOPIX_SPARKLE": folder / "frameworks" / "Sparkle.framework",
                  "THERMOPIX_FEED_URL": "https://updates.invalid/appcast.xml?a=1&b=2", "THERMOPIX_FEED_KEY": "key"}

# Not from the environment: CMake asks the compiler of its places with the launcher before it, and a cache swallows that.
launchers = {name: os.environ[name] for name in ("CMAKE_CXX_COMPILER_LAUNCHER", "CMAKE_OBJCXX_COMPILER_LAUNCHER")
             if name in os.environ}
variables |= launchers
environment = {name: value for name, value in os.environ.items() if name not in launchers} | {
    "PATH": f"{folder / 'tools'}:{os.environ['PATH']}",
    "PKG_CONFIG_LIBDIR": str(folder / "homebrew" / "lib" / "pkgconfig"),
}


def forget_programs_older_than_the_libraries():
    """Ninja does not know that a linker looks into the SDK."""
    newest = max(library.stat().st_mtime for library in folder.glob("**/*.tbd") if output not in library.parents)
    for program in (output / "Thermopix.app" / "Contents" / "MacOS" / "Thermopix", output / "make_icons"):
        if program.exists() and program.stat().st_mtime < newest:
            program.unlink()


forget_programs_older_than_the_libraries()
gate.output("cmake", "-S", gate.ROOT, "-B", output, "-G", "Ninja",
            *(f"-D{name}={value}" for name, value in variables.items()), env=environment)
jobs = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL") or min(2, os.cpu_count() or 1)
said = gate.output("ninja", "-C", output, "-j", jobs, env=environment)
gate.finish([], said.splitlines()[-1] if said else "")
