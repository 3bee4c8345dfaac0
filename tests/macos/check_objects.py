"""check_objects.py BUILD [OBJECTS]: the layer's objects, of the build or in OBJECTS/TARGET, use no selector, class or function that the table of facts
does not have, and the table has none that they do not use."""

import re
import subprocess
import sys
from pathlib import Path

import facts
import gate

gate.skip_without_tools()
table, problems = facts.read()
selectors = {fact.selector for fact in table}
classes = {fact.name for fact in table if fact.kind == "class"}
symbols = [fact.name for fact in table if fact.kind in ("function", "constant", "runtime")]

NAME = re.compile(r"^[0-9a-f]+ +(\S.*)$")
INTERFACE = re.compile(r"^@interface (\w+).*?^@end", re.M | re.S)
METHOD = re.compile(r"^[-+] \([^;{]*", re.M)
PROPERTY = re.compile(r"^@property[^;]*?(\w+);", re.M)
# Asked for by the language: for `alloc` and for array literals it calls functions of the runtime where it can.
OF_THE_LANGUAGE = {"alloc", "arrayWithObjects:count:"}

OWN_CLASS = re.compile(r"_OBJC_(?:META)?CLASS_\$_(Thermopix\w+)")
SYSTEM_CLASS = re.compile(r"_OBJC_(?:META)?CLASS_\$_(\w+)")


def selector(declaration):
    """Of `- (type)name` or `- (type)name:(type)argument other:...`, types removed."""
    words, depth = "", 0
    for character in declaration[1:]:
        depth += {"(": 1, ")": -1}.get(character, 0)
        words += character if depth == 0 and character != ")" else ""
    parts = re.findall(r"(\w+):", words)
    return "".join(part + ":" for part in parts) if parts else words.strip()


def own_selectors():
    """What the layer's own classes declare; a method that is neither declared nor a fact is called by nobody."""
    found = set()
    for source in gate.LAYER.rglob("*"):
        if source.suffix not in (".h", ".mm"):
            continue
        for interface in INTERFACE.finditer(source.read_text()):
            found |= {selector(each) for each in METHOD.findall(interface.group())}
            for name in PROPERTY.findall(interface.group()):
                found |= {name, f"set{name[0].upper()}{name[1:]}:"}
    return found


def is_no_selector(name):
    """Names of instance variables, attributes of properties and what the compiler makes stand in the same section."""
    return name.startswith(("_", ".cxx_")) or "," in name


def named_in(file):
    output = subprocess.run(["llvm-objdump-14", "--macho", "--section=__TEXT,__objc_methname", str(file)],
                            capture_output=True, text=True, check=True).stdout
    found = (NAME.match(line) for line in output.splitlines())
    return {match.group(1) for match in found if match and not is_no_selector(match.group(1))}


def undefined_in(file):
    output = subprocess.run(["llvm-nm-14", "-u", str(file)], capture_output=True, text=True, check=True).stdout
    return {line.split()[-1] for line in output.splitlines() if line.strip()}


def check_symbol(file, symbol):
    system_class = SYSTEM_CLASS.match(symbol)
    if OWN_CLASS.match(symbol):
        return []
    if system_class:
        return [] if system_class.group(1) in classes else [f"{file.name}: class {system_class.group(1)}: no fact"]
    name = symbol.removeprefix("_")
    known = any(facts.matches(name, each) for each in symbols)
    return [] if known else [f"{file.name}: {name}: no fact"]


own = own_selectors()
used_selectors, used_symbols = set(), set()
for target in gate.TARGETS:
    files = sorted((Path(sys.argv[2]) / target).rglob("*.o")) if len(sys.argv) > 2 else gate.objects(sys.argv[1], target)
    if not files:
        problems.append(f"{target}: no object")
    for file in files:
        for name in sorted(named_in(file)):
            if name not in selectors and name not in own:
                problems.append(f"{target}: {file.name}: selector {name}: no fact, and no class of ours declares it")
            used_selectors.add(name)
        for symbol in sorted(undefined_in(file)):
            problems += [f"{target}: {problem}" for problem in check_symbol(file, symbol)]
            used_symbols.add(symbol.removeprefix("_"))

for fact in table:
    if fact.kind == "method" and fact.selector not in used_selectors | OF_THE_LANGUAGE:
        problems.append(f"{gate.FACTS.name}:{fact.number}: {fact.owner} {fact.name}: nothing uses it")
    if fact.kind == "function" and fact.name not in used_symbols:
        problems.append(f"{gate.FACTS.name}:{fact.number}: {fact.name}: nothing uses it")

gate.finish(problems, f"{len(used_selectors)} selectors and {len(used_symbols)} symbols, all of them facts")
