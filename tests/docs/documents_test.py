"""documents_test.py ROOT BUILD: the documents hold what they promise, and this check sees it when they do not."""

import pathlib
import re
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True

from documents import NotRun, RunsOn, Tree, problems_of  # noqa: E402
from not_run import TABLE  # noqa: E402

ROOT, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
MACHINE = ROOT / "tests/fixtures/sysfs/intel-laptop"


def help_text():
    return subprocess.run([BUILD / "thermopix", "--help"], check=True, capture_output=True, text=True).stdout


def options_of(text):
    return set(re.findall(r"--[a-z][a-z-]+", text))


OPTIONS = options_of(help_text())


class WithTree(unittest.TestCase):
    def setUp(self):
        self.tree = Tree(ROOT, BUILD, MACHINE)
        self.addCleanup(self.tree.close)


class Documents(WithTree):
    def test_every_command_is_run_or_said_why_not(self):
        names = ["README.md", "CONTRIBUTING.md", *sorted(str(path.relative_to(ROOT)) for path in ROOT.glob("docs/*.md"))]
        documents = {name: (ROOT / name).read_text() for name in names}
        self.assertEqual(problems_of(documents, self.tree, TABLE, OPTIONS), [])

    def test_commands_meet_a_home_of_their_own(self):
        self.assertEqual(problems_of({"planted.md": """
```console
$ ls -A ~
$ cd build/release && pwd -P
%s
$ test "$THERMOPIX_SYSFS_ROOT" = tests/fixtures || gdbus call --session --dest org.freedesktop.DBus --object-path / --method org.freedesktop.DBus.GetNameOwner org.freedesktop.DBus
('org.freedesktop.DBus',)
```
""" % BUILD}, self.tree, {}, OPTIONS), [])


class Manual(WithTree):
    """The manual pages, --help and the README say the same."""

    readme = (ROOT / "README.md").read_text()
    page1 = (BUILD / "packaging/thermopix.1").read_text().replace("\\-", "-")
    page5 = (BUILD / "packaging/thermopix.5").read_text().replace("\\(dq", '"')

    def test_options_are_those_of_help(self):
        public = {option for option in OPTIONS if not option.startswith("--uitest-")}
        self.assertGreaterEqual(len(public), 7)
        self.assertEqual(options_of(self.page1), public)
        self.assertEqual(public - options_of(self.readme), set())

    def test_environment_is_that_of_help(self):
        section = help_text().split("Environment:")[1].split("\n\n")[0]
        variables = re.findall(r"^  ([A-Z_]+)", section, re.MULTILINE)
        self.assertIn("THERMOPIX_SYSFS_ROOT", variables)
        for variable in variables:
            self.assertIn(variable, self.page1)

    def test_settings_and_defaults_are_those_that_the_program_writes(self):
        from documents import Command, run_until
        self.assertEqual(run_until(self.tree, Command("thermopix --terminal", "here"), "degrees"), [])
        written = (self.tree.path / "home/.config/thermopix/preferences.v1").read_text()
        fields = dict(re.findall(r'"(\w+)":("\w+"|\w+)', written))
        self.assertEqual(len(fields), 11)
        documented = dict(re.findall(r'^\.BR (\w+) " \((.*)\)"$', self.page5.split(".SH desktop.conf")[0], re.MULTILINE))
        self.assertEqual(documented, fields)

    def test_desktop_choices_are_those_of_the_readme(self):
        documented = re.findall(r'^\.BR (\w+) " \((\w+)\)"$', self.page5.split(".SH desktop.conf")[1], re.MULTILINE)
        shown = re.findall(r"^(\w+)=(\w+)$", self.readme.split("```ini")[1].split("```")[0], re.MULTILINE)
        self.assertGreaterEqual(len(shown), 3)
        self.assertEqual(documented, shown)


class Planted(WithTree):
    """Mistakes, each of which must be found."""

    def check(self, text, table=None):
        return problems_of({"planted.md": text}, self.tree, table or {}, OPTIONS)

    # The document, a part of what is found, and the table of what is not run.
    MISTAKES = (
        ("```sh\ntrue\nthermopix --sensors | grep -q 'no such line'\n```\n", "ends with status 1"),
        ("```sh\nthermopics --sensors\n```\n", "thermopics: command not found"),
        ("```sh\n./dev frobnicate\n```\n", "ends with status 2"),
        ("```console\n$ echo 57 degrees\n56 degrees\n```\n", "is shown to print\n56 degrees"),
        ("```console\n$ printf 'a\\nb\\n'\na\n```\n", "and prints\na\nb"),
        ("```console\n$ true\na\n```\n", "is shown to print"),
        ("```sh\necho 57 degrees\n```\n", "does not show '58 degrees'", {"echo 57 degrees": RunsOn("58 degrees")}),
        ("```console\n$ thermopix --terminal\n58 degrees\n```\n", "is not shown to print '57 degrees",
         {"thermopix --terminal": RunsOn("57 degrees Celsius, comfy")}),
        ("```sh\n./dev test\n```\n", "there is a reason",
         {"./dev test": NotRun("", lambda tree, command: "there is a reason")}),
        ("```sh\ntrue\n```\n", "which no document has", {"./dev test": NotRun("", lambda *_: None)}),
        ("```bash\ntrue\n```\n", "a block of bash"),
        ("```\ntrue\n```\n", "a block of nothing"),
        ("Text:\n\n    rm -rf /tmp\n", "a block by indentation"),
        ("```sh\ntrue\n", "a block without an end"),
        ("[there](docs/nowhere.md)", "leads nowhere"),
        ("`./dev frobnicate`", "./dev knows no frobnicate"),
        ("`thermopix --frobnicate`", "thermopix knows no --frobnicate"),
        ("`src/frobnicate/`", "there is no src/frobnicate/"),
    )

    def test_each_mistake_is_found_alone(self):
        for text, found, *table in self.MISTAKES:
            with self.subTest(text):
                problems = self.check(text, *table)
                self.assertEqual(len(problems), 1, problems)
                self.assertIn(found, problems[0])

    def test_a_good_document_has_none(self):
        self.assertEqual(self.check("""
Text, `./dev test`, `thermopix --sensors`, [a link](README.md), `tests/fakes/`.

```sh
thermopix --version   # with a comment
# a comment alone
thermopix \\
    --acceptance-selftest | tail -n 1
```

```console
$ echo one; echo two; echo three 3
one
...
three ...
$ true
```

```ini
[Desktop]
```
"""), [])

    def test_every_question_of_the_table_can_be_answered_no(self):
        wrong = {
            "knows_dev_command": "./dev frobnicate",
            "knows_fuzzer": "./dev fuzz frobnicate 300",
            "knows_label": "./dev test -L frobnicate",
            "knows_preset": "cmake --preset frobnicate",
            "missing": "anything",
        }
        import not_run
        asked = {entry.instead.__name__ for entry in TABLE.values() if isinstance(entry, NotRun)}
        self.assertEqual(asked - set(wrong), set())
        for name, command in wrong.items():
            ask = not_run.has_files("frobnicate") if name == "missing" else getattr(not_run, name)
            self.assertIn("frobnicate", ask(self.tree, command) or "")
        self.assertIn("frobnicate", not_run.knows_dev_command(self.tree, "./dev test --frobnicate"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
