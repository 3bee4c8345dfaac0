#!/usr/bin/env bash
# Builds the Debian packages into build/package/: tools/package.sh [--test]
# With --test they are built a second time in another folder, compared byte by byte, and installed into a fresh
# Debian, where they have to work (needs root).
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

readonly out=$PWD/build/package
die() {
    printf 'package: %s\n' "$*" >&2
    exit 1
}

version=$(sed -n 's/^project(thermopix VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
[[ -n $version ]] || die "CMakeLists.txt names no version"
release_date=$(python3 tools/changelog_releases.py CHANGELOG.md | sed -n "s/.*version=\"$version\" date=\"\([0-9-]*\)\".*/\1/p")
[[ -n $release_date ]] || die "CHANGELOG.md has no entry for $version"
build_number=$(git rev-list --count HEAD)
readonly version release_date build_number

# What is committed, with the packaging in its place.
stage() {
    local folder=$1/thermopix-$version
    rm -rf "$1"
    mkdir -p "$folder"
    git archive HEAD | tar -x -C "$folder"
    cp -r "$folder/packaging/debian" "$folder/debian"
    cat >"$folder/debian/changelog" <<TEXT
thermopix ($version) unstable; urgency=medium

  * Release $version; /usr/share/doc/thermopix/changelog.gz says what is new.

 -- The Thermopix authors <maintainers@thermopix.invalid>  $(date -u -R -d "$release_date")
TEXT
    cp "$folder/CHANGELOG.md" "$folder/debian/thermopix.docs.changelog"
    printf '%s\n' "$folder"
}

# Builds what is staged in a folder; the packages come to stand beside it.
build_in() {
    local folder
    folder=$(stage "$1")
    if ! (cd "$folder" && THERMOPIX_BUILD=$build_number dpkg-buildpackage -b -us -uc -rfakeroot) \
        >"$1/build.log" 2>&1; then
        tail -n 40 "$1/build.log" >&2
        die "the build failed; all of it is in $1/build.log"
    fi
}

check_lintian() {
    local found
    found=$(lintian --allow-root --fail-on error,warning "$1"/*.changes 2>&1) || die "lintian: $found"
    [[ -z $found ]] || printf '%s\n' "$found"
}

check_reproducible() {
    local second=$out/again
    build_in "$second/elsewhere"
    local package
    for package in "$out"/*.deb; do
        cmp "$package" "$second/elsewhere/$(basename "$package")" ||
            die "$(basename "$package") differs between two builds"
    done
    printf 'reproducible: two builds in different folders gave the same packages\n'
}

build_in "$out/work"
rm -f "$out"/*.deb
mv "$out"/work/*.deb "$out"/work/*.changes "$out"/work/*.buildinfo "$out"/
check_lintian "$out"
(cd "$out" && sha256sum ./*.deb >SHA256SUMS && cat SHA256SUMS)
if [[ ${1-} == --test ]]; then
    check_reproducible
    packaging/test-in-fresh-debian.sh "$out"
fi
