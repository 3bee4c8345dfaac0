#!/usr/bin/env bash
# promised_tests.sh ROOT: every test that docs/reliability.md names, as `Suite.Name`, is a test.
set -euo pipefail
cd "$1"

status=0
seen=0
while IFS=. read -r suite name; do
    seen=$((seen + 1))
    if ! grep -rqE "^TEST(_F|_P)?\($suite, $name\)" --include='*_test.cpp' tests; then
        echo "docs/reliability.md: no test is called $suite.$name"
        status=1
    fi
done < <(grep -oE $'\x60[A-Za-z]+\\.[A-Z][A-Za-z]+\x60' docs/reliability.md | tr -d $'\x60')
((seen)) || { echo "docs/reliability.md names no test"; exit 1; }
exit "$status"
