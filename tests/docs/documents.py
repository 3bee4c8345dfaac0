"""What the documents say, checked: every command of their fenced blocks is run, or stands in a table that says why not.

A document is Markdown. Its fenced blocks say what they hold: `sh` is commands, `console` is commands behind "$ " with
what they print, `ini`, `html`, `cpp` and `text` are no commands. Anything else is refused, so that no command escapes.
"""

import dataclasses
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import threading
import typing

COMMAND_BLOCKS = ("sh", "console")
OTHER_BLOCKS = ("ini", "html", "cpp", "text")
# A program that hangs, never a measure of speed.
PATIENCE = 300


@dataclasses.dataclass(frozen=True)
class NotRun:
    """A command that no test can run; `instead` is asked, with the tree and the command, what is wrong with it."""

    reason: str
    instead: typing.Callable


@dataclasses.dataclass(frozen=True)
class RunsOn:
    """A command that runs until it is told to end; `shows` is waited for."""

    shows: str


@dataclasses.dataclass
class Command:
    text: str
    place: str
    # None where the document shows none.
    output: typing.Optional[list] = None


@dataclasses.dataclass
class Block:
    language: str
    place: str
    lines: list


def blocks_of(text, name):
    """The fenced blocks of a document, and what is wrong with its fences."""
    blocks, problems, fence = [], [], None
    was_blank, is_in_list = True, False
    for number, line in enumerate(text.splitlines(), 1):
        place = f"{name}:{number}"
        opening = re.match(r"^ *(```+)\s*(\S*)\s*$", line)
        if fence is None and opening:
            fence = opening.group(1)
            language = opening.group(2)
            if language not in COMMAND_BLOCKS + OTHER_BLOCKS:
                problems.append(f"{place}: a block of {language or 'nothing'}: {', '.join(COMMAND_BLOCKS + OTHER_BLOCKS)} are known")
            blocks.append(Block(language, place, []))
        elif fence is not None and line.strip() == fence:
            fence = None
        elif fence is not None:
            blocks[-1].lines.append(line)
        else:
            if re.match(r"^\s*([-*]|\d+\.) ", line):
                is_in_list = True
            elif line.strip() and not line.startswith(" "):
                is_in_list = False
            if was_blank and line.startswith("    ") and line.strip() and not is_in_list:
                problems.append(f"{place}: a block by indentation; fence it, so that it is known what it holds")
            was_blank = not line.strip()
    if fence is not None:
        problems.append(f"{name}: a block without an end")
    return blocks, problems


def commands_of(block):
    """The commands of a block, in order; a backslash at the end of a line joins it with the next."""
    commands, pending = [], ""
    for line in block.lines:
        if block.language == "console" and not pending:
            if not line.startswith("$ "):
                if not commands:
                    raise ValueError(f"{block.place}: output before the first command")
                commands[-1].output.append(line)
                continue
            line = line[2:]
        pending += line.strip() if not pending else " " + line.strip()
        if pending.endswith("\\"):
            pending = pending[:-1].rstrip()
            continue
        text = re.sub(r"(^|\s+)# .*$", "", pending).strip()
        pending = ""
        if text:
            commands.append(Command(text, block.place, [] if block.language == "console" else None))
    return commands


class Tree:
    """A private copy of the source tree, of links, with the build's programs; a home, and a bus for each command."""

    def __init__(self, root, build, machine):
        self.root, self.build = pathlib.Path(root), pathlib.Path(build)
        self._folder = tempfile.TemporaryDirectory(prefix="thermopix-docs-")
        self.path = pathlib.Path(self._folder.name)
        self.clone = self.path / "clone"
        (self.clone / "build").mkdir(parents=True)
        for entry in self.root.iterdir():
            if entry.name not in ("build", ".git"):
                (self.clone / entry.name).symlink_to(entry)
        (self.clone / "build/release").symlink_to(self.build)
        home = self.path / "home"
        home.mkdir()
        (self.path / "runtime").mkdir(mode=0o700)
        self.environment = {
            "PATH": f"{self.build}:{os.environ.get('PATH', '/usr/bin:/bin')}",
            "LANG": "C.UTF-8",
            "HOME": str(home),
            "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_DATA_HOME": str(home / ".local/share"),
            "XDG_CACHE_HOME": str(home / ".cache"),
            "XDG_RUNTIME_DIR": str(self.path / "runtime"),
            "THERMOPIX_SYSFS_ROOT": str(machine),
            # How a sanitizer build was told to report.
            **{name: value for name, value in os.environ.items() if "SAN_" in name},
        }

    def close(self):
        self._folder.cleanup()

    def start(self, command):
        # The bus ends with its command; what the bus itself complains of is not the command's.
        return subprocess.Popen(
            ["dbus-run-session", "--", "bash", "-c", "exec 2>&1; set -o pipefail; " + command],
            cwd=self.clone, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL, text=True, start_new_session=True)

    def has_subcommand(self, name, option=""):
        usage = (self.root / "dev").read_text()
        return re.search(rf"^  {re.escape(name)}\b.*{re.escape(option)}", usage, re.MULTILINE) is not None


