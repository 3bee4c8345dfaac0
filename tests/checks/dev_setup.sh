#!/usr/bin/env bash
# dev_setup.sh ROOT: ./dev asks the package manager for what is missing and for nothing else, and says what it lacks
# where it cannot ask. The package manager is played by scripts that keep a record.
set -euo pipefail
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
mkdir -p "$stage/tree/packaging"
cp "$1/dev" "$stage/tree/"
cp "$1/packaging/debian-packages.txt" "$stage/tree/packaging/"
chmod -R a+rX "$stage"
dev=$stage/tree/dev
list=$stage/tree/packaging/debian-packages.txt
failures=0

# What ./dev may call: the ordinary tools, and the players.
mkdir "$stage/bin"
for tool in bash env awk dirname readlink nproc cat cmake ninja c++; do
    ln -s "$(command -v "$tool" || command -v true)" "$stage/bin/$tool"
done

play() {
    printf '#!/bin/bash\n%s\n' "$2" >"$stage/bin/$1"
    chmod 755 "$stage/bin/$1"
}

# scene MISSING: every package but these is installed; the record is empty; there is no sudo.
scene() {
    : >"$stage/record"
    chmod 666 "$stage/record"
    rm -f "$stage/bin/sudo"
    play apt-get "echo \"apt-get \$*\" >>$stage/record"
    play dpkg-query "
        for package in \"\$@\"; do
            [[ ' -W -f $1 ' == *\" \$package \"* || \$package == *Package* ]] || echo \"\$package installed\"
        done
        [[ -z '$1' ]]"
}

# As root, or as someone for whom sudo does what it is told.
run_dev() {
    if ((EUID != 0)); then
        play sudo 'exec "$@"'
    fi
    PATH=$stage/bin bash "$dev" setup "$@" 2>&1 </dev/null
}

# As someone who is not root.
run_dev_unprivileged() {
    local become=()
    if ((EUID == 0)); then
        become=(setpriv --reuid=65534 --clear-groups)
    fi
    "${become[@]}" env PATH="$stage/bin" bash "$dev" setup 2>&1 </dev/null
}

expect() {
    local what=$1 wanted=$2 found=$3
    if [[ $found != "$wanted" ]]; then
        printf '%s\n  wanted: %s\n  found:  %s\n' "$what" "$wanted" "$found"
        failures=$((failures + 1))
    fi
}

scene ''
output=$(run_dev) || expect 'a machine that has everything' success "$output"
expect 'nothing missing: nothing is said' '' "$output"
expect 'nothing missing: nothing is asked for' '' "$(cat "$stage/record")"

scene 'cmake shellcheck'
output=$(run_dev) || expect 'a machine that lacks two packages' success "$output"
expect 'what is missing is named' 'Installing cmake shellcheck' "$output"
expect 'what is missing is installed, after one update' \
    $'apt-get update -qq\napt-get install -y -qq --no-install-recommends cmake shellcheck' "$(cat "$stage/record")"

scene 'cmake shellcheck'
output=$(run_dev build)
expect 'a group asks for its own packages only' 'Installing cmake' "$output"

scene 'cmake'
if output=$(run_dev_unprivileged); then
    expect 'neither root nor sudo' failure success
fi
expect 'neither root nor sudo: the packages are named' \
    'dev: these packages are missing, and there is neither root nor sudo to install them: cmake' "$output"
expect 'neither root nor sudo: nothing is tried' '' "$(cat "$stage/record")"

scene 'cmake'
play sudo "echo \"sudo \$*\" >>$stage/record"
run_dev_unprivileged >/dev/null || expect 'with sudo' success failure
expect 'with sudo: it is asked' \
    $'sudo apt-get update -qq\nsudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends cmake' \
    "$(cat "$stage/record")"

scene ''
rm "$stage/bin/dpkg-query"
output=$(run_dev build) || expect 'another distribution with the tools' success "$output"
expect 'another distribution is told what is needed' \
    "This is not Debian; what is needed is what Debian calls: $(awk '/^\[/ { on = $0 == "[build]" }
        on && NF && !/^[[#]/ { printf "%s%s", separator, $1; separator = " " }' "$list")" "$output"
rm "$stage/bin/ninja"
if output=$(run_dev build); then
    expect 'another distribution without a tool' failure success
fi
expect 'another distribution is told which tool is missing' 'dev: ninja is not installed' "${output##*$'\n'}"

duplicates=$(awk '{ sub(/#.*/, "") } /^\[/ { group = $1 } NF && !/^\[/ { print group, $1 }' "$list" | sort | uniq -d)
expect 'no group lists a package twice' '' "$duplicates"
unexplained=$(awk '!/^#/ && !/^\[/ && NF && !/#/' "$list")
expect 'every package has its reason' '' "$unexplained"

if ((failures)); then
    exit 1
fi
echo "./dev installs what is missing and nothing else"
