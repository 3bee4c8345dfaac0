#!/usr/bin/env bash
# core_files.sh: the sources of the core below the current folder, one a line; fails when there are none. The core is
# every room of src/ but the platforms.
set -euo pipefail
{
    find src/*/ -path 'src/platform/*' -prune -o \( -name '*.h' -o -name '*.cpp' \) -print
} 2>/dev/null | sort | grep . || {
    echo "no source of the core in $PWD/src" >&2
    exit 1
}
