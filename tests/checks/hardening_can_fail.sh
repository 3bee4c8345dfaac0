#!/usr/bin/env bash
# hardening_can_fail.sh COMPILER FLAGS...: the check of hardened programs passes one that is compiled with FLAGS, and
# refuses it, saying why, when any one of them is taken back.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
compiler=$1
shift
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cat >"$folder/program.cpp" <<'TEXT'
#include <cstdio>
#include <cstring>
int main(int, char** arguments) {
    char buffer[16];
    std::strcpy(buffer, arguments[0]);
    return std::puts(buffer);
}
TEXT

branches=()
[[ $* != *protection=* ]] || branches=(--branches)
check() {
    "$compiler" -O2 "${flags[@]}" -Wl,-z,relro -Wl,-z,now "$@" -o "$folder/program" "$folder/program.cpp"
    "$here/hardened_programs.sh" "${branches[@]}" "$folder/program"
}

flags=("$@")
failures=0
if ! output=$(check 2>&1); then
    echo "a hardened program is refused: $output"
    failures=1
fi
# refuses REASON FLAG...
refuses() {
    local output
    if output=$(check "${@:2}" 2>&1) || [[ $output != *"$1"* ]]; then
        echo "${*:2}: $output"
        failures=$((failures + 1))
    fi
}
refuses "read-only" -Wl,-z,norelro
refuses "before main()" -Wl,-z,lazy
refuses "can be executed" -Wl,-z,execstack
refuses "no stack protector" -fno-stack-protector
refuses "no checked library calls" -U_FORTIFY_SOURCE
if [[ $* == *cf-protection* ]]; then
    refuses "protected branches" -fcf-protection=none
elif [[ $* == *branch-protection* ]]; then
    refuses "protected branches" -mbranch-protection=none
fi
! "$here/hardened_programs.sh" >/dev/null || failures=$((failures + 1))
((failures == 0))
