# Reads gcov's annotated sources and prints the core's line coverage room by room: every folder of src/ but platform/.
# A line counts as reached when any object that holds it reached it. Fails under `floor` per cent. Unreached lines go
# to the file `unreached`.
BEGIN {
    FS = ":"
}
$2 + 0 == 0 && $3 == "Source" {
    file = $4
    if (index(file, root) == 1) {
        file = substr(file, length(root) + 1)
    }
    sub(/^(\.\.\/)+/, "", file)
    isMeasured = split(file, parts, "/") > 2 && parts[1] == "src" && parts[2] != "platform"
    room = parts[2]
    next
}
!isMeasured { next }
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
        text[key] = $0
        sub(/^[^:]*:[^:]*:/, "", text[key])
        if (lines[room]++ == 0) {
            roomNames[++roomCount] = room
        }
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
        printf "%-12s %6.1f %%  %5d of %5d lines\n", room, 100 * hits[room] / lines[room], hits[room], lines[room]
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
