#!/usr/bin/env bash
# Makes the presets of this folder, and the pictures that they name.
#   presets/make_presets.sh PROGRAM_FOLDER
set -euo pipefail

programs=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")"
pictures="environments and textures"
mkdir -p "$pictures"
painted=$(mktemp -d)
trap 'rm -rf "$painted"' EXIT
"$programs/morvalis_samples" "$painted"
for picture in studio sky copper ivory stone neon leather hammered; do
  cp "$painted/$picture.bmp" "$pictures/"
done
cp ../resources/bitmaps/204-environment.bmp "$pictures/golden room.bmp"

# NAME ENVIRONMENT SETTING=VALUE...; a texture file follows as texture-file=NAME.
preset() {
  local name=$1 environment=$2
  local arguments=(--environment "$pictures/$environment.bmp")
  shift 2
  for setting in "$@"; do
    case $setting in
      texture-file=*) arguments+=(--texture "$pictures/${setting#*=}.bmp") ;;
      *) arguments+=(--set "$setting") ;;
    esac
  done
  rm -f "$name.q9q"
  "$programs/morvalis" preset save "$name.q9q" "${arguments[@]}"
  echo "  $name"
}

preset "gold" "golden room" radius=50 textureChoice=none reflection=96 gloss=70 glare=40
preset "hammered gold" "golden room" radius=40 texture-file=hammered texture=36 textureScale=52 \
  reflection=94 gloss=60 glare=35
preset "silver" "studio" radius=46 textureChoice=none reflection=94 gloss=80 glare=35 \
  light2Color=12000,13000,15000
preset "brass" "golden room" shape=crown radius=36 height=50 textureChoice=brushed texture=8 \
  textureScale=60 reflection=82 gloss=45 glare=45 light1Color=62000,60000,44000 \
  tarnish=30 tarnishColor=16000,14000,5000
preset "old copper" "copper" shape=groove radius=50 height=20 textureChoice=cells texture=16 \
  textureScale=80 reflection=80 tarnish=100 tarnishColor=19000,36000,30000
preset "dark steel" "studio" shape=chisel radius=24 textureChoice=brushed texture=3 textureScale=58 \
  reflection=88 gloss=60 glare=35 light1Color=30000,32000,36000 light2Color=9000,9500,11000
preset "chrome" "sky" shape=round radius=50 textureChoice=none reflection=100 gloss=90 glare=30
preset "clear glass" "sky" textureChoice=none radius=45 glassiness=70 caustic=100 reflection=40 \
  gloss=90 glare=35 light2Color=20000,22000,26000 blendMode=screen
preset "green glass" "studio" textureChoice=none radius=45 glassiness=85 caustic=80 reflection=45 \
  gloss=90 glare=35 light1Color=22000,65535,34000 light2Color=6000,26000,14000
preset "soap bubble" "sky" textureChoice=none radius=50 glassiness=72 caustic=60 reflection=60 \
  iriColors=38 iridescence=90 gloss=85 glare=30 light2Color=26000,26000,30000 blendMode=screen
preset "oil film" "sky" textureChoice=none radius=50 glassiness=80 caustic=90 reflection=50 \
  iriColors=45 light2Color=24000,24000,24000
preset "ivory" "ivory" shape=crown radius=36 height=50 textureChoice=none reflection=88 gloss=25 \
  glare=70 light2Color=9000,8000,6000 tarnish=60 tarnishColor=24000,15000,7000
preset "carved stone" "stone" shape=chisel radius=26 height=-60 textureChoice=clouds texture=22 \
  textureScale=60 reflection=80 gloss=8 light1Dir=-0.4,-0.5,0.75 light2Color=6000,6000,6000
preset "leather" "studio" texture-file=leather shape=round radius=36 height=45 texture=9 \
  textureScale=62 gloss=35 glare=45 light1Dir=-0.2,-0.57,0.8 light1Color=50000,37000,27000 \
  light2Color=9000,7000,6000
preset "neon rim" "neon" shape=round radius=40 height=60 textureChoice=none reflection=100 gloss=20 \
  glare=20 blendMode=screen
