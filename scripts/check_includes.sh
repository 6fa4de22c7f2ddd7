#!/usr/bin/env bash
# shellcheck disable=SC2053 # patterns stand in variables and are meant to match
# Checks who includes what: includes point downwards, the core knows neither a system nor a host,
# and system headers and conditionals stay in their places. Runs as the test include_directions.
#   scripts/check_includes.sh [ROOT]
set -euo pipefail
shopt -s extglob

root=${1:-$(dirname "${BASH_SOURCE[0]}")/..}
cd "$root"

# Level of a folder, or of one file without its ending; the longest match counts. A file includes
# only what stands at its own level or below. Level 0: plain records and the edge to the system.
declare -A levels=(
  [entry/host_interface]=0
  [entry/session_record]=0
  [geometry/field/fast_field_state]=0
  [geometry/pattern_state]=0
  [geometry/preview/preview_state]=0
  [geometry/render_state]=0
  [platform/]=0
  [resources/]=0
  [services/fixed_point]=0
  [services/rectangle]=0
  [services/scaling]=0
  [settings/effect_settings]=0
  [shading/shading_tables]=0
  [vector/]=0

  [entry/handles]=1
  [entry/load_mark]=1
  [services/]=1
  [settings/]=1

  [geometry/]=2
  [pictures/]=2
  [shading/]=2

  [geometry/preview/]=3
  [geometry/render_buffers]=3
  [geometry/render_setup]=3
  [geometry/row_machine]=3
  [geometry/row_requests]=3

  [persistence/]=4

  # Pictures and settings that bring back what is remembered.
  [pictures/run_pictures]=5
  [settings/settings_validation]=5
  [dialog/]=5
  [entry/]=6
)

# The core besides the edge itself.
coreFolder='@(entry|settings|geometry|shading|pictures|persistence|services|dialog|vector|resources)/*'
edgeHeader='platform/+([^/]).h'
backEnd='platform/+([^/])/*'

# What a host may know of the module.
hostMayInclude='@(entry/host_interface.h|platform/windows/windows_api.h|entry/entry_point.h|settings/*|services/rectangle.h|platform/+([^/]).h|dialog/help/key_help.h|platform/desktop/desktop_session.h|platform/unix/*.h|persistence/settings_codec.h|persistence/settings_items.h|persistence/path_parts.h|entry/handles.h|hosts/*)'

# The rooms of the hosts have levels among themselves; the others take what they like.
declare -A roomLevels=(
  [substitute_host]=0
  [process]=0
  [picture_files]=1
  [png_files]=1
  [small_formats]=1
  [formats_library]=2
  [effect_choices]=2
  [effect_runs]=2
  [commands]=3
  [window_commands]=3
  [command_line]=4
  [gimp]=4
)
qtMayStandIn='@(platform/desktop|hosts/window_commands|tests/command_line|tests/desktop|tests/gimp|tests/editors|samples)/*'
vipsMayStandIn='hosts/formats_library/*'
gimpMayStandIn='hosts/gimp/*'
setsMayStandIn='@(vector/*|services/floating_point_modes.cpp|hosts/windows_host/host_manners.cpp)'
mayIncludeAnything='@(tests|bench|fuzz|resources/artwork|samples/dialog_shots)/*'

systemMacro='(^|[^A-Za-z0-9_])(_WIN32|_WIN64|WIN32|_MSC_VER|__MINGW32__|__CYGWIN__|__linux__|__linux|__gnu_linux__|__APPLE__|__unix__|__unix|__FreeBSD__|__ANDROID__)($|[^A-Za-z0-9_])'
directive='^[[:space:]]*#[[:space:]]*(include|if|ifdef|ifndef|elif)'

violations=0
report() {  # file line text
  printf '%s:%s: %s\n' "$1" "$2" "$3"
  violations=$((violations + 1))
}

levelOf() {  # path; leaves the answer in `level`, empty when the table has none
  local key=${1%.*}
  level=${levels[$key]:-}
  while [[ -z $level && $key == */* ]]; do
    key=${key%/*}
    level=${levels[$key/]:-}
  done
}

checkSystemHeader() {  # file line header
  local file=$1 line=$2 header=$3
  if [[ ${header,,} == windows.h ]]; then
    [[ $file == platform/windows/windows_api.h ]] ||
      report "$file" "$line" "may not include <$header>: only platform/windows/windows_api.h does"
  elif [[ $header == Q[A-Z]* || $header == Qt*/* || $header == q[a-z]*.h ]]; then
    [[ $file == $qtMayStandIn ]] ||
      report "$file" "$line" "may not include <$header>: Qt stays in $qtMayStandIn"
  elif [[ $header == vips/* ]]; then
    [[ $file == $vipsMayStandIn ]] ||
      report "$file" "$line" "may not include <$header>: the picture library stays in $vipsMayStandIn"
  elif [[ $header == libgimp*/* || $header == gegl*.h || $header == babl/* ]]; then
    [[ $file == $gimpMayStandIn ]] ||
      report "$file" "$line" "may not include <$header>: GIMP's libraries stay in $gimpMayStandIn"
  elif [[ $header == *intrin.h ]]; then
    [[ $file == $setsMayStandIn ]] ||
      report "$file" "$line" "may not include <$header>: instruction sets stay in $setsMayStandIn"
  elif [[ $file != $mayIncludeAnything && ($file == $coreFolder || $file == $edgeHeader) ]]; then
    # Headers of the C++ library have no ending; anything else is a system's or a library's.
    [[ $header != */* && $header != *.h ]] ||
      report "$file" "$line" "may not include <$header>: the core uses the C++ library only"
  fi
}

