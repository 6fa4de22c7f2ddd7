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
echo "Made before.jpg, after.jpg and gallery.jpg in $pictures"
