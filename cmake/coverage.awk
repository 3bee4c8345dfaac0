# Reads gcov's annotated sources and prints line coverage room by room; a line counts as reached when any object
# that holds it reached it. Fails under `floor` per cent. Unreached lines go to the file `unreached`.
BEGIN {
    FS = ":"
    roomCount = split(rooms, roomNames, " ")
}
$2 + 0 == 0 && $3 == "Source" {
    file = $4
    if (index(file, root) == 1) {
        file = substr(file, length(root) + 1)
    }
    sub(/^(\.\.\/)+/, "", file)
    split(file, parts, "/")
    room = parts[1] == "src" ? parts[2] : ""
    next
}
room == "" || index(" " rooms " ", " " room " ") == 0 { next }
{
    mark = $1
    gsub(/[ \t*]/, "", mark)
    number = $2 + 0
    if (mark == "-" || mark == "" || number == 0 || $3 ~ /^[ \t]*}[;)]*$/) {
        next  # no code, or a closing brace, which holds only the compiler's own clean-up
    }
    key = file ":" number
    if (!(key in seen)) {
        seen[key] = 1
        roomOf[key] = room
        text[key] = $0
        sub(/^[^:]*:[^:]*:/, "", text[key])
        lines[room]++
    }
    if (mark ~ /^[0-9]/ && !(key in reached)) {
        reached[key] = 1
        hits[room]++
    }
}
END {
    printf "" > unreached
    for (key in seen) {
        if (!(key in reached)) {
            print key ":" text[key] | ("sort -t: -k1,1 -k2,2n > " unreached)
        }
    }
    for (i = 1; i <= roomCount; i++) {
        room = roomNames[i]
        if (lines[room] > 0) {
            printf "%-12s %6.1f %%  %5d of %5d lines\n", room, 100 * hits[room] / lines[room], hits[room], lines[room]
        }
        allLines += lines[room]
        allHits += hits[room]
    }
    if (allLines == 0) {
        print "no line of the core was measured"
        exit 1
    }
    total = 100 * allHits / allLines
    printf "%-12s %6.1f %%  %5d of %5d lines\n", "total", total, allHits, allLines
    if (total < floor) {
        printf "below %d %%\n", floor
        exit 1
    }
}
