#!/usr/bin/env bash
# installed_files.sh BUILD VERSION: installs a build into a folder and judges what lies there by the tools that will
# read it. Ends with 77, skipped, where a tool is missing.
set -euo pipefail
readonly build=$1 version=$2 name=io.github.thermopix.Thermopix
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
readonly prefix=$stage/usr share=$stage/usr/share

for tool in man mandoc desktop-file-validate appstreamcli zsh fish; do
    if ! command -v "$tool" >/dev/null; then
        [[ ${THERMOPIX_REQUIRE_DESKTOP-} != 1 ]] || { echo "$tool is not installed" && exit 1; }
        echo "skipped: $tool is not installed" && exit 77
    fi
done

failures=0
fail() {
    printf '%s\n' "$*"
    failures=$((failures + 1))
}
# silent WHAT COMMAND...: it succeeds and has nothing to say.
silent() {
    local output
    output=$("${@:2}" 2>&1) || fail "$1: it fails"
    [[ -z $output ]] || fail "$1: $output"
}
# equal WHAT WANTED FOUND
equal() { [[ $2 == "$3" ]] || fail "$1: wanted '$2', found '$3'"; }

cmake --install "$build" --prefix "$prefix" >/dev/null
export HOME=$stage/home LC_ALL=C.UTF-8
mkdir "$HOME"

# The manual.
for section in 1 5; do
    page=$share/man/man$section/thermopix.$section
    MANWIDTH=80 man --warnings=w --local-file "$page" 2>"$stage/warnings" >"$stage/page.$section" || true
    [[ ! -s $stage/warnings ]] || fail "man --warnings, section $section: $(cat "$stage/warnings")"
    silent "mandoc, section $section" mandoc -T lint -W warning "$page"
    grep -qF "Thermopix $version" "$stage/page.$section" || fail "section $section does not name $version"
    ! grep -nF '@' "$stage/page.$section" || fail "section $section has a gap that was not filled"
done
options=$("$prefix/bin/thermopix" --help | grep -oE '^ *--[a-z-]+' | tr -d ' ' | grep -v '^--uitest-')
((${#options} > 0)) || fail "--help names no options"
while read -r option; do
    grep -qF -- "$option" "$stage/page.1" || fail "the manual does not explain $option"
done <<<"$options"

# What the program starts.
[[ -x $prefix/libexec/thermopix/thermopix-nvidia-sensors ]] || fail "the program that reads NVIDIA cards is missing"

# What desktops read.
silent desktop-file-validate desktop-file-validate "$share/applications/$name.desktop"
output=$(appstreamcli validate --no-net --no-color "$share/metainfo/$name.metainfo.xml" 2>&1) || fail "appstreamcli: $output"
! grep -E '^(E|W): ' <<<"$output" || fail "appstreamcli has objections"
equal "the newest release of the metainfo" "$version" \
    "$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$share/metainfo/$name.metainfo.xml" | head -n 1)"
equal "the identifier of the metainfo" "$name" "$(sed -n 's:.*<id>\(.*\)</id>.*:\1:p' "$share/metainfo/$name.metainfo.xml")"
equal "the name on the bus" "$name" "$(sed -n 's/^Name=//p' "$share/dbus-1/services/$name.service")"
executable=$(sed -n 's/^Exec=//p' "$share/dbus-1/services/$name.service")
equal "what the bus starts" /bin/thermopix "${executable#"${executable%/bin/thermopix}"}"
equal "the icon of the desktop file" "$name" "$(sed -n 's/^Icon=//p' "$share/applications/$name.desktop")"
for size in 16 22 24 32 48 64 128 256 512; do
    icon=$share/icons/hicolor/${size}x${size}/apps/$name.png
    # Width and height stand in the first block of a PNG.
    equal "the size of $icon" "$size $size" \
        "$(od -An -j16 -N8 -tu1 "$icon" | awk '{ print $3 * 256 + $4, $7 * 256 + $8 }')"
done
[[ -s $share/icons/hicolor/scalable/apps/$name.svg ]] || fail "there is no scalable icon"

# Completions, as each shell loads them.
wanted=$(grep -E '^--s' <<<"$options")
found=$(bash --norc --noprofile -c 'set -eu
    source "$1"
    COMP_WORDS=(thermopix --s) COMP_CWORD=1
    "$(complete -p thermopix | sed "s/.* -F \([^ ]*\) .*/\1/")"
    printf "%s\n" "${COMPREPLY[@]}"' _ "$share/bash-completion/completions/thermopix" 2>&1) || true
equal "bash completes --s" "$wanted" "$found"
mkdir "$stage/folder" "$stage/folder/inner"
found=$(cd "$stage/folder" && bash --norc --noprofile -c 'source "$1"
    COMP_WORDS=(thermopix --export-web-assets i) COMP_CWORD=2
    _thermopix
    printf "%s\n" "${COMPREPLY[@]}"' _ "$share/bash-completion/completions/thermopix" 2>&1) || true
equal "bash completes a folder" inner "$found"
# _arguments is played here: it prints what the completion tells it of options.
found=$(zsh -f -c '
    fpath=($1 $fpath)
    autoload -Uz compinit && compinit -u -D
    [[ $_comps[thermopix] == _thermopix ]] || print "not loaded"
    _arguments() { print -l -- "${(@)argv%%\[*}" }
    autoload +X _thermopix && _thermopix' _ "$share/zsh/vendor-completions" 2>&1 | grep -vE '^--[^s]') || true
equal "zsh completes --s" "$wanted" "$found"
# shellcheck disable=SC2016  # the shell that is asked expands it
found=$(fish --no-config -c 'source $argv[1]; complete -C "thermopix --s"' \
    "$share/fish/vendor_completions.d/thermopix.fish" 2>&1 | cut -f 1) || true
equal "fish completes --s" "$(sort <<<"$wanted")" "$(sort <<<"$found")"

((failures == 0))
