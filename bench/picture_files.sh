#!/usr/bin/env bash
# CPU time and memory of `morvalis apply` on PNG files, beside those of `vips invert`, which decodes
# the same file and codes as large a one and does next to nothing between.
#   bench/picture_files.sh PROGRAM FOLDER [SIDE]...     FOLDER: for the pictures, kept if there
# Each figure is the least of several runs that take turns; user and system time together.
set -euo pipefail

readonly runs=5
program=$1
folder=$2
shift 2
sides=("$@")
if ((${#sides[@]} == 0)); then sides=(1024 4096 8192); fi
mkdir -p "$folder"
cd "$folder"

# A picture as smooth and as noisy as a photograph, letters with soft edges, and single pixels.
makePictures() {  # side
  local side=$1 band
  [[ -e picture-$side.png ]] || {
    for band in 1 2 3; do
      vips perlin "band-$band.v" "$side" "$side" --cell-size 200 --seed "$band"
    done
    vips bandjoin "band-1.v band-2.v band-3.v" bands.v
    vips linear bands.v shades.v 100 128
    vips gaussnoise noise.v "$side" "$side" --sigma 2 --seed 7
    vips add shades.v noise.v sum.v
    vips cast sum.v "picture-$side.png" uchar
    rm -f ./*.v
  }
  [[ -e letters-$side.png ]] || {
    vips text text.v "Gold and glass" --width $((side * 9 / 10)) --height $((side * 9 / 10)) --font "Liberation Sans Bold"
    vips gravity text.v "letters-$side.png" centre "$side" "$side"
    rm -f text.v
  }
  [[ -e pixels-$side.png ]] || {
    vips xyz places.v "$side" "$side"
    vips linear places.v sides.v "1 -1" 0
    vips bandmean sides.v mean.v
    vips linear mean.v parity.v 2 $((2 * side))
    vips remainder_const parity.v odd.v 2
    vips linear odd.v "pixels-$side.png" 255 0 --uchar
    rm -f ./*.v
  }
}

# "seconds kilobytes" of one run
measure() {
  local said
  said=$({ /usr/bin/time -f 'TIME %U %S %M' "$@" >/dev/null; } 2>&1) || { echo "$said" >&2; return 1; }
  awk '/^TIME/ {printf "%.2f %d\n", $2 + $3, $4}' <<<"$said"
}

printf '%-6s %-28s %8s %8s %8s\n' side run "CPU s" ratio MiB
for side in "${sides[@]}"; do
  makePictures "$side"
  names=("vips invert" "letters, radius 10" "letters, radius 150" "single pixels, radius 150")
  declare -A seconds=() kilobytes=()
  for ((run = 0; run < runs; ++run)); do
    for name in "${names[@]}"; do
      case $name in
        vips*) command=(vips invert "picture-$side.png" inverted.png) ;;
        letters*10) command=("$program" apply "picture-$side.png" --mask "letters-$side.png" --set radius=10) ;;
        letters*) command=("$program" apply "picture-$side.png" --mask "letters-$side.png" --set radius=100) ;;
        *) command=("$program" apply "picture-$side.png" --mask "pixels-$side.png" --set radius=100) ;;
      esac
      if [[ $name != vips* ]]; then command+=(--quiet -o applied.png); fi
      read -r taken memory < <(measure "${command[@]}")
      least=${seconds[$name]:-$taken}
      seconds[$name]=$(awk -v a="$taken" -v b="$least" 'BEGIN {print a < b ? a : b}')
      if ((memory > ${kilobytes[$name]:-0})); then kilobytes[$name]=$memory; fi
    done
  done
  for name in "${names[@]}"; do
    awk -v side="$side" -v name="$name" -v taken="${seconds[$name]}" \
      -v of="${seconds[vips invert]}" -v memory="${kilobytes[$name]}" \
      'BEGIN {printf "%-6d %-28s %8.2f %8.2f %8.0f\n", side, name, taken, taken / of, memory / 1024}'
  done
done
