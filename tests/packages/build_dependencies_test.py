#!/usr/bin/env python3
"""The packages' build dependencies are those of packaging/debian-packages.txt: build_dependencies_test.py SOURCES"""
import os
import re
import sys
import unittest

SOURCES = os.path.abspath(sys.argv.pop(1))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(SOURCES, "tools"))

from sbom import build_packages  # noqa: E402

# Every Debian that builds packages has it.
ALWAYS_THERE = {"g++"}
# What builds packages rather than the program.
OF_THE_PACKAGING = {"debhelper-compat"}


def read(*path):
    with open(os.path.join(SOURCES, *path), encoding="utf-8") as file:
        return file.read()


class BuildDependenciesTest(unittest.TestCase):
    def setUp(self):
        self.listed = {name for name, _ in build_packages(read("packaging", "debian-packages.txt"))}
        field = re.search(r"^Build-Depends:\n((?: .*\n)+)", read("packaging", "debian", "control"), re.MULTILINE)[1]
        self.declared = {re.match(r"[a-z0-9.+-]+", line.strip())[0] for line in field.splitlines()}

    def test_the_packages_declare_what_is_listed(self):
        self.assertEqual(self.declared - OF_THE_PACKAGING, self.listed - ALWAYS_THERE)

    def test_the_exceptions_are_none_of_old(self):
        self.assertLessEqual(ALWAYS_THERE, self.listed)
        self.assertLessEqual(OF_THE_PACKAGING, self.declared)


if __name__ == "__main__":
    unittest.main()
