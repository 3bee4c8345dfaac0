#!/usr/bin/env python3
"""Prints the releases of CHANGELOG.md as AppStream <release> elements, newest first.

A release begins with a heading "## 1.2.3 (2026-11-21)"; its list items become the description. "## Unreleased"
is left out unless it is all there is, and is then shown under the version and date of the newest entry's day.
"""
import re
import sys
from xml.sax.saxutils import escape

HEADING = re.compile(r"^## \[?(?P<version>\d+\.\d+\.\d+)\]?\s*[(-]\s*(?P<date>\d{4}-\d{2}-\d{2})\)?")


def releases(text):
    found, items = [], None
    for line in text.splitlines():
        heading = HEADING.match(line)
        if heading:
            items = []
            found.append((heading["version"], heading["date"], items))
        elif line.startswith("## "):
            items = None
        elif items is not None and line.startswith("- "):
            items.append(line[2:].strip())
        elif items and line.startswith("  ") and line.strip():
            items[-1] += " " + line.strip()
    return found


def main(path):
    with open(path, encoding="utf-8") as file:
        found = releases(file.read())
    if not found:
        sys.exit(f"{path}: no release heading such as '## 1.0.0 (2026-01-31)'")
    for version, date, items in found:
        print(f'    <release version="{version}" date="{date}">')
        if items:
            print("      <description>\n        <ul>")
            for item in items:
                print(f"          <li>{escape(item.replace('`', ''))}</li>")
            print("        </ul>\n      </description>")
        print("    </release>")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: changelog_releases.py CHANGELOG.md")
    main(sys.argv[1])
