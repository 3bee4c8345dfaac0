"""check_objects.py BUILD [OBJECTS]: the layer's objects, of the build or in OBJECTS/TARGET, use no selector, class or
function that the table of facts does not have, and the table has none that they do not use."""

import re
import sys
from fnmatch import fnmatch
from pathlib import Path

import facts
import gate

gate.skip_without_tools()
table, problems = facts.read()
selectors = {fact.selector for fact in table}
classes = {fact.name for fact in table if fact.kind == "class"}
symbols = [fact.name for fact in table if fact.kind in ("function", "constant", "runtime")]

NAME = re.compile(r"^[0-9a-f]+ +(\S.*)$", re.M)
INTERFACE = re.compile(r"^@interface (\w+).*?^@end", re.M | re.S)
METHOD = re.compile(r"^[-+] ([^;{]*)", re.M)
PROPERTY = re.compile(r"^@property[^;]*?(\w+);", re.M)
CLASS = re.compile(r"_OBJC_(?:META)?CLASS_\$_(\w+)")
# Asked for by the language: for these and for array literals it calls functions of the runtime where it can.
OF_THE_LANGUAGE = {"alloc", "init", "arrayWithObjects:count:"}


def selector(declaration):
    """Of `(type)name` or `(type)name:(type)argument other:...`."""
    types = 1
    while types:
        declaration, types = re.subn(r"\([^()]*\)", "", declaration)
    return "".join(re.findall(r"\w+:", declaration)) or declaration.strip()


def own_selectors():
    """What the layer's own classes declare; a method that is neither declared nor a fact is called by nobody."""
    text = "\n".join(path.read_text() for path in gate.LAYER.rglob("*") if path.suffix in (".h", ".mm"))
    for interface in INTERFACE.finditer(text):
        yield from map(selector, METHOD.findall(interface.group()))
        for name in PROPERTY.findall(interface.group()):
            yield from (name, f"set{name[0].upper()}{name[1:]}:")


def is_no_selector(name):
    """Names of instance variables, attributes of properties and what the compiler makes stand in the same section."""
    return name.startswith(("_", ".cxx_")) or "," in name


def named_in(file):
    names = NAME.findall(gate.output("llvm-objdump-14", "--macho", "--section=__TEXT,__objc_methname", file))
    return sorted({name for name in names if not is_no_selector(name)})


def undefined_in(file):
    return sorted(line.split()[-1] for line in gate.output("llvm-nm-14", "-u", file).splitlines() if line.strip())


def what_is_no_fact(symbol):
    of_class = CLASS.match(symbol)
    if of_class:
        name = of_class.group(1)
        return None if name.startswith("Thermopix") or name in classes else f"class {name}"
    name = symbol.removeprefix("_")
    return None if any(fnmatch(name, each) for each in symbols) else name


own = set(own_selectors())
used_selectors, used_symbols = set(), set()
for target in gate.TARGETS:
    files = sorted((Path(sys.argv[2]) / target).rglob("*.o")) if len(sys.argv) > 2 else gate.objects(sys.argv[1], target)
    if not files:
        problems.append(f"{target}: no object")
    for file in files:
        for name in named_in(file):
            if name not in selectors and name not in own:
                problems.append(f"{target}: {file.name}: selector {name}: no fact, and no class of ours declares it")
            used_selectors.add(name)
        for symbol in undefined_in(file):
            unknown = what_is_no_fact(symbol)
            if unknown:
                problems.append(f"{target}: {file.name}: {unknown}: no fact")
            used_symbols.add(symbol.removeprefix("_"))

for fact in table:
    if fact.kind == "method" and fact.selector not in used_selectors | OF_THE_LANGUAGE:
        problems.append(f"{gate.FACTS.name}:{fact.number}: {fact.owner} {fact.name}: nothing uses it")
    if fact.kind == "function" and fact.name not in used_symbols:
        problems.append(f"{gate.FACTS.name}:{fact.number}: {fact.name}: nothing uses it")

gate.finish(problems, f"{len(used_selectors)} selectors and {len(used_symbols)} symbols, all of them facts")