checkRooms() {  # file line header, both of hosts
  local file=$1 line=$2 header=$3 from to
  [[ $header == hosts/* ]] || return 0
  from=${file#hosts/} to=${header#hosts/}
  from=${roomLevels[${from%%/*}]:-9} to=${roomLevels[${to%%/*}]:-0}
  ((to <= from)) ||
    report "$file" "$line" "may not include \"$header\": that room stands above this one"
}

checkOwnHeader() {  # file line header
  local file=$1 line=$2 header=$3 level from
  if [[ $file == $mayIncludeAnything ]]; then return; fi
  if [[ ! -f $header ]]; then
    report "$file" "$line" "may not include \"$header\": no such file; paths begin at the top folder"
  elif [[ $file == hosts/* ]]; then
    [[ $header == $hostMayInclude ]] ||
      report "$file" "$line" "may not include \"$header\": hosts know only $hostMayInclude"
    checkRooms "$file" "$line" "$header"
  elif [[ $file == samples/* ]]; then
    [[ $header == samples/* ]] ||
      report "$file" "$line" "may not include \"$header\": samples stand alone"
  elif [[ $file == $backEnd ]]; then
    local folder=${file#platform/}
    folder=platform/${folder%%/*}/
    if [[ $header == $coreFolder || $header == $edgeHeader || $header == "$folder"* ||
          $header == platform/unix/*.h ]]; then
      return
    fi
    report "$file" "$line" "may not include \"$header\": a back end knows the core and itself"
  elif [[ $header == $backEnd ]]; then
    report "$file" "$line" "may not include \"$header\": the core knows no back end"
  elif [[ $header != $coreFolder && $header != $edgeHeader ]]; then
    report "$file" "$line" "may not include \"$header\": the core knows only itself and platform/*.h"
  else
    levelOf "$file"
    from=$level
    levelOf "$header"
    if [[ -z $from || -z $level ]]; then
      report "$file" "$line" "may not include \"$header\": no level stands in the table"
    elif ((level > from)); then
      report "$file" "$line" "may not include \"$header\": level $from must not reach up to $level"
    fi
  fi
}

mapfile -t files < <(find . \( -path './.git' -o -path './build*' -o -path './out' \) -prune -o \
  -type f \( -name '*.h' -o -name '*.hpp' -o -name '*.cpp' -o -name '*.c' -o -name '*.cc' \) \
  -printf '%P\n' | LC_ALL=C sort)
if ((${#files[@]} == 0)); then
  echo "check_includes: no source files below $PWD" >&2
  exit 1
fi

includes=0
for file in "${files[@]}"; do
  if [[ $file != $coreFolder && $file != platform/* && $file != hosts/* && $file != samples/* &&
        $file != $mayIncludeAnything ]]; then
    report "$file" 1 "stands in no folder that the rules know"
  fi
done
while IFS=: read -r file line text; do
  if [[ $text =~ ^[[:space:]]*#[[:space:]]*include[[:space:]]*\<([^>]+)\> ]]; then
    includes=$((includes + 1))
    checkSystemHeader "$file" "$line" "${BASH_REMATCH[1]}"
  elif [[ $text =~ ^[[:space:]]*#[[:space:]]*include[[:space:]]*\"([^\"]+)\" ]]; then
    includes=$((includes + 1))
    header=${BASH_REMATCH[1]}
    if [[ ${header,,} == windows.h ]]; then
      checkSystemHeader "$file" "$line" "$header"
    else
      checkOwnHeader "$file" "$line" "$header"
    fi
  elif [[ $text =~ $systemMacro && $file != platform/export.h && $file != $backEnd ]]; then
    report "$file" "$line" "may not ask for the system (${BASH_REMATCH[2]}): platform/export.h does"
  fi
done < <(grep -HnE "$directive" "${files[@]}")

if ((violations > 0)); then
  echo "check_includes: $violations violations" >&2
  exit 1
fi
echo "check_includes: ${#files[@]} files, $includes includes, all in order"
