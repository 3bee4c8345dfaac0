#!/usr/bin/env python3
"""Releases of a small repository with this project's own tools: release_test.py SOURCES"""
import hashlib
import json
import os
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest

SOURCES = os.path.abspath(sys.argv.pop(1))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(SOURCES, "tools"))

import changelog_releases  # noqa: E402
import sbom  # noqa: E402

CHANGELOG = """# Changes

## 1.2.0 (2026-03-04)

- Warmer colours, which take
  two lines to tell.
- `--sensors` says more & sooner.

## 1.1.0 (2026-01-31)

- The first.
"""


class Repository:
    """A committed project, one version ahead of its only tag."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="thermopix-release-")
        for tool in ("release.py", "sbom.py", "changelog_releases.py"):
            self.make_folder("tools")
            shutil.copy(os.path.join(SOURCES, "tools", tool), os.path.join(self.folder, "tools", tool))
        self.write("CMakeLists.txt", "project(thermopix VERSION 1.2.0 LANGUAGES CXX)\n")
        self.write("CHANGELOG.md", CHANGELOG)
        self.write("packaging/debian-packages.txt",
                   "[build]\nlibheat-dev   # warmth\nmkheat  # makes it\n\n[test]\nlibtest-dev\n")
        self.write(".gitignore", "build/\n")
        # In the packages' place: what the script of the packages leaves behind.
        self.write("dev", "#!/bin/sh\n[ \"$*\" = 'package --test' ] || exit 1\nmkdir -p build/package/staging\n"
                          "echo one >build/package/thermopix_1.2.0.deb\necho log >build/package/staging/build.log\n", 0o755)
        # The package database knows one of the two packages.
        self.write("bin/dpkg-query", "#!/bin/sh\necho 'libheat-dev installed 3.1+b2 amd64'\n", 0o755)
        self.git("init", "--quiet", "--initial-branch=main")
        self.commit("All of it")
        self.git("tag", "v1.1.0")

    def make_folder(self, name):
        os.makedirs(os.path.join(self.folder, name), exist_ok=True)

    def write(self, name, text, mode=0o644):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(path, mode)

    def git(self, *arguments):
        return subprocess.run(["git", "-C", self.folder, "-c", "user.name=A", "-c", "user.email=a@example.org",
                               *arguments], check=True, stdout=subprocess.PIPE, text=True,
                              env={**os.environ, "GIT_CONFIG_GLOBAL": os.devnull}).stdout

    def commit(self, message):
        self.git("add", "--all")
        self.git("commit", "--quiet", "--message", message)

    def release(self, *arguments):
        environment = {"PATH": f"{self.folder}/bin:{os.environ['PATH']}", "HOME": self.folder,
                       "GIT_CONFIG_COUNT": "2", "GIT_CONFIG_KEY_0": "user.name", "GIT_CONFIG_VALUE_0": "A",
                       "GIT_CONFIG_KEY_1": "user.email", "GIT_CONFIG_VALUE_1": "a@example.org"}
        return subprocess.run([sys.executable, os.path.join(self.folder, "tools", "release.py"), *arguments],
                              cwd=self.folder, env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True, check=False)

    def made(self):
        folder = os.path.join(self.folder, "build", "release-files", "1.2.0")
        return sorted(os.listdir(folder)) if os.path.isdir(folder) else []

    def read(self, name):
        with open(os.path.join(self.folder, "build", "release-files", "1.2.0", name), "rb") as file:
            return file.read()


class ReleaseTest(unittest.TestCase):
    def setUp(self):
        self.repository = Repository()
        self.addCleanup(shutil.rmtree, self.repository.folder)

    def assert_refused(self, *reasons):
        for arguments in ((), ("--go",)):
            done = self.repository.release(*arguments)
            self.assertEqual(done.returncode, 1, done)
            self.assertEqual(done.stderr, "".join(f"release: {reason}\n" for reason in reasons))
            self.assertEqual(done.stdout, "")
        self.assertEqual(self.repository.made(), [])

    def make(self, *parts):
        done = self.repository.release("--go", *parts)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    # --- what is refused ---

    def test_a_tree_with_changes_or_new_files_is_refused(self):
        for name in ("CMakeLists.txt", "left-over"):
            self.repository.write(name, "project(thermopix VERSION 1.2.0 LANGUAGES CXX)\n# more\n")
            self.assert_refused("the tree has changes that are not committed")
            self.repository.git("stash", "--include-untracked")

    def test_a_version_that_the_changelog_does_not_begin_with_is_refused(self):
        for version in ("1.3.0", "1.1.0"):
            self.repository.write("CMakeLists.txt", f"project(thermopix VERSION {version} LANGUAGES CXX)\n")
            self.repository.commit("Another version")
            reasons = [f"CHANGELOG.md does not begin with {version} but with 1.2.0 (2026-03-04)"]
            if version == "1.1.0":
                reasons.append("the tag v1.1.0 exists")
            self.assert_refused(*reasons)

    def test_a_changelog_that_does_not_tell_of_the_release_first_is_refused(self):
        for changelog, reason in (
                ("# Changes\n", "does not begin with 1.2.0"),
                (CHANGELOG.replace("## 1.2.0", "## Unreleased\n\n- More.\n\n## 1.2.0"),
                 "does not begin with 1.2.0 but with Unreleased"),
                ("# Changes\n\n## 1.2.0 (2026-03-04)\n", "says nothing of 1.2.0")):
            self.repository.write("CHANGELOG.md", changelog)
            self.repository.commit("Another changelog")
            self.assert_refused(f"CHANGELOG.md {reason}")

    def test_a_version_whose_tag_exists_is_refused(self):
        self.repository.git("tag", "v1.2.0")
        self.assert_refused("the tag v1.2.0 exists")

    def test_all_reasons_are_said_at_once(self):
        self.repository.git("tag", "v1.2.0")
        self.repository.write("CHANGELOG.md", "# Changes\n")
        self.assert_refused("the tree has changes that are not committed", "CHANGELOG.md does not begin with 1.2.0",
                            "the tag v1.2.0 exists")

    def test_a_part_that_does_not_exist_is_refused(self):
        done = self.repository.release("--go", "source", "flowers")
        self.assertEqual(done.returncode, 2)
        self.assertIn("no such part: flowers", done.stderr)
        self.assertEqual(self.repository.made(), [])

    # --- what is made ---

    def test_without_go_it_says_what_it_would_do_and_does_nothing(self):
        done = self.repository.release()
        self.assertEqual(done.returncode, 0, done.stderr)
        promised = [line.split(":")[0] for line in done.stdout.splitlines()]
        self.assertEqual(promised[:-1], [f"would make {part}" for part in
                                         ("source", "packages", "notes", "sbom", "checksums", "tag")])
        self.assertEqual(self.repository.made(), [])
        self.assertEqual(self.repository.git("tag", "--list"), "v1.1.0\n")

    def test_a_release_is_whole(self):
        self.make()
        self.assertEqual(self.repository.made(), ["SHA256SUMS", "release-notes.md", "thermopix-1.2.0.spdx.json",
                                                  "thermopix-1.2.0.tar.gz", "thermopix_1.2.0.deb"])
        self.assertEqual(self.repository.git("cat-file", "-t", "v1.2.0"), "tag\n")
        self.assertEqual(self.repository.git("rev-parse", "v1.2.0^{commit}"), self.repository.git("rev-parse", "HEAD"))
        self.assertEqual(self.repository.release("--go").returncode, 1)

    def test_the_source_is_what_is_committed(self):
        self.repository.write("build/left-over", "")
        self.make("source")
        with tarfile.open(os.path.join(self.repository.folder,
                                       "build/release-files/1.2.0/thermopix-1.2.0.tar.gz")) as archive:
            files = sorted(member.name for member in archive.getmembers() if member.isfile())
        committed = self.repository.git("ls-files").splitlines()
        self.assertEqual(files, sorted(f"thermopix-1.2.0/{name}" for name in committed))

    def test_the_same_commit_gives_the_same_bytes(self):
        parts = ("source", "notes", "sbom", "checksums")
        self.make(*parts)
        first = {name: self.repository.read(name) for name in self.repository.made()}
        copy = tempfile.mkdtemp(prefix="thermopix-release-")
        self.addCleanup(shutil.rmtree, copy)
        subprocess.run(["git", "clone", "--quiet", self.repository.folder, f"{copy}/elsewhere"], check=True)
        self.repository.folder, original = f"{copy}/elsewhere", self.repository.folder
        self.make(*parts)
        second = {name: self.repository.read(name) for name in self.repository.made()}
        self.repository.folder = original
        self.assertEqual(first, second)

    def test_the_checksums_are_those_of_every_file(self):
        self.make("source", "notes", "checksums")
        self.assertEqual(self.repository.read("SHA256SUMS").decode(), "".join(
            f"{hashlib.sha256(self.repository.read(name)).hexdigest()}  {name}\n"
            for name in ("release-notes.md", "thermopix-1.2.0.tar.gz")))

    def test_the_notes_are_the_newest_release_of_the_changelog(self):
        self.make("notes")
        self.assertEqual(self.repository.read("release-notes.md").decode(),
                         "- Warmer colours, which take two lines to tell.\n- `--sensors` says more & sooner.\n")

    def test_the_materials_are_the_packages_that_it_is_built_from(self):
        self.make("source", "sbom")
        document = json.loads(self.repository.read("thermopix-1.2.0.spdx.json"))
        self.assertEqual(document["spdxVersion"], "SPDX-2.3")
        own, library, tool = document["packages"]
        self.assertEqual((own["name"], own["versionInfo"], own["licenseDeclared"]), ("thermopix", "1.2.0", "MIT"))
        self.assertEqual(own["checksums"][0]["checksumValue"],
                         hashlib.sha256(self.repository.read("thermopix-1.2.0.tar.gz")).hexdigest())
        self.assertEqual((library["name"], library["versionInfo"], library["summary"]),
                         ("libheat-dev", "3.1+b2", "warmth"))
        self.assertEqual(library["externalRefs"][0]["referenceLocator"],
                         "pkg:deb/debian/libheat-dev@3.1%2Bb2?arch=amd64")
        self.assertEqual(tool["name"], "mkheat")
        self.assertNotIn("versionInfo", tool)
        self.assertIn("not installed", tool["comment"])
        kinds = {row["spdxElementId"]: row["relationshipType"] for row in document["relationships"]}
        self.assertEqual(kinds, {"SPDXRef-DOCUMENT": "DESCRIBES", library["SPDXID"]: "BUILD_DEPENDENCY_OF",
                                 tool["SPDXID"]: "BUILD_TOOL_OF"})


class LicenceTest(unittest.TestCase):
    def test_the_licence_of_all_files_is_found(self):
        text = "Format: x\n\nFiles: debian/*\nLicense: GPL-3\n\nFiles: *\nCopyright: me\nLicense: Expat\n\nLicense: Expat\n"
        self.assertEqual(sbom.debian_licence(text), "Expat")
        self.assertIsNone(sbom.debian_licence("This is free software.\n"))

    def test_a_licence_is_said_in_spdx_or_not_at_all(self):
        self.assertEqual(sbom.spdx_licence("Expat"), "MIT")
        self.assertEqual(sbom.spdx_licence("LGPL-3 or GPL-2+"), "LGPL-3.0-only OR GPL-2.0-or-later")
        self.assertIsNone(sbom.spdx_licence("Expat with embedded exception"))
        self.assertIsNone(sbom.spdx_licence("Expat and Somebodys"))


class ChangelogTest(unittest.TestCase):
    def setUp(self):
        self.newest = changelog_releases.releases(CHANGELOG)[0]

    def test_metainfo_is_plain_text_that_xml_can_hold(self):
        self.assertEqual(changelog_releases.appstream(self.newest), (
            '    <release version="1.2.0" date="2026-03-04">\n      <description>\n        <ul>\n'
            "          <li>Warmer colours, which take two lines to tell.</li>\n"
            "          <li>--sensors says more &amp; sooner.</li>\n"
            "        </ul>\n      </description>\n    </release>\n"))

    def test_debian_has_the_day_and_every_item(self):
        self.assertEqual(changelog_releases.debian(self.newest), (
            "thermopix (1.2.0) unstable; urgency=medium\n\n"
            "  * Warmer colours, which take two lines to tell.\n  * `--sensors` says more & sooner.\n\n"
            " -- The Thermopix authors <maintainers@thermopix.invalid>  Wed, 04 Mar 2026 00:00:00 +0000\n"))


if __name__ == "__main__":
    unittest.main()
