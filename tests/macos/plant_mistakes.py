"""plant_mistakes.py BUILD: plants the mistakes of mistakes.tsv, and those below that are no text, one at a time, and
fails unless each is found, by the check that is there for it and for the reason that it was planted for."""

import os
import re
import shutil
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import NamedTuple

import gate

gate.skip_without_tools()
build = sys.argv[1]
commands = {target: gate.commands(build, target) for target in gate.TARGETS}
PROGRAM = "Thermopix.app/Contents/MacOS/Thermopix"


class Mistake(NamedTuple):
    """A row of the table; `old` and `new` may be of a link command too, and `new` what does the planting."""
    by: str
    name: str
    file: str
    old: str
    new: object
    reason: str


def with_mistake(mistake, text, where):
    if mistake.old not in text:
        raise SystemExit(f"{where}: does not hold what the mistake replaces: {mistake.old}")
    return text.replace(mistake.old, mistake.new, 1)


def spoil(mistake, original, copy):
    copy.parent.mkdir(parents=True, exist_ok=True)
    copy.write_text(with_mistake(mistake, original.read_text(), original))
    return copy


def spoilt_folder(mistake, folder, scratch):
    shutil.copytree(folder, scratch / folder.name)
    spoil(mistake, gate.ROOT / mistake.file, scratch / folder.name / (gate.ROOT / mistake.file).relative_to(folder))
    return scratch / folder.name


def check(name, *arguments):
    return gate.complaint(sys.executable, gate.HERE / f"check_{name}.py", *arguments)


def compile_spoilt(mistake, scratch, target, output):
    source = gate.ROOT / mistake.file
    copy = spoil(mistake, source, scratch / target / source.name)
    return gate.compile_copy(commands[target][source], source, copy, output)


def link_command(target):
    """The command by which the build links the program, without what the shell does around it."""
    said = gate.output("ninja", "-C", gate.app_build(build, target), "-t", "commands", PROGRAM)
    return said.splitlines()[-1].removeprefix(": && ").removesuffix(" && :")


def relink(mistake, target, program):
    """Links the program by a command with the mistake in it, to another place."""
    command = with_mistake(mistake, link_command(target), "the command that links the program")
    command = command.replace(f"-o {PROGRAM}", f"-o {program}")
    return gate.complaint("sh", "-c", command, cwd=gate.app_build(build, target))


def compiler(mistake, scratch):
    return (compile_spoilt(mistake, scratch, "arm64", scratch / "spoilt.o")
            or compile_spoilt(mistake, scratch, "x86_64", scratch / "spoilt.o"))


def linker(mistake, scratch):
    """The program is linked with one source more, which has the mistake in it."""
    extra = scratch / "extra.o"
    said = compile_spoilt(mistake, scratch, "arm64", extra)
    return said or relink(mistake._replace(old=" -o ", new=f" {extra} -o "), "arm64", scratch / "Thermopix")


def link(mistake, scratch):
    return relink(mistake, mistake.file, scratch / "Thermopix")


def objects(mistake, scratch):
    for target in gate.TARGETS:
        place = scratch / "objects" / target
        place.mkdir(parents=True)
        for file in gate.objects(build, target):
            shutil.copy2(file, place)
        said = compile_spoilt(mistake, scratch, target, place / (Path(mistake.file).name + ".o"))
        if said:
            return f"the compiler refuses it already: {said}"
    return check("objects", build, scratch / "objects")


def declarations(mistake, scratch):
    return check("declarations", build, spoilt_folder(mistake, gate.DECLARATIONS, scratch))


def facts(mistake, scratch):
    return check("declarations", build, gate.DECLARATIONS, spoil(mistake, gate.FACTS, scratch / "facts.tsv"))


def sources(mistake, scratch):
    return check("sources", spoilt_folder(mistake, gate.LAYER, scratch))


def bundle(mistake, scratch):
    app = scratch / "Thermopix.app"
    shutil.copytree(gate.app_build(build, mistake.file) / app.name, app, symlinks=True)
    if mistake.old:
        spoil(mistake, app / "Contents" / "Info.plist", app / "Contents" / "Info.plist")
    else:
        mistake.new(app / "Contents")
    return check("bundle", build, mistake.file, app)


def picture(mistake, scratch):
    """The tool that packs the icon is asked to pack another icon set."""
    iconset = scratch / "Thermopix.iconset"
    shutil.copytree(gate.app_build(build, "arm64") / "packaging" / "macos" / iconset.name, iconset)
    mistake.new(iconset)
    return gate.complaint(gate.stand_in(build) / "tools" / "iconutil", "--convert", "icns", "--output",
                          scratch / "icns", iconset)


def without_rpath(contents):
    flag = Mistake("", "", "", "-Wl,-rpath,@executable_path/../Frameworks", "", "")
    said = relink(flag, "x86_64", contents / "MacOS" / "Thermopix")
    if said:
        raise SystemExit(said)


def with_the_other_processors_program(contents):
    shutil.copy2(gate.app_build(build, "x86_64") / PROGRAM, contents / "MacOS")


def written():
    for line in (gate.HERE / "mistakes.tsv").read_text().splitlines():
        if not line.startswith("#"):
            yield Mistake(*(cell.replace("\\n", "\n").replace("\\t", "\t") for cell in line.split("\t")))


def without(target, name, argument):
    """The link line names all that the objects use."""
    return Mistake("link", f"without {name}", target, argument, "", "undefined symbol")


mistakes = [
    *written(),
    *(without("x86_64", f"the framework {name}",
              f"-Xlinker -framework -Xlinker {name}" if name == "Sparkle" else f"-framework {name}")
      for name in re.findall(r"-framework (?:-Xlinker )?(\w+)", link_command("x86_64"))),
    *(without("arm64", f"the library {name}", f"{gate.stand_in(build)}/homebrew/lib/lib{name}.tbd")
      for name in ("fmt", "png16", "utf8proc")),
    without("arm64", "the layer", "src/platform/macos/libthermopix_macos_application.a"),
    Mistake("bundle", "no update framework", "x86_64", "", lambda contents: shutil.rmtree(contents / "Frameworks"),
            "is not in the bundle"),
    Mistake("bundle", "nowhere to look for it", "x86_64", "", without_rpath, "is looked for nowhere"),
    Mistake("bundle", "the other processor's program", "arm64", "", with_the_other_processors_program,
            "not made for arm64"),
    Mistake("bundle", "not signed", "arm64", "", lambda contents: shutil.rmtree(contents / "_CodeSignature"),
            "not signed"),
    Mistake("picture", "no picture for the largest icon", "", "",
            lambda iconset: (iconset / "icon_512x512@2x.png").unlink(), "missing"),
    Mistake("picture", "picture of another size", "", "",
            lambda iconset: shutil.copy2(iconset / "icon_16x16.png", iconset / "icon_32x32.png"),
            "is no picture of 32 by 32"),
]
FINDERS = {each.__name__: each
           for each in (compiler, linker, link, objects, declarations, facts, sources, bundle, picture)}


def what_is_wrong(mistake):
    with tempfile.TemporaryDirectory() as scratch:
        said = FINDERS[mistake.by](mistake, Path(scratch))
    if said is None:
        return f"not found: {mistake.name}"
    return None if mistake.reason in said else f"found for another reason: {mistake.name}: {said}"


with ThreadPoolExecutor(min(2, os.cpu_count() or 1)) as pool:
    problems = [each for each in pool.map(what_is_wrong, mistakes) if each]
gate.finish(problems, f"{len(mistakes)} planted mistakes, each found")
