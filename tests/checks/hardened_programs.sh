#!/usr/bin/env bash
# hardened_programs.sh [--branches] PROGRAM...: every program has a stack protector, calls checked library functions, has
# linkage that is read-only before main() begins (full RELRO) and a stack that does not execute; with --branches, where
# the compiler can protect branches, its main() begins as a branch's target does. Reads the finished files.
# A program after -- is too small to call anything that could be checked.
set -euo pipefail

status=0
fail() {
    printf '%s: %s\n' "$program" "$*"
    status=1
}

branches=no small=no checked=0
for program in "$@"; do
    case $program in
        --branches) branches=yes && continue ;;
        --) small=yes && continue ;;
    esac
    checked=$((checked + 1))
    segments=$(readelf -lW "$program") && dynamic=$(readelf -dW "$program") && symbols=$(readelf --dyn-syms -W "$program")
    grep -q ' GNU_RELRO ' <<<"$segments" || fail "no linkage is made read-only"
    grep -qE '\((BIND_NOW|FLAGS_1)\).*NOW|\(FLAGS\).*BIND_NOW' <<<"$dynamic" || fail "linkage is not complete before main()"
    grep -E ' GNU_STACK ' <<<"$segments" | grep -qv 'RWE' || fail "the stack can be executed"
    grep -q ' __stack_chk_fail' <<<"$symbols" || fail "no stack protector"
    [[ $small == yes ]] || grep -E ' __[a-z_]+_chk\b' <<<"$symbols" | grep -qv __stack_chk || fail "no checked library calls"
    if [[ $branches == yes ]]; then
        objdump -d --disassemble=main --no-show-raw-insn "$program" | grep -A1 '<main>:' |
            grep -qE '\b(endbr(64|32)|paciasp|bti)\b' || fail "main() is no target of protected branches"
    fi
done
((checked)) || { echo "no program to check" && exit 1; }
exit "$status"
