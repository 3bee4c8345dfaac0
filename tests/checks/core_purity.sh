#!/usr/bin/env bash
# core_purity.sh ROOT: the core sees no toolkit and no operating system. Its rooms include the standard library and the
# few libraries allowed below, and hold no conditional on an operating system.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
cd "$1"

list=$("$here/core_files.sh")
mapfile -t files <<<"$list"

awk '
    function report(why) { printf "%s:%d: %s: %s\n", FILENAME, FNR, why, $0; found = 1 }

    # Standard headers are plain lower-case words; every toolkit and system header has a dot, a slash or a capital.
    function allowed(header, room) {
        if (header ~ /^[a-z_0-9]+$/ || header ~ /^fmt\/[a-z]+\.h$/) return 1
        if (header ~ /^nlohmann\/json(_fwd)?\.hpp$/) return room ~ /^(environment|diagnostics|messages|updates)$/
        if (header == "png.h") return room == "pixels"
        if (header == "utf8proc.h") return room == "base"
        return 0
    }

    /^[ \t]*#[ \t]*(include|import)[ \t]*</ {
        header = $0; sub(/^[^<]*</, "", header); sub(/>.*/, "", header)
        split(FILENAME, path, "/")
        if (!allowed(header, path[2])) report("header that the core may not include")
    }
    /^[ \t]*#[ \t]*(el)?if(n?def)?[^a-z_].*(__linux|__unix|__APPLE|__MACH|TARGET_OS|_WIN32|_WIN64|__FreeBSD|__OBJC)/ {
        report("conditional on an operating system")
    }
    /__has_include/ { report("conditional on a header") }
    END { exit found }' "${files[@]}"
