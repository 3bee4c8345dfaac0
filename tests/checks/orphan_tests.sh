#!/usr/bin/env bash
# orphan_tests.sh ROOT COMPILE_COMMANDS PATTERN...: every file under tests/ whose name matches a pattern is compiled by
# some target, as the build's own record says.
set -euo pipefail
root=$(readlink -f "$1")
commands=$2
shift 2

status=0
seen=0
for pattern in "$@"; do
    while IFS= read -r file; do
        seen=$((seen + 1))
        if ! grep -qF "\"file\": \"$file\"" "$commands"; then
            echo "${file#"$root/"}: in no target"
            status=1
        fi
    done < <(find "$root/tests" -name "$pattern" | sort)
done
((seen)) || { echo "no test found under $root/tests"; exit 1; }
exit "$status"