def matches(shown, printed):
    """Whether the printed lines are the shown ones; "..." alone stands for any lines, inside a line for any text."""
    pattern = "".join(
        r"(?:.*\n)*" if line.strip() == "..." else ".*".join(map(re.escape, line.split("..."))) + r"\n"
        for line in shown)
    return re.fullmatch(pattern, printed if printed.endswith("\n") or not printed else printed + "\n") is not None


def run_to_end(tree, command):
    process = tree.start(command.text)
    try:
        output, _ = process.communicate(timeout=PATIENCE)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        return [f"{command.place}: `{command.text}` does not end"]
    if process.returncode != 0:
        return [f"{command.place}: `{command.text}` ends with status {process.returncode}:\n{output}"]
    if command.output is not None and not matches(command.output, output):
        shown = "\n".join(command.output)
        return [f"{command.place}: `{command.text}` is shown to print\n{shown}\nand prints\n{output}"]
    return []


def run_until(tree, command, shows):
    process = tree.start(f"exec {command.text}")
    guard = threading.Timer(PATIENCE, lambda: os.killpg(process.pid, signal.SIGKILL))
    guard.start()
    printed = ""
    for line in process.stdout:
        printed += line
        if shows in line:
            os.killpg(process.pid, signal.SIGTERM)
            break
    process.communicate()
    guard.cancel()
    if shows not in printed:
        return [f"{command.place}: `{command.text}` does not show {shows!r} but\n{printed}"]
    return []


def problems_of_links(text, name, root):
    folder = (pathlib.Path(root) / name).parent
    for target in re.findall(r"\]\(([^)\s]+)\)", text):
        if not re.match(r"[a-z]+:", target) and not (folder / target.split("#")[0]).exists():
            yield f"{name}: the link to {target} leads nowhere"


def problems_of_mentions(text, name, tree, options):
    """What the prose names in passing: commands of ./dev, options of the program, files."""
    outside = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    for span in re.findall(r"`([^`\n]+)`", outside):
        words = span.split()
        if words[0] == "./dev" and len(words) > 1 and not tree.has_subcommand(words[1]):
            yield f"{name}: `{span}`: ./dev knows no {words[1]}"
        if words[0] == "thermopix":
            for option in re.findall(r"--[a-z-]+", span):
                if option not in options:
                    yield f"{name}: `{span}`: thermopix knows no {option}"
        is_path = re.fullmatch(r"(src|tests|docs|web|packaging|tools|cmake|bench)/[\w./-]*", span)
        if is_path and not (tree.root / span).exists():
            yield f"{name}: there is no {span}"


def problems_of(documents, tree, table, options):
    """Everything wrong with the documents, a dictionary of names and texts."""
    problems, used = [], set()
    for name, text in documents.items():
        blocks, wrong = blocks_of(text, name)
        problems += wrong
        problems += problems_of_links(text, name, tree.root)
        problems += problems_of_mentions(text, name, tree, options)
        for block in blocks:
            if block.language not in COMMAND_BLOCKS:
                continue
            for command in commands_of(block):
                entry = table.get(command.text)
                if entry is not None:
                    used.add(command.text)
                if isinstance(entry, NotRun):
                    wrong = entry.instead(tree, command.text)
                    problems += [f"{command.place}: `{command.text}`: {wrong}"] if wrong else []
                elif isinstance(entry, RunsOn):
                    if command.output is not None and entry.shows not in command.output:
                        problems.append(f"{command.place}: `{command.text}` is not shown to print {entry.shows!r}")
                    problems += run_until(tree, command, entry.shows)
                else:
                    problems += run_to_end(tree, command)
    return problems + [f"the table has `{text}`, which no document has" for text in table if text not in used]
