#!/usr/bin/env bash
# Opens the dialog on a screen of its own and lets another process read and use it by AT-SPI.
#   scripts/check_screen_reader.sh PROGRAM
# 77, which ctest takes for skipped, without what it needs.
set -euo pipefail

program=$(readlink -f "$1")
reader=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/../tests/desktop/screen_reader.py")
list=${reader%.py}.txt
launcher=/usr/libexec/at-spi-bus-launcher
python=/usr/bin/python3  # Debian's, which has what its packages bring

skip() { echo "check_screen_reader: no $1; nothing is read"; exit 77; }
for name in dbus-run-session Xvfb "$launcher" "$python"; do
  command -v "$name" >/dev/null || skip "$name"
done
"$python" -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null ||
  skip "AT-SPI for Python (gir1.2-atspi-2.0, python3-gi)"

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -m 700 "$folder/run"
printf 'P6 400 300 255\n' >"$folder/in.ppm"
head -c 360000 /dev/zero >>"$folder/in.ppm"
export HOME=$folder XDG_CONFIG_HOME=$folder XDG_RUNTIME_DIR=$folder/run
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
unset MORVALIS_SCALE DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS

# Everything that is started ends with the shell in it.
session() {
  trap 'kill $(jobs -p) 2>/dev/null; wait' EXIT
  coproc SCREEN { exec Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>&1 >/dev/null 2>&1; }
  read -r -t 60 display <&"${SCREEN[0]}"
  export DISPLAY=:$display
  "$launcher" --launch-immediately >/dev/null 2>&1 &
  "$program" edit "$folder/in.ppm" -o "$folder/out.png" >"$folder/said" 2>&1 &
  local edit=$!
  "$python" "$reader" "$list"
  if ! wait "$edit" || [[ ! -s $folder/out.png ]]; then
    cat "$folder/said" >&2
    echo "check_screen_reader: OK made no picture" >&2
    return 1
  fi
}
export -f session
export program reader list folder launcher python
dbus-run-session -- bash -euo pipefail -c session 2> >(grep -v '^dbus-daemon' >&2)
