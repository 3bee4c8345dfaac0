#!/usr/bin/env bash
# progress.sh ROOT: what fails in a build or among tests is shown at once and by name, nothing else is where there is no
# terminal, and the status is the command's.
set -euo pipefail
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT

# shows WHAT WANTED STATUS: of a command that says what is on standard input.
shows() {
    local found status=0
    cat >"$stage/said"
    found=$("$root/tools/progress.py" "$stage/log" build sh -c "cat '$stage/said'; exit $3") || status=$?
    cmp "$stage/said" "$stage/log"
    if [[ $found != "$2" || $status != "$3" ]]; then
        printf '%s\n  wanted: %s, %s\n  found:  %s, %s\n' "$1" "$2" "$3" "$found" "$status"
        exit 1
    fi
}
root=$1

shows "a build that fails" $'FAILED: Text.o\nText.cpp:1: error' 1 <<'TEXT'
-- Configuring done
[1/3] Building CXX object Word.o
FAILED: Text.o
Text.cpp:1: error
ninja: build stopped: subcommand failed.
TEXT

shows "tests that fail" $'Failed: desktop: pictures light 1 (3.01 s)\nTimeout: base: Waits (600.02 s)\nSkipped: web: Canvas (0.10 s)' 8 <<'TEXT'
Test project /build
      Start  1: base: Counts
 1/4 Test  #1: base: Counts .....................   Passed    0.01 sec
 2/4 Test  #2: desktop: pictures light 1 ........***Failed    3.01 sec
what it said
 3/4 Test #13: base: Waits ......................***Timeout 600.02 sec
 4/4 Test  #4: web: Canvas ......................***Skipped   0.10 sec
TEXT
echo "what fails is shown at once"
