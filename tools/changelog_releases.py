#!/usr/bin/env python3
"""What CHANGELOG.md says of releases, in the words of others: changelog_releases.py CHANGELOG.md [FORM [VERSION]]

FORM is "appstream" (the default): <release> elements for the metainfo, newest first; "debian": a Debian changelog;
"date" or "notes", of VERSION: its day, or its list.

A release begins with a heading "## 1.2.3 (2026-11-21)"; its list items are what it brings. Other headings of that
level, such as "## Unreleased", are left out.
"""
import datetime
import re
import sys
import textwrap
from dataclasses import dataclass, field
from email.utils import format_datetime
from xml.sax.saxutils import escape

HEADING = re.compile(r"^## \[?(?P<version>\d+\.\d+\.\d+)\]?\s*[(-]\s*(?P<date>\d{4}-\d{2}-\d{2})\)?")
MAINTAINER = "The Thermopix authors <maintainers@thermopix.invalid>"


@dataclass
class Release:
    version: str
    date: str
    items: list = field(default_factory=list)


def releases(text):
    """Newest first, as they stand in the changelog."""
    found, current = [], None
    for line in text.splitlines():
        heading = HEADING.match(line)
        if heading:
            current = Release(heading["version"], heading["date"])
            found.append(current)
        elif line.startswith("## "):
            current = None
        elif current and line.startswith("- "):
            current.items.append(line[2:].strip())
        elif current and current.items and line.startswith("  ") and line.strip():
            current.items[-1] += " " + line.strip()
    return found


def appstream(release):
    lines = [f'    <release version="{release.version}" date="{release.date}">']
    if release.items:
        lines += ["      <description>", "        <ul>"]
        lines += [f"          <li>{escape(item.replace('`', ''))}</li>" for item in release.items]
        lines += ["        </ul>", "      </description>"]
    return "\n".join([*lines, "    </release>", ""])


def debian(release):
    day = datetime.datetime.fromisoformat(release.date).replace(tzinfo=datetime.timezone.utc)
    lines = [f"thermopix ({release.version}) unstable; urgency=medium", ""]
    for item in release.items or ["New release."]:
        lines += textwrap.wrap(item, 78, initial_indent="  * ", subsequent_indent="    ", break_on_hyphens=False)
    return "\n".join([*lines, "", f" -- {MAINTAINER}  {format_datetime(day)}", ""])


def notes(release):
    return "".join(f"- {item}\n" for item in release.items)


def main(arguments):
    if not 1 <= len(arguments) <= 3:
        sys.exit("usage: changelog_releases.py CHANGELOG.md [appstream|debian|date|notes [VERSION]]")
    path = arguments[0]
    form = arguments[1] if len(arguments) > 1 else "appstream"
    version = arguments[2] if len(arguments) > 2 else None
    with open(path, encoding="utf-8") as file:
        found = releases(file.read())
    if not found:
        sys.exit(f"{path}: no release heading such as '## 1.0.0 (2026-01-31)'")
    if form == "appstream":
        sys.stdout.write("".join(map(appstream, found)))
        return
    if form == "debian":
        sys.stdout.write("\n".join(map(debian, found)))
        return
    named = [release for release in found if release.version == version]
    if not named:
        sys.exit(f"{path}: no entry for {version}")
    if form == "date":
        print(named[0].date)
    elif form == "notes":
        sys.stdout.write(notes(named[0]))
    else:
        sys.exit(f"no such form: {form}")


if __name__ == "__main__":
    main(sys.argv[1:])
