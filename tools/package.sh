#!/usr/bin/env bash
# Builds the Debian packages of what is committed into build/package/: tools/package.sh [--test]
# With --test they are built a second time, elsewhere and in other surroundings, have to come out byte for byte the
# same, and are installed into a fresh Debian, where they have to work (needs root, or sudo).
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

readonly out=$PWD/build/package
die() {
    printf 'package: %s\n' "$*" >&2
    exit 1
}

version=$(sed -n 's/^project(thermopix VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
[[ -n $version ]] || die "CMakeLists.txt names no version"
build_number=$(git rev-list --count HEAD)
readonly version build_number

# What is committed, with the packaging in its place; prints the folder.
stage() {
    local folder=$1/thermopix-$version changelog
    mkdir -p "$folder"
    git archive HEAD | tar -x -C "$folder"
    cp -r "$folder/packaging/debian" "$folder/debian"
    changelog=$("$folder/tools/changelog_releases.py" "$folder/CHANGELOG.md" debian)
    [[ $changelog == "thermopix ($version) "* ]] || die "CHANGELOG.md does not begin with $version"
    printf '%s\n' "$changelog" >"$folder/debian/changelog"
    printf '%s\n' "$folder"
}

# Builds what is staged in a new folder, from nothing; the packages come to stand in that folder.
build_in() {
    local folder
    folder=$(stage "$1")
    if ! (cd "$folder" && env -u CMAKE_CXX_COMPILER_LAUNCHER CCACHE_DISABLE=1 THERMOPIX_BUILD="$build_number" \
        dpkg-buildpackage -b -us -uc -rfakeroot --jobs=auto) >"$1/build.log" 2>&1 </dev/null; then
        tail -n 40 "$1/build.log" >&2
        die "the build failed; all of it is in $1/build.log"
    fi
}

# What is found of less weight is shown.
check_lintian() {
    local found
    found=$(lintian --allow-root --display-info --fail-on error,warning "$1"/*.changes 2>&1) || die "lintian: $found"
    printf 'lintian: clean\n%s' "${found:+$found$'\n'}"
}

check_reproducible() {
    local elsewhere
    elsewhere=$(mktemp -d)
    # shellcheck disable=SC2064  # the folder of now
    trap "rm -rf '$elsewhere'" EXIT
    (
        umask 077
        export TZ=Pacific/Kiritimati LC_ALL=C.UTF-8 HOME=$elsewhere/home
        build_in "$elsewhere/quite/another/folder"
    )
    (cd "$elsewhere/quite/another/folder" && sha256sum --quiet --check "$out/staging/SHA256SUMS") ||
        die "two builds differ; the first is in $out"
    printf 'reproducible: two builds, in different folders and surroundings, gave the same packages\n'
}

rm -rf "$out"
mkdir -p "$out/staging"
build_in "$out/staging"
check_lintian "$out/staging"
(cd "$out/staging" && sha256sum ./*.deb >SHA256SUMS)
# What people install stands alone; debugging symbols and the build's own papers stand apart.
mkdir "$out/debug-symbols"
cp "$out"/staging/*-dbgsym_*.deb "$out/debug-symbols/"
find "$out/staging" -maxdepth 1 -name '*.deb' -not -name '*-dbgsym_*' -exec cp -t "$out" {} +
(cd "$out" && sha256sum ./*.deb | tee SHA256SUMS)

if [[ ${1-} == --test ]]; then
    check_reproducible
    as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || die "trying the packages in a fresh Debian needs root, or sudo"
        as_root=(sudo)
    fi
    "${as_root[@]}" packaging/test-in-fresh-debian.sh "$out"
    printf '== passed: lintian, the same bytes twice, and a fresh Debian\n'
fi
