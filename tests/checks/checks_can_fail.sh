#!/usr/bin/env bash
# Every check passes a small good tree and fails, naming the file, on one bad line in it.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
trees=$(mktemp -d)
trap 'rm -rf "$trees"' EXIT
failures=0

# good_tree: a fresh tree in which every check passes; prints its path.
good_tree() {
    local tree
    tree=$(mktemp -d "$trees/tree.XXXX")
    mkdir -p "$tree/docs" "$tree"/src/{base,system,sensing,pixels,shell,environment,menubar,app,platform/linux/tray,platform/qt/drawing} "$tree"/tests/base
    printf '#include <string>\n' >"$tree/src/base/Text.h"
    printf '#include "base/Text.h"\n' >"$tree/src/base/Word.h"
    printf '#include "base/Text.h"\n#include <utf8proc.h>\n' >"$tree/src/base/Text.cpp"
    printf '#include "base/Text.h"\n' >"$tree/src/system/Clock.h"
    printf '#include "system/Clock.h"\n#include <fmt/format.h>\n' >"$tree/src/sensing/Monitor.h"
    printf '#include "sensing/Monitor.h"\n#include <png.h>\n' >"$tree/src/pixels/Image.cpp"
    printf '#include "base/Text.h"\n' >"$tree/src/shell/Menu.h"
    printf '#include "sensing/Monitor.h"\n#include "shell/Menu.h"\n' >"$tree/src/menubar/MenuController.h"
    printf '#include "menubar/MenuController.h"\n' >"$tree/src/app/AppDelegate.h"
    printf '#include "app/AppDelegate.h"\n' >"$tree/src/app/AppDelegate.cpp"
    printf '#include <glib.h>\n#include <sys/stat.h>\n#include "shell/Menu.h"\n' >"$tree/src/platform/linux/tray/Tray.cpp"
    printf '#include "shell/Menu.h"\n' >"$tree/src/platform/qt/drawing/Painter.h"
    printf '#include "app/AppDelegate.h"\n' >"$tree/src/main.cpp"
    printf 'TEST(Text, IsKept) {\n' >"$tree/tests/base/Text_test.cpp"
    printf '| Text is kept. | \140Text.IsKept\140 |\n' >"$tree/docs/reliability.md"
    printf 'fuzz\n' >"$tree/tests/base/Text_fuzz.cpp"
    printf '[{ "file": "%s/tests/base/Text_test.cpp" },\n { "file": "%s/tests/base/Text_fuzz.cpp" }]\n' \
        "$tree" "$tree" >"$tree/compile_commands.json"
    printf '%s' "$tree"
}

check() {
    local name=$1 tree=$2
    case $name in
        orphan_tests) "$here/$name.sh" "$tree" "$tree/compile_commands.json" '*_test.cpp' '*_fuzz.cpp' ;;
        *) "$here/$name.sh" "$tree" ;;
    esac
}

# refuses CHECK FILE TEXT: the check fails and names FILE when TEXT is appended to it.
refuses() {
    local name=$1 file=$2 text=$3 tree output
    tree=$(good_tree)
    mkdir -p "$(dirname "$tree/$file")"
    printf '%b\n' "$text" >>"$tree/$file"
    if output=$(check "$name" "$tree" 2>&1); then
        echo "$name accepts in $file: $text"
        failures=$((failures + 1))
    elif [[ $output != *"${file#src/}"* ]]; then
        echo "$name does not name $file: $output"
        failures=$((failures + 1))
    fi
}

for name in core_purity language_floor include_directions orphan_tests promised_tests; do
    if ! output=$(check "$name" "$(good_tree)" 2>&1); then
        echo "$name refuses a good tree: $output"
        failures=$((failures + 1))
    fi
    empty=$(mktemp -d "$trees/empty.XXXX")
    mkdir -p "$empty/src" "$empty/tests"
    : >"$empty/compile_commands.json"
    if check "$name" "$empty" >/dev/null 2>&1; then
        echo "$name accepts a tree with nothing to check"
        failures=$((failures + 1))
    fi
done

for header in glib.h gio/gio.h unistd.h sys/stat.h dlfcn.h QString QtCore/QObject AppKit/AppKit.h \
    objc/runtime.h ext/hash_map windows.h; do
    refuses core_purity src/shell/Menu.h "#include <$header>"
