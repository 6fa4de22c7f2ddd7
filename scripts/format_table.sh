#!/usr/bin/env bash
# Finds out by trying what each format keeps, and prints it as a table.
#   scripts/format_table.sh PROGRAM               prints the table
#   scripts/format_table.sh PROGRAM --check FILE  compares with the one in FILE; runs as a test
#   scripts/format_table.sh PROGRAM --write FILE  puts it into FILE
# Others judge: vips and exiftool read the results. 77, which ctest takes for skipped, without them.
set -euo pipefail

program=$(readlink -f "$1")
formats=(png jpg tif webp gif avif heic jxl bmp ppm)
begin='<!-- begin: scripts/format_table.sh -->'
end='<!-- end -->'

for tool in vips vipsheader exiftool; do
  command -v "$tool" >/dev/null || { echo "format_table: no $tool; nothing is tried"; exit 77; }
done
[[ $# -lt 3 ]] || file=$(readlink -f "$3")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# --- Pictures ---------------------------------------------------------------------------------

makePictures() {
  vips xyz ramp.v 64 48
  vips extract_band ramp.v x.v 0
  vips extract_band ramp.v y.v 1
  vips bandjoin 'x.v y.v x.v' rgb.v
  vips linear rgb.v wide.v 3 7
  vips cast wide.v rgb8.v uchar
  vips copy rgb8.v color.png --interpretation srgb
  vips extract_band rgb8.v grey8.v 0
  vips copy grey8.v grey.png --interpretation b-w
  vips linear rgb.v wide16.v 901 77
  vips cast wide16.v rgb16.v ushort
  vips copy rgb16.v deep.png --interpretation rgb16
  vips linear x.v alpha.v 4 0
  vips cast alpha.v alpha8.v uchar
  vips bandjoin 'rgb8.v alpha8.v' rgba.v
  vips copy rgba.v alpha.png --interpretation srgb
  # Everything that is said besides pixels, in a JPEG file, which holds it all.
  vips jpegsave color.png said.jpg --profile srgb
  exiftool -q -overwrite_original -EXIF:Artist=A -XMP:Title=B -IPTC:Keywords=C \
    -XResolution=150 -YResolution=75 -JFIF:XResolution=150 -JFIF:YResolution=75 \
    -Comment=D said.jpg
  # Frames that differ: equal ones are written as one.
  vips flip rgb8.v flipped.v horizontal
  vips invert rgb8.v inverted.v
  vips join rgb8.v flipped.v two.v vertical
  vips join two.v inverted.v joined.v vertical
  vips copy joined.v long.v --interpretation srgb
  vips gifsave long.v frames.gif --page-height 48
  vips tiffsave long.v frames.tif --page-height 48
}

# --- Questions --------------------------------------------------------------------------------

apply() {  # picture result [option]...
  rm -f "$2"
  "$program" apply "$1" -o "$2" --quiet --seed 7 "${@:3}" 2>/dev/null && [[ -s $2 ]]
}
field() { vipsheader -f "$1" "$2" 2>/dev/null || true; }
tag() { exiftool -s3 -n "$1" "$2" 2>/dev/null || true; }

keepsDepth() { apply deep.png "d.$1" && [[ $(field format "d.$1") == *USHORT* ]]; }
keepsAlpha() { apply alpha.png "a.$1" && [[ $(field bands "a.$1") == 4 ]]; }
keepsGrey() {
  local ending=$1
  [[ $ending != ppm ]] || ending=pgm
  apply grey.png "g.$ending" || return 1
  # Which vips reads with another library, as colours.
  if [[ $ending == bmp ]]; then [[ $(tag -BitDepth g.bmp) == 8 ]]; return; fi
  [[ $(field bands "g.$ending") == 1 ]]
}
keepsTag() { [[ -s s.$1 && $(tag "$2" "s.$1") == "$3" ]]; }
keepsProfile() { [[ -s s.$1 && -n $(vipsheader -a "s.$1" 2>/dev/null | grep icc-profile) ]]; }
keepsResolution() {
  local x y
  x=$(field xres "s.$1")
  y=$(field yres "s.$1")
  [[ ${x:0:3} == 5.9 && ${y:0:3} == 2.9 ]]
}
turns() {  # a file of this format that says it is to be turned by a quarter
  apply color.png "o.$1" && exiftool -q -overwrite_original -n -EXIF:Orientation=6 "o.$1" \
    2>/dev/null && [[ $(tag -EXIF:Orientation "o.$1") == 6 ]] && apply "o.$1" turned.png &&
    [[ $(field width turned.png) == 48 && -z $(tag -EXIF:Orientation turned.png | grep -v 1) ]]
}
keepsFrames() {
  local source=frames.gif
  [[ $1 != tif ]] || source=frames.tif  # pages
  apply "$source" "f.$1" && [[ $(field n-pages "f.$1") == 3 ]]
}

yes() { if "$@"; then printf ' yes |'; else printf ' – |'; fi; }

table() {
  local format
  echo "| Result | 16 bits | Alpha | Grey | Profile | EXIF | XMP | IPTC | Resolution | Texts |" \
    "Turned as it says | Frames |"
  echo '|---|---|---|---|---|---|---|---|---|---|---|---|'
  for format in "${formats[@]}"; do
    apply said.jpg "s.$format" || true
    printf '| %s |' "${format^^}"
    yes keepsDepth "$format"
    yes keepsAlpha "$format"
    yes keepsGrey "$format"
    yes keepsProfile "$format"
    yes keepsTag "$format" -EXIF:Artist A
    yes keepsTag "$format" -XMP:Title B
    yes keepsTag "$format" -IPTC:Keywords C
    yes keepsResolution "$format"
    yes keepsTag "$format" -Comment D
    yes turns "$format"
    yes keepsFrames "$format"
    echo
  done
}

makePictures >/dev/null
table >table
case ${2:-} in
  --check)
    awk -v begin="$begin" -v end="$end" '$0 == end { inside = 0 }
      inside { print }
      $0 == begin { inside = 1 }' "$file" >expected
    diff -u expected table || {
      echo "format_table: $file is not what the program does; --write puts it right" >&2
      exit 1
    }
    ;;
  --write)
    awk -v begin="$begin" -v end="$end" '$0 == end { inside = 0 }
      !inside { print }
      $0 == begin { inside = 1; while ((getline line < "table") > 0) print line }' \
      "$file" >whole
    cp whole "$file"
    ;;
  *) cat table ;;
esac
