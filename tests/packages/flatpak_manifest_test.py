#!/usr/bin/env python3
"""The check of the Flatpak's manifest passes the project's own and fails on each thing that can be wrong with one:
flatpak_manifest_test.py SOURCES"""
import copy
import os
import re
import sys
import unittest

import yaml

SOURCES = os.path.abspath(sys.argv.pop(1))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from flatpak_manifest import PERMISSIONS, findings  # noqa: E402


def read(*path):
    with open(os.path.join(SOURCES, *path), encoding="utf-8") as file:
        return file.read()


IDENTIFIER = re.search(r'identifier = "([^"]+)"', read("src", "environment", "AppInfo.h"))[1]
MANIFEST = os.path.join(SOURCES, "packaging", "flatpak", IDENTIFIER + ".yml")
with open(MANIFEST, encoding="utf-8") as manifest_file:
    GOOD = yaml.safe_load(manifest_file)


def found(change=None, path=MANIFEST):
    manifest = copy.deepcopy(GOOD)
    if change:
        change(manifest)
    return list(findings(manifest, path, IDENTIFIER))


class FlatpakManifestTest(unittest.TestCase):
    def assert_found(self, finding, change):
        self.assertEqual(found(change), [finding])

    def test_the_projects_own_is_good(self):
        self.assertEqual(found(), [])

    def test_no_permission_is_taken_unexplained(self):
        for permission in ("--share=network", "--filesystem=host", "--device=all", "--talk-name=org.freedesktop.*"):
            self.assert_found(f"the permission {permission} is not among those that are explained",
                              lambda manifest, one=permission: manifest["finish-args"].append(one))

    def test_no_permission_is_explained_and_not_taken(self):
        self.assert_found("the permission --share=ipc is explained and not taken",
                          lambda manifest: manifest["finish-args"].remove("--share=ipc"))

    def test_packagers_are_told_of_every_permission(self):
        document = read("docs", "packaging.md")
        self.assertEqual([permission for permission in PERMISSIONS if f"`{permission}`" not in document], [])

    def test_a_part_that_is_missing_is_named(self):
        for key in ("id", "runtime-version", "finish-args", "modules", "command"):
            self.assertIn(f"{key} is missing", found(lambda manifest, one=key: manifest.pop(one)))

    def test_a_key_that_means_nothing_is_named(self):
        self.assert_found("unknown key finish_args", lambda manifest: manifest.update(finish_args=[]))
        self.assert_found("fmt: unknown key config_opts", lambda manifest: manifest["modules"][0].update(config_opts=[]))

    def test_identifier_and_file_name_are_the_projects(self):
        self.assert_found("the identifier is org.example.Other, the project's io.github.thermopix.Thermopix",
                          lambda manifest: manifest.update(id="org.example.Other"))
        folder = os.path.dirname(MANIFEST)
        self.assertEqual(found(path=os.path.join(folder, "other.yml")),
                         ["the file is not named after the identifier"])

    def test_the_sdk_belongs_to_the_runtime(self):
        self.assert_found("org.gnome.Sdk is not the Sdk of org.kde.Platform",
                          lambda manifest: manifest.update(sdk="org.gnome.Sdk"))

    def test_a_version_is_a_text_and_no_number(self):
        self.assert_found("runtime-version is no text", lambda manifest: manifest.update({"runtime-version": 6.9}))

    def test_all_that_is_fetched_is_pinned_and_fetched_safely(self):
        source = GOOD["modules"][0]["sources"][0]
        self.assertIn("fmt: a source without sha256",
                      found(lambda manifest: manifest["modules"][0]["sources"][0].pop("sha256")))
        self.assert_found(f"fmt: not pinned by a SHA-256: {source['url']}",
                          lambda manifest: manifest["modules"][0]["sources"][0].update(sha256="1234"))
        plain = source["url"].replace("https:", "http:")
        self.assert_found(f"fmt: fetched without https: {plain}",
                          lambda manifest: manifest["modules"][0]["sources"][0].update(url=plain))
        self.assert_found("fmt: a source of the type git",
                          lambda manifest: manifest["modules"][0]["sources"][0].update(type="git"))

    def test_a_file_that_is_laid_over_exists(self):
        self.assert_found("libdbusmenu-glib: there is no missing.build",
                          lambda manifest: manifest["modules"][3]["sources"][1].update(path="missing.build"))

    def test_it_ends_with_the_program(self):
        self.assert_found("the last module is not thermopix", lambda manifest: manifest["modules"].reverse())


if __name__ == "__main__":
    unittest.main()
