"""The table of measurements: what, figure, beside what, ratio, budget, verdict."""

from dataclasses import dataclass


@dataclass
class Row:
    what: str
    figure: str
    beside: str = ""
    ratio: str = ""
    budget: str = ""
    verdict: str = ""


COLUMNS = Row("what", "figure", "beside", "ratio", "budget", "verdict")


def cells(row):
    return [row.what, row.figure, row.beside, row.ratio, row.budget, row.verdict]


def number(value, unit=""):
    if isinstance(value, float) and abs(value) < 100:
        text = f"{value:.2f}".rstrip("0").rstrip(".")
    else:
        text = f"{round(value):,}"
    return f"{text} {unit}".strip()


class Report:
    def __init__(self):
        self.sections = []

    def section(self, title):
        self.sections.append((title, []))

    def add(self, what, value, unit="", beside=None, beside_name="", most=None, most_ratio=None, note=""):
        """A figure; `beside` is the same figure of something else. `most` bounds the figure, `most_ratio` the ratio."""
        row = Row(what, number(value, unit))
        kept = []
        budgets = []
        if note:
            row.figure += f" ({note})"
        if beside is not None:
            row.beside = f"{number(beside, unit)} {beside_name}".strip()
            row.ratio = f"{value / beside:.2f}" if beside else "-"
        if most is not None:
            budgets.append("none" if most == 0 else f"at most {number(most, unit)}")
            kept.append(value <= most)
        if most_ratio is not None:
            budgets.append("the same" if most_ratio == 1 else f"at most {number(most_ratio)} times")
            kept.append(value <= most_ratio * beside)
        row.budget = ", ".join(budgets)
        row.verdict = "" if not kept else "kept" if all(kept) else "BROKEN"
        self.sections[-1][1].append(row)

    def rows(self):
        return [row for _, rows in self.sections for row in rows]

    def broken(self):
        return [row for row in self.rows() if row.verdict == "BROKEN"]

    def text(self):
        widths = [max(len(cells(row)[i]) for row in [COLUMNS, *self.rows()]) for i in range(6)]

        def line(row):
            return "  ".join(text.ljust(width) for text, width in zip(cells(row), widths)).rstrip()

        lines = [line(COLUMNS)]
        for title, rows in self.sections:
            lines += ["", f"-- {title}"] + [line(row) for row in rows]
        return "\n".join(lines)

    def markdown(self):
        lines = []
        for title, rows in self.sections:
            lines += ["", f"## {title}", "", "| " + " | ".join(cells(COLUMNS)) + " |", "|---|---|---|---|---|---|"]
            lines += ["| " + " | ".join(cells(row)) + " |" for row in rows]
        return "\n".join(lines) + "\n"
