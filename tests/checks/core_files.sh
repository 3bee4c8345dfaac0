#!/usr/bin/env bash
# core_files.sh: the sources of the core below the current folder, one a line; fails when there are none.
set -euo pipefail
{
    find src/base src/app src/sensing src/pixels src/menubar src/settings src/messages src/diagnostics \
        -name '*.h' -o -name '*.cpp' 2>/dev/null || true
    find src/platform -maxdepth 1 -name '*.h' 2>/dev/null || true
} | sort | grep . || {
    echo "no source of the core in $PWD/src" >&2
    exit 1
}
