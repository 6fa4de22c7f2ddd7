#!/usr/bin/env bash
# Makes the presets of this folder, and the pictures that they name.
#   presets/make_presets.sh PROGRAM_FOLDER
set -euo pipefail

programs=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")"
pictures="environments and textures"
painted=$(mktemp -d)
trap 'rm -rf "$painted"' EXIT
mkdir -p "$pictures"
"$programs/morvalis_samples" "$painted"
cp "$painted"/{hammered,leather}.bmp "$pictures/"

# NAME BEND LAMP PERCENT:RED,GREEN,BLUE...; bands of colour from the top (0) to the bottom (100).
# BEND is LEFT,RIGHT: by how many percent the bands sink towards either side, so that the two flanks
# of an upright stem differ from its ridge and stay off the dark band. With "rings" the bands lie
# around the middle instead, each where surfaces of one steepness look: 0 is flat, 100 a slope of
# one radian. LAMP is X,Y,SIZE in percent and the brightness added in its middle. In the rooms a
# change from dark to bright takes 6 of the 64 rows or more, and lies below the middle, where
# upright edges look; otherwise the least unevenness of a surface would turn into specks.
environment() {
  local name=$1 bend=$2 lamp=$3
  shift 3
  LC_ALL=C awk -v bend="$bend" -v lamp="$lamp" -v bands="$*" '
    function limited(value) { return value < 0 ? 0 : value > 255 ? 255 : int(value + 0.5) }
    function tangent(angle) { return sin(angle) / cos(angle) }
    BEGIN {
      side = 64
      split(bend, sink, ",")
      split(lamp, spot, ",")
      count = split(bands, band, " ")
      for (i = 1; i <= count; i++) {
        split(band[i], part, ":")
        place[i] = part[1]
        split(part[2], colour, ",")
        for (k = 1; k <= 3; k++) tone[i, k] = colour[k]
      }
      printf "P3 %d %d 255\n", side, side
      for (y = 0; y < side; y++)
        for (x = 0; x < side; x++) {
          u = (x + 0.5) * 100 / side
          v = (y + 0.5) * 100 / side
          if (bend == "rings")
            at = 100 * atan2(sqrt(tangent((u - 50) / 50) ^ 2 + tangent((v - 50) / 50) ^ 2), 1)
          else
            at = v - sink[u < 50 ? 1 : 2] * ((u - 50) / 50) ^ 2
          for (i = 1; i < count - 1 && at > place[i + 1]; i++);
          share = (at - place[i]) / (place[i + 1] - place[i])
          share = share < 0 ? 0 : share > 1 ? 1 : share
          off = ((u - spot[1]) ^ 2 + (v - spot[2]) ^ 2) / spot[3] ^ 2
          for (k = 1; k <= 3; k++)
            print limited(tone[i, k] + (tone[i + 1, k] - tone[i, k]) * share + spot[4] * exp(-off))
        }
    }' > "$painted/$name.ppm"
  "$programs/morvalis_sheet" "$pictures/$name.bmp" 1 64 "$painted/$name.ppm"
}

environment "golden room" 9,5 22,18,24,170 0:244,176,62 28:255,214,112 48:248,190,78 \
  58:230,160,50 68:52,26,6 78:158,96,28 100:206,146,62
environment "brass room" 9,5 22,18,22,120 0:176,140,62 28:240,222,140 48:206,174,88 \
  58:176,140,58 68:50,36,10 78:124,92,34 100:184,150,78
environment "silver room" 9,5 24,18,22,80 0:58,64,72 28:186,194,203 47:200,207,215 \
  56:255,255,255 68:74,80,90 78:130,138,154 100:176,184,198
environment "chrome room" 9,5 24,18,20,90 0:16,28,56 28:111,143,192 46:176,198,226 56:255,255,255 \
  69:30,33,42 80:92,100,116 100:160,168,184
environment "steel room" 9,5 24,20,18,60 0:10,11,14 28:176,182,190 46:78,82,90 60:62,66,73 \
  73:6,6,8 84:58,62,70 100:100,104,112
