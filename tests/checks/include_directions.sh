#!/usr/bin/env bash
# include_directions.sh ROOT [ROOMS]: files of src/ include only files of rooms that ROOMS (rooms.txt) allows theirs, by
# their path from src/; a row names only rooms of the rows before it; no two files include each other in a circle.
set -euo pipefail
rooms=$(readlink -f "${2-$(dirname "${BASH_SOURCE[0]}")/rooms.txt}")
cd "$1/src"

mapfile -t files < <(find . -name '*.h' -o -name '*.cpp' -o -name '*.mm' | sed 's|^\./||' | sort)
((${#files[@]})) || { echo "no source found under $1/src"; exit 1; }
edges=$(mktemp)
trap 'rm -f "$edges" "$edges.order"' EXIT
status=0

awk -v edges="$edges" '
    # The room of a file: its innermost folder that has a row; files of src/ itself are `main`.
    # Empty when the table does not know its folder.
    function room(file,    part) {
        part = file
        while (sub(/\/[^\/]*$/, "", part)) {
            if (part in may) return part
        }
        return file ~ /\// ? "" : "main"
    }
    function report(why) { printf "%s:%d: %s: %s\n", FILENAME, FNR, why, $0; found = 1 }

    FNR == 1 { fileNumber++ }
    fileNumber == 1 {
        sub(/#.*/, "")
        if (NF) {
            for (i = 2; i <= NF; i++) {
                if (!($i in may)) report($1 " may include " $i ", which no row before it describes")
            }
            may[$1] = " " $0 " "
            gsub(/[ \t]+/, " ", may[$1])
        }
        next
    }
    FNR == 1 && room(FILENAME) == "" { report("in a room that rooms.txt does not have") }
    /^[ \t]*#[ \t]*(include|import)[ \t]*"/ {
        header = $0; sub(/^[^"]*"/, "", header); sub(/".*/, "", header)
        if ((getline line < header) < 0) {
            report("not a path from src/")
            next
        }
        close(header)
        if (header == FILENAME) {
            report("includes itself")
        }
        if (index(may[room(FILENAME)], " " room(header) " ") == 0) {
            report(room(FILENAME) " may not include " room(header))
        }
        print FILENAME, header > edges
    }
    END { exit found }' "$rooms" "${files[@]}" || status=1

if [[ -s $edges ]] && ! tsort "$edges" >"$edges.order" 2>&1; then
    echo "files that include each other in a circle:"
    sed -n 's/^tsort: \(.*\.\(h\|cpp\|mm\)\)$/    \1/p' "$edges.order"
    status=1
fi
exit "$status"
