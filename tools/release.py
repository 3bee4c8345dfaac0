#!/usr/bin/env python3
"""Makes a release of what is committed: tools/release.py [--go] [--out FOLDER] [PART...]

Without --go nothing is made or changed: it says what it would do. Parts, all of them when none is named:

  source     the source, as thermopix-VERSION.tar.gz
  packages   the Debian packages, by ./dev package --test
  notes      what the changelog says of the version, as release-notes.md
  sbom       what it is built from, in SPDX 2.3, as thermopix-VERSION.spdx.json
  checksums  SHA256SUMS of every file in the folder
  tag        the annotated tag vVERSION; pushing it is left to you

The version is the one of CMakeLists.txt. A tree with changes, a version that the changelog does not begin with, and a
version whose tag exists are refused. The same commit gives the same source, notes, and, on the same system, the rest.
"""
import argparse
import datetime
import gzip
import hashlib
import json
import os
import re
import shutil
import subprocess
import sys

TOOLS = os.path.dirname(os.path.abspath(__file__))
sys.dont_write_bytecode = True
sys.path.insert(0, TOOLS)

import changelog_releases  # noqa: E402
import sbom  # noqa: E402


class Project:
    """The tree that this script stands in."""

    def __init__(self, root):
        self.root = root

    def read(self, *path):
        with open(os.path.join(self.root, *path), encoding="utf-8") as file:
            return file.read()

    def git(self, *arguments, text=True):
        return subprocess.run(["git", "-C", self.root, *arguments], check=True, stdout=subprocess.PIPE,
                              text=text).stdout

    @property
    def version(self):
        found = re.search(r"^project\(thermopix VERSION (\d+\.\d+\.\d+)\b", self.read("CMakeLists.txt"), re.MULTILINE)
        if not found:
            sys.exit("release: CMakeLists.txt names no version")
        return found[1]

    @property
    def tag(self):
        return f"v{self.version}"

    @property
    def commit(self):
        return self.git("rev-parse", "HEAD").strip()

    @property
    def committed_at(self):
        return datetime.datetime.fromtimestamp(int(self.git("log", "-1", "--format=%ct")), datetime.timezone.utc)

    def newest_release(self):
        return next(iter(changelog_releases.releases(self.read("CHANGELOG.md"))), None)

    def objections(self):
        """Why there can be no release; every reason at once."""
        newest = self.newest_release()
        heading = re.search(r"^## (.*?)\s*$", self.read("CHANGELOG.md"), re.MULTILINE)
        if self.git("status", "--porcelain").strip():
            yield "the tree has changes that are not committed"
        if not heading or not newest or newest.version != self.version or self.version not in heading[1]:
            yield f"CHANGELOG.md does not begin with {self.version}" + (f" but with {heading[1]}" if heading else "")
        elif not newest.items:
            yield f"CHANGELOG.md says nothing of {self.version}"
        if self.git("tag", "--list", self.tag).strip():
            yield f"the tag {self.tag} exists"


class Release:
    """The parts of a release, in a folder."""

    def __init__(self, project, folder):
        self.project, self.folder = project, folder
        self.name = f"thermopix-{project.version}"

    def path(self, name):
        os.makedirs(self.folder, exist_ok=True)
        return os.path.join(self.folder, name)

    def write(self, name, data):
        with open(self.path(name), "wb") as file:
            file.write(data)

    def files(self):
        return sorted(name for name in os.listdir(self.folder) if name != "SHA256SUMS")

    def checksum(self, name):
        with open(self.path(name), "rb") as file:
            return hashlib.sha256(file.read()).hexdigest()

    # --- the parts ---

    def source(self):
        archive = self.project.git("-c", "tar.umask=0022", "archive", "--format=tar", f"--prefix={self.name}/", "HEAD",
                                   text=False)
        self.write(f"{self.name}.tar.gz", gzip.compress(archive, mtime=0))

    def packages(self):
        subprocess.run([os.path.join(self.project.root, "dev"), "package", "--test"], check=True)
        built = os.path.join(self.project.root, "build", "package")
        for name in sorted(os.listdir(built)):
            if name.endswith(".deb"):
                shutil.copyfile(os.path.join(built, name), self.path(name))

    def notes(self):
        self.write("release-notes.md", changelog_releases.notes(self.project.newest_release()).encode())

    def sbom(self):
        source = f"{self.name}.tar.gz"
        document = sbom.document(
            version=self.project.version, commit=self.project.commit, created=self.project.committed_at,
            package_list=self.project.read("packaging", "debian-packages.txt"),
            source=(source, self.checksum(source)) if os.path.exists(self.path(source)) else None)
        self.write(f"{self.name}.spdx.json", (json.dumps(document, indent=2) + "\n").encode())

    def checksums(self):
        self.write("SHA256SUMS", "".join(f"{self.checksum(name)}  {name}\n" for name in self.files()).encode())

    def tag(self):
        self.project.git("tag", "--annotate", self.project.tag, "--message", f"Thermopix {self.project.version}")


# In the order in which they are made.
PARTS = {
    "source": "{folder}/{name}.tar.gz from the commit {commit}",
    "packages": "{folder}/*.deb, built twice and tried in a fresh Debian",
    "notes": "{folder}/release-notes.md from CHANGELOG.md",
    "sbom": "{folder}/{name}.spdx.json from packaging/debian-packages.txt",
    "checksums": "{folder}/SHA256SUMS",
    "tag": "the tag {tag}; then it can be pushed: git push origin {tag}",
}


def main(arguments):
    parser = argparse.ArgumentParser(formatter_class=argparse.RawDescriptionHelpFormatter, description=__doc__)
    parser.add_argument("--go", action="store_true", help="make it")
    parser.add_argument("--out", metavar="FOLDER", help="where, build/release-files/VERSION when not given")
    parser.add_argument("parts", metavar="PART", nargs="*", help=", ".join(PARTS))
    options = parser.parse_args(arguments)
    unknown = [part for part in options.parts if part not in PARTS]
    if unknown:
        parser.error(f"no such part: {', '.join(unknown)}")

    project = Project(os.path.dirname(TOOLS))
    release = Release(project, options.out or os.path.join(project.root, "build", "release-files", project.version))
    objections = list(project.objections())
    for objection in objections:
        print(f"release: {objection}", file=sys.stderr)
    if objections:
        return 1
    for part, what in PARTS.items():
        if options.parts and part not in options.parts:
            continue
        shown = what.format(folder=release.folder, name=release.name, tag=project.tag, commit=project.commit[:12])
        print(f"{part}: {shown}" if options.go else f"would make {part}: {shown}", flush=True)
        if options.go:
            getattr(release, part)()
    if not options.go:
        print("Nothing was made; ./dev release --go makes it.")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
