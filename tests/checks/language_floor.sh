#!/usr/bin/env bash
# language_floor.sh ROOT: the core keeps to what every supported standard library has. libc++ 14 lacks <format>,
# std::jthread, <source_location>, std::pmr, the range algorithms and the views.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
cd "$1"

list=$("$here/core_files.sh")
mapfile -t files <<<"$list"

if grep -nE '#[ \t]*include[ \t]*<(format|source_location|memory_resource|stop_token|ranges)>|std::(format|jthread|stop_token|source_location|pmr|ranges|views)\b' \
    "${files[@]}"; then
    echo "not in every supported standard library"
    exit 1
fi