environment "copper room" 14,8 26,20,22,60 0:120,52,26 30:250,170,112 54:214,116,66 68:96,36,16 \
  80:136,60,32 100:230,150,100
environment "ivory" 8,6 30,24,34,30 0:240,230,206 30:250,244,228 55:236,222,194 75:186,160,120 \
  100:102,76,48
environment "stone" 6,6 30,24,34,24 0:204,204,201 50:148,144,138 75:92,86,80 100:50,46,43
environment "leather brown" 6,6 30,24,30,30 0:148,86,52 50:112,60,34 100:26,11,5
environment "window" 0,0 26,20,16,220 0:120,140,165 22:40,52,66 40:6,8,11 62:6,8,11 80:60,74,88 \
  100:176,194,208
environment "bubble" rings 30,24,8,200 0:3,4,6 24:12,12,24 38:70,36,112 48:30,92,160 \
  56:60,150,130 63:150,140,70 70:190,84,130 77:96,90,190 84:130,190,220 114:170,215,230
environment "neon" rings 0,0,1,0 0:255,84,180 20:255,40,150 42:150,4,90 56:22,6,44 68:0,96,170 \
  80:214,255,255 89:0,196,255 98:0,70,140 114:0,30,70

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

preset "gold" "golden room" radius=50 textureChoice=none reflection=100 gloss=70 glare=40
preset "cast gold" "golden room" shape=crown radius=44 textureChoice=none reflection=100 gloss=70 \
  glare=40
preset "hammered gold" "golden room" radius=40 texture-file=hammered texture=60 textureScale=45 \
  reflection=100 gloss=60 glare=35
preset "silver" "silver room" radius=46 textureChoice=none reflection=100 gloss=70 glare=35
preset "brass" "brass room" shape=crown radius=36 height=50 textureChoice=brushed texture=3 \
  textureScale=60 reflection=95 gloss=45 glare=45 light1Color=62000,60000,44000 \
  tarnish=55 tarnishColor=16000,14000,5000
preset "old copper" "copper room" shape=groove radius=50 height=35 textureChoice=marble \
  texture=18 textureScale=68 reflection=92 gloss=15 glare=60 \
  tarnish=100 tarnishColor=19000,36000,30000
preset "dark steel" "steel room" shape=chisel radius=24 height=50 textureChoice=brushed texture=5 \
  textureScale=75 reflection=100 gloss=60 glare=35 light1Color=30000,32000,36000
preset "chrome" "chrome room" radius=50 height=50 textureChoice=none reflection=100 gloss=90 \
  glare=30
preset "ivory" "ivory" shape=crown radius=36 height=50 textureChoice=none reflection=96 gloss=25 \
  glare=70 tarnish=60 tarnishColor=24000,15000,7000
preset "carved stone" "stone" shape=chisel radius=26 height=-75 textureChoice=clouds texture=40 \
  textureScale=60 reflection=100 gloss=4 light1Dir=-0.4,-0.5,0.75
preset "leather" "leather brown" texture-file=leather radius=36 height=45 texture=8 \
  textureScale=40 reflection=97 gloss=16 glare=60 light1Dir=-0.2,-0.57,0.8 \
  light1Color=65535,60000,52000
preset "clear glass" "window" radius=45 textureChoice=none glassiness=50 caustic=30 reflection=45 \
  gloss=100 glare=40 light2Color=65535,65535,65535
preset "green glass" "window" radius=45 textureChoice=none glassiness=60 caustic=40 reflection=40 \
  gloss=90 glare=35 light1Color=26000,65535,36000 light2Color=20000,58000,30000
preset "soap bubble" "bubble" radius=50 height=34 textureChoice=none reflection=100 gloss=90 \
  glare=15 blendMode=screen
preset "neon rim" "neon" radius=24 height=42 textureChoice=none reflection=100 gloss=0 glare=0
preset "oil film" "chrome room" textureChoice=none radius=50 glassiness=80 caustic=90 \
  reflection=50 iriColors=45 light2Color=24000,24000,24000