done
refuses core_purity src/system/Clock.h '#include <time.h>'
refuses core_purity src/settings/Pane.mm.h '#import <Foundation/Foundation.h>'
refuses core_purity src/attic/Box.h '#include <glib.h>'
refuses core_purity src/sensing/Monitor.h '#include <png.h>'
refuses core_purity src/pixels/Image.cpp '#  include <nlohmann/json.hpp>'
refuses core_purity src/app/AppDelegate.cpp '#ifdef __linux__'
refuses core_purity src/app/AppDelegate.cpp '#if defined(__APPLE__)'
refuses core_purity src/base/Text.cpp '#ifndef _WIN32'
refuses core_purity src/base/Text.cpp '#if A\n#elif defined(__linux__)'
refuses core_purity src/base/Text.cpp '#if __has_include(<unistd.h>)'

refuses language_floor src/base/Text.cpp '#include <format>'
refuses language_floor src/base/Text.cpp '#include <source_location>'
refuses language_floor src/sensing/Monitor.h 'std::jthread worker;'
refuses language_floor src/pixels/Image.cpp 'std::ranges::sort(cells);'
refuses language_floor src/pixels/Image.cpp 'cells | std::views::reverse'
refuses language_floor src/system/Clock.h 'std::pmr::string text;'

refuses include_directions src/base/Text.h '#include "system/Clock.h"'
refuses include_directions src/system/Clock.h '#include "sensing/Monitor.h"'
refuses include_directions src/sensing/Monitor.h '#include "app/AppDelegate.h"'
refuses include_directions src/environment/Log.h '#include "shell/Menu.h"'
refuses include_directions src/shell/Menu.h '#include "menubar/MenuController.h"'
refuses include_directions src/menubar/MenuController.h '#include "app/AppDelegate.h"'
refuses include_directions src/settings/Pane.h '#include "menubar/MenuController.h"'
refuses include_directions src/shell/Menu.h '#include "platform/linux/tray/Tray.cpp"'
for adapter in linux/tray/Tray.cpp linux/application/Desktop.cpp qt/drawing/Painter.h macos/menubar/Item.mm; do
    refuses include_directions "src/platform/$adapter" '#include "menubar/MenuController.h"'
    refuses include_directions "src/platform/$adapter" '#include "app/AppDelegate.h"'
done
refuses include_directions src/platform/qt/drawing/Painter.h '#include "platform/linux/tray/Tray.cpp"'
refuses include_directions src/platform/qt/drawing/Symbols.h '#include "platform/qt/views/Picker.h"'
refuses include_directions src/platform/linux/glib/Loop.h '#include "platform/linux/tray/Tray.cpp"'
refuses include_directions src/platform/linux/Loose.h '#include <string>'
refuses include_directions src/shell/Menu.h '#include "Nowhere.h"'
refuses include_directions src/attic/Box.h '#include <string>'
refuses include_directions src/base/Text.h '#include "base/Text.h"'
refuses include_directions src/base/Text.h '#include "base/Word.h"'
refuses include_directions src/shell/Menu.h '#include "../base/Text.h"'

# A table with an arrow that runs back is refused whatever the sources include.
for row in 'base system' 'shell menubar' 'platform/linux/bus platform/linux/tray'; do
    sed "s|^${row% *} .*|$row|; s|^${row% *}\$|$row|" "$here/rooms.txt" >"$trees/rooms.txt"
    if output=$("$here/include_directions.sh" "$(good_tree)" "$trees/rooms.txt" 2>&1); then
        echo "include_directions accepts a room that includes one above its own: $row"
        failures=$((failures + 1))
    elif [[ $output != *"${row% *} may include ${row#* }, which no row before it describes"* ]]; then
        echo "include_directions does not say what is wrong with the row $row: $output"
        failures=$((failures + 1))
    fi
done

refuses promised_tests docs/reliability.md '| Text is found. | \140Text.IsFound\140 |'
refuses orphan_tests tests/base/Lonely_test.cpp TEST
refuses orphan_tests tests/base/Lonely_fuzz.cpp fuzz

if ((failures)); then
    echo "$failures expectations failed"
    exit 1
fi
echo "every check can fail"
