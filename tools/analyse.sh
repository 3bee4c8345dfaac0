#!/usr/bin/env bash
# analyse.sh UNIT: the static analysis of a source file or of a unit of build/lint-joined, which reads its files' headers
# once. Files that cannot be joined, since names that only they can see meet there, are analysed one by one.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

tidy() {
    # Names of one joined file shadow those of another.
    clang-tidy-14 --quiet -p "$1" --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-shadow "$2" \
        2>>build/clang-tidy.log
}

output=$(tidy build/lint-joined "$1")
status=$?
if ((status)) && [[ $1 == */Unity/* && $output == *'[clang-diagnostic-error]'* ]]; then
    output=''
    status=0
    while read -r file; do
        output+=$(tidy build/lint "$file") || status=1
    done < <(sed -n 's/^#include "\(.*\)"$/\1/p' "$1")
fi
printf '%s' "$output"
exit "$status"
