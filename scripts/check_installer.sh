#!/usr/bin/env bash
# Tries the installer for Windows under Wine, in a Windows of its own: silently, beside editors that
# the script makes up; over an earlier installation; and away again, after which nothing is left but
# what was there before. Then by hand, with one editor left out, where a screen can be made.
#   scripts/check_installer.sh [SETUP.exe]      without one, one is made of the modules that are built
# Ends with 77 where it cannot be tried. Runs as the test windows_installer.
set -euo pipefail
scripts=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/folder"
if (($# > 0)); then
  cp "$1" "$work/folder/setup.exe"
else
  for program in makensis zip; do
    command -v "$program" >/dev/null || { echo "check_installer: $program is missing"; exit 77; }
  done
  bash "$scripts/make_package.sh" "$work/packages" >/dev/null
  mv "$work"/packages/*-setup.exe "$work/folder/setup.exe"
fi
drive=$work/wine-prefix-64/drive_c
target="$drive/Program Files/Filters of mine"

wine() { bash "$scripts/run_wine.sh" 64 "$work/folder" "$@"; }
fail() {
  echo "check_installer: $*" >&2
  exit 1
}
filesOf() { (cd "$drive" && find . -type f -not -path './windows/*' -not -path './users/*' | sort); }
valueOf() {  # VIEW
  wine reg.exe query 'HKLM\SOFTWARE\Quorrelin\Morvalis\2.08f' /v EnviroPath "/reg:$1" 2>/dev/null |
    tr -d '\r' | sed -n 's/^ *EnviroPath *REG_SZ *//p'
}

wine cmd.exe /c "exit 0" || exit $?  # 77: no Wine here
for bits in 64 32; do
  mkdir -p "$drive/Made up/Editor $bits/Plug-ins"
  wine reg.exe add 'HKLM\SOFTWARE\Adobe\Photoshop\150.0' /v PluginPath \
    /d "C:\\Made up\\Editor $bits\\Plug-ins\\" "/reg:$bits" /f >/dev/null
done
wine reg.exe add 'HKLM\SOFTWARE\Adobe\Photoshop\90.0' /v ApplicationPath /d 'C:\Gone' /reg:64 /f >/dev/null
mkdir -p "$drive/Made up/paint/Effects"
wine reg.exe add 'HKLM\SOFTWARE\paint.net' /v TARGETDIR /d 'C:\Made up\paint' /reg:64 /f >/dev/null
echo "an editor's own" >"$drive/Made up/Editor 64/Plug-ins/Other.8bf"
before=$(filesOf)

# As a line of its own: the folder stands without quotes.
echo 'setup.exe /S /D=C:\Program Files\Filters of mine' >"$work/folder/install.bat"
wine cmd.exe /c install.bat >/dev/null
for place in "Made up/Editor 64/Plug-ins" "Made up/Editor 32/Plug-ins" "Made up/paint/Effects"; do
  [[ -s $drive/$place/Morvalis.8bf ]] || fail "no module in $place"
done
cmp -s "$drive/Made up/Editor 32/Plug-ins/Morvalis.8bf" "$target/32-bit/Morvalis.8bf" ||
  fail "a 32-bit editor has another module than the 32-bit one"
for file in README.txt LICENSE.txt Uninstall.exe "environments and textures/presets/brass.q9q"; do
  [[ -n $(find "$target" -ipath "*/$file") ]] || fail "no $file"
done
for view in 64 32; do
  [[ $(valueOf $view) == 'C:\Program Files\Filters of mine\environments and textures\' ]] ||
    fail "the pictures are not remembered for $view-bit modules: '$(valueOf $view)'"
done

# A preset of the user's stays, an older module goes.
echo mine >"$target/environments and textures/presets/Mine.q9q"
echo old >"$target/64-bit/Morvalis.8bf"
wine setup.exe /S  # where it was
cmp -s "$target/64-bit/Morvalis.8bf" "$drive/Made up/Editor 64/Plug-ins/Morvalis.8bf" ||
  fail "the upgrade has left an old module"
[[ -s "$target/environments and textures/presets/Mine.q9q" ]] || fail "the upgrade has taken a preset"

# It goes on in a copy of itself, so that its own file can go.
cat >"$work/folder/remove.bat" <<'BATCH'
"C:\Program Files\Filters of mine\Uninstall.exe" /S
for /l %%i in (1,1,60) do if exist "C:\Program Files\Filters of mine\Uninstall.exe" ping -n 2 127.0.0.1 >nul
ping -n 3 127.0.0.1 >nul
BATCH
wine cmd.exe /c remove.bat >/dev/null
left=$(filesOf | grep -v '/Mine.q9q$' || true)
[[ $left == "$before" ]] || fail "the files differ afterwards: $(diff <(echo "$before") <(echo "$left"))"
[[ -s "$target/environments and textures/presets/Mine.q9q" ]] || fail "a preset of the user's is gone"
[[ -z $(valueOf 64)$(valueOf 32) ]] || fail "the registry still names the pictures"

for program in Xvfb xdotool; do
  command -v "$program" >/dev/null || {
    echo "check_installer: installs, upgrades and removes; not tried by hand, $program is missing"
    exit 0
  }
done
rm -r "$target"
answer() {  # TITLE KEY...
  local title=$1 turn
  shift
  for turn in {1..300}; do
    if xdotool search --onlyvisible --name "$title" >/dev/null 2>&1; then break; fi
    sleep 0.2
  done
  ((turn < 300)) || fail "no window '$title'"
  sleep 1
  xdotool key "$@"
}
Xvfb -displayfd 1 -screen 0 800x600x24 >"$work/display" 2>/dev/null &
screen=$!
hand=
trap 'kill $screen $hand 2>/dev/null || true; rm -rf "$work"' EXIT
for turn in {1..100}; do
  if [[ -s $work/display ]]; then break; fi
  sleep 0.1
done
export DISPLAY=:$(<"$work/display")
wine setup.exe &
hand=$!
answer 'Setup: Installation Options' Down space Return
answer 'Setup: Installation Folder' Return
answer 'Setup: Completed' Return
wait $hand
target="$drive/Program Files/Morvalis"
[[ -s $target/64-bit/Morvalis.8bf ]] || fail "nothing is installed by hand"
[[ ! -e $drive/Made\ up/Editor\ 64/Plug-ins/Morvalis.8bf ]] || fail "an editor without a tick has the module"
[[ -s $drive/Made\ up/Editor\ 32/Plug-ins/Morvalis.8bf ]] || fail "a ticked editor has no module"
sed -i 's/Filters of mine/Morvalis/g; s/ .S$//' "$work/folder/remove.bat"
wine cmd.exe /c remove.bat >/dev/null &
hand=$!
answer 'Uninstall: Confirmation' Return
wait $hand
left=$(filesOf)
[[ $left == "$before" ]] || fail "the files differ afterwards: $(diff <(echo "$before") <(echo "$left"))"
echo "check_installer: installs, upgrades and removes, silently and by hand"
