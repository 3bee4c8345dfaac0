"""check_declarations.py BUILD [DECLARATIONS [FACTS]]: every declaration is a fact of the table and agrees with it, on
both processors; no fact of the table is without its declaration."""

import sys
from pathlib import Path

import gate

gate.skip_without_tools()

import declared
import facts

sdk = gate.stand_in(sys.argv[1]) / "sdk"
declarations = Path(sys.argv[2]) if len(sys.argv) > 2 else gate.DECLARATIONS
table, problems = facts.read(Path(sys.argv[3]) if len(sys.argv) > 3 else gate.FACTS)
known = {fact.key: fact for fact in table if fact.kind != "runtime" and not fact.owner.startswith("Thermopix")}


def compare(fact, row, target):
    where = f"{target}: {fact.owner} {fact.name}".replace(":  ", ": ")
    if row.type != fact.type_on(target):
        yield f"{where}: declared as {row.type}, in fact {fact.type_on(target)}"
    if row.nullability != fact.nullability:
        yield f"{where}: declared nullability {row.nullability}, in fact {fact.nullability}"
    wanted = fact.first if fact.is_newer_than_minimum() else ""
    if row.first != wanted:
        yield f"{where}: declared available from {row.first or 'the beginning'}, in fact from {wanted or 'the beginning'}"


for target in gate.TARGETS:
    rows = declared.read(sdk, target, declarations)
    if not rows:
        problems.append(f"{target}: nothing is declared")
    for key, row in rows.items():
        if key not in known:
            problems.append(f"{target}: {' '.join(key)}: declared, but no fact of the table")
        else:
            problems += compare(known[key], row, target)
    problems += [f"{target}: {' '.join(key)}: a fact that nothing declares" for key in known if key not in rows]

gate.finish(problems, f"{len(known)} facts and their declarations agree")
