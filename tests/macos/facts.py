"""The table of facts: what is known of the system, and from where."""

from fnmatch import fnmatch

import gate

KINDS = ("class", "method", "function", "constant", "runtime")
MINIMUM_SYSTEM = (13, 0)


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
        return bool(self.first) and not self.first.startswith("<=") and version(self.first) > MINIMUM_SYSTEM

    def type_on(self, target):
        """What the declarations say on that processor."""
        if self.kind == "method" and target == "x86_64":
            return self.type.replace("B", "c")
        values = dict(each.split(":") for each in self.type.split()) if self.type.startswith("arm64:") else {}
        return values.get(target, self.type)


def version(text):
    return tuple(int(part) for part in text.split("."))


def read(path=gate.FACTS):
    """The facts, and what is wrong with the table itself."""
    facts, problems, seen = [], [], set()
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if line.startswith("#"):
            continue
        if line.count("\t") != 6:
            problems.append(f"{path.name}:{number}: not seven columns")
            continue
        fact = Fact(line, number)
        if fact.kind not in KINDS:
            problems.append(f"{path.name}:{number}: {fact.kind} is no kind of fact")
        if not fact.source.strip():
            problems.append(f"{path.name}:{number}: {fact.name} names no source")
        if fact.key in seen:
            problems.append(f"{path.name}:{number}: {fact.name} a second time")
        seen.add(fact.key)
        facts.append(fact)
    return facts, problems


def matches(name, pattern):
    return fnmatch(name, pattern) if "*" in pattern else name == pattern
