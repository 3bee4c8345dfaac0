#!/usr/bin/env bash
# Makes the README's picture from the program's own export: readout_picture.sh PROGRAM PICTURE
# (needs imagemagick; the strips are only enlarged by whole pixels and set side by side)
set -euo pipefail
program=$1
picture=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$program" --export-web-assets "$folder" >/dev/null
rows=(
    "style-arcade.png style-micro.png style-segment.png style-dotMatrix.png"
    "pet-cat-chilly.png pet-westie-content.png pet-mac-warm.png pet-ghost-scorching.png"
)
for index in "${!rows[@]}"; do
    read -ra strips <<<"${rows[index]}"
    convert "${strips[@]/#/$folder/}" -background '#121212' -gravity center -extent 164x44 +append "$folder/row$index.png"
done
convert "$folder/row0.png" "$folder/row1.png" -append -bordercolor '#121212' -border 12 -scale 200% \
    -strip "$picture"
