"""The table of facts: what is known of the system, and from where."""

import re

import gate

KINDS = ("class", "method", "function", "constant", "runtime")
MINIMUM_SYSTEM = (13, 0)
# Sources that are the thing's own need no second; what the compiler calls is known to the compiler alone.
OWN_SOURCES = {"sparkle", "libdispatch", "posix", "glibc", "llvm"}
LEGEND = re.compile(r"# (first|source) +(\S+)  +\S")
VERSION = re.compile(r"(<=)?\d+(\.\d+)*")


class Fact:
    def __init__(self, line, number):
        self.kind, self.owner, self.name, self.type, self.nullability, self.first, self.source = line.split("\t")
        self.number = number

    @property
    def key(self):
        return self.kind, self.owner, self.name

    @property
    def selector(self):
        return self.name[1:] if self.kind == "method" else ""

    def is_newer_than_minimum(self):
        return bool(re.fullmatch(r"[\d.]+", self.first)) and version(self.first) > MINIMUM_SYSTEM

    def type_on(self, target):
        """What the declarations say on that processor."""
        if self.kind == "method" and target == "x86_64":
            return self.type.replace("B", "c")
        values = dict(each.split(":") for each in self.type.split()) if self.type.startswith("arm64:") else {}
        return values.get(target, self.type)


def version(text):
    return tuple(int(part) for part in text.split("."))


def problems_of(fact, legend):
    """What is missing of what a fact must say of itself."""
    if fact.kind not in KINDS:
        yield f"{fact.kind} is no kind of fact"
    sources = fact.source.split()
    if not sources:
        yield f"{fact.name} names no source"
    yield from (f"{fact.name} names {name}, which is no source" for name in sources if ("source", name) not in legend)
    if len(sources) == 1 and not OWN_SOURCES.intersection(sources):
        yield f"{fact.name} names one source alone"
    if not fact.first:
        yield f"{fact.name} has neither a first version nor a reason why not"
    elif not VERSION.fullmatch(fact.first) and ("first", fact.first) not in legend:
        yield f"{fact.name}: {fact.first} is neither a version nor a reason"


def read(path=gate.FACTS):
    """The facts, and what is wrong with the table itself."""
    facts, problems, seen, legend = [], [], set(), set()
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if line.startswith("#"):
            explained = LEGEND.match(line)
            if explained:
                legend.add(explained.groups())
            continue
        if line.count("\t") != 6:
            problems.append(f"{path.name}:{number}: not seven columns")
            continue
        fact = Fact(line, number)
        problems += [f"{path.name}:{number}: {problem}" for problem in problems_of(fact, legend)]
        if fact.key in seen:
            problems.append(f"{path.name}:{number}: {fact.name} a second time")
        seen.add(fact.key)
        facts.append(fact)
    used = {("source", name) for fact in facts for name in fact.source.split()} | {("first", fact.first) for fact in facts}
    problems += [f"{path.name}: {name} is explained, but no fact says it" for kind, name in sorted(legend - used)]
    return facts, problems
