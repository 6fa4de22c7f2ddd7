#!/usr/bin/env bash
# Paints the sample pictures and renders them.
#   samples/render_demo.sh PROGRAM_FOLDER OUT_FOLDER
set -euo pipefail

programs=$1
out=$2
mkdir -p "$out/samples"
"$programs/morvalis_samples" "$out/samples"

list=()
render() {  # name, what it shows, source, argument...
  local name=$1 shows=$2 source=$3
  shift 3
  "$programs/morvalis" apply "$out/samples/$source" -o "$out/$name.png" --seed 1 --quiet "$@"
  list+=("$(printf '  %-26s %s' "$out/$name.png" "$shows")")
  echo "  $name"
}

letters=(--mask "$out/samples/letters.png")

render default "the letters with every setting at its default" boards.jpg "${letters[@]}"

render wood "the letters turned from the boards themselves" boards.jpg "${letters[@]}" \
  --set shape=crown --set radius=34 --set height=45 --set textureChoice=none \
  --set gloss=40 --set glare=35 --set light1Dir=-0.2,-0.57,0.8 --set light2Color=14000,10000,7000

render gold "polished gold: a preset as it is" boards.jpg "${letters[@]}" \
  --preset "$(dirname "${BASH_SOURCE[0]}")/../presets/gold.q9q"

render glass "clear glass with caustic light" boards.jpg "${letters[@]}" \
  --environment "$out/samples/sky.bmp" --set textureChoice=none --set radius=45 \
  --set glassiness=70 --set caustic=100 --set reflection=40 --set gloss=90 --set glare=35 \
  --set light2Color=20000,22000,26000 --set blendMode=screen

render copper "hammered copper, tarnished in its hollows" boards.jpg "${letters[@]}" \
  --environment "$out/samples/copper.bmp" --set shape=groove --set radius=50 --set height=20 \
  --set textureChoice=cells --set texture=16 --set textureScale=80 --set reflection=80 \
  --set tarnish=100 --set tarnishColor=19000,36000,30000

render leather "a leather relief, read from a picture file" boards.jpg "${letters[@]}" \
  --texture "$out/samples/leather.bmp" --set shape=round --set radius=36 --set height=45 \
  --set texture=9 --set textureScale=62 --set gloss=35 --set glare=45 \
  --set light1Dir=-0.2,-0.57,0.8 --set light2Color=9000,7000,6000

render film "dark glass under an iridescent film" boards.jpg "${letters[@]}" \
  --environment "$out/samples/sky.bmp" --set textureChoice=none --set radius=50 \
  --set glassiness=80 --set caustic=90 --set reflection=50 --set iriColors=45 \
  --set light2Color=24000,24000,24000

render stone "cut into stone; a grey picture stays grey" slate.png "${letters[@]}" \
  --set shape=chisel --set radius=26 --set height=-60 --set textureChoice=clouds \
  --set texture=12 --set textureScale=60 --set gloss=12 --set light1Dir=-0.17,-0.57,0.8 \
  --set light2Color=9000,9000,9000

render steel "a steel emblem, selected by its own transparency" emblem.png \
  --environment "$out/samples/studio.bmp" --set radius=15 --set textureChoice=none \
  --set reflection=70 --set gloss=70 --set glare=40

for look in chrome silver clear-glass; do
  render "slanted-$look" "thin slanted letters" ground.png \
    --mask "$out/samples/slanted.png" --preset "$look" --set radius=8
  render "slanted-$look-4" "the same, rendered four times as large" ground.png \
    --mask "$out/samples/slanted-4.png" --supersample 4 --preset "$look" --set radius=8
done

echo
echo "Rendered (the pictures they were made from are in $out/samples):"
printf '%s\n' "${list[@]}"
