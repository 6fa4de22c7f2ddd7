#!/usr/bin/env bash
# Reduces rendered samples to the pictures that the README shows.
#   samples/readme_pictures.sh PROGRAM_FOLDER OUT_FOLDER PICTURE_FOLDER
set -euo pipefail

sheet=$1/morvalis_sheet
out=$2
pictures=$3
mkdir -p "$pictures"
"$sheet" "$pictures/before.jpg" 1 600 "$out/samples/boards.jpg"
"$sheet" "$pictures/after.jpg" 1 600 "$out/gold.png"
"$sheet" "$pictures/gallery.jpg" 2 420 "$out/glass.png" "$out/copper.png" "$out/film.png" \
  "$out/stone.png" "$out/wood.png" "$out/leather.png"
"$1/morvalis" gallery "$out/samples/boards.jpg" --mask "$out/samples/letters.png" \
  --presets "$(dirname "${BASH_SOURCE[0]}")/../presets" --seed 1 --quiet -o "$out/presets.png"
"$sheet" "$pictures/presets.jpg" 1 1000 "$out/presets.png"
slanted=()
for look in chrome silver clear-glass; do
  slanted+=("$out/slanted-$look.png" "$out/slanted-$look-4.png")
done
"$sheet" "$pictures/supersample.jpg" 2 480 "${slanted[@]}"
echo "Made before.jpg, after.jpg, gallery.jpg, presets.jpg and supersample.jpg in $pictures"
