#!/usr/bin/env bash
# Packs what Windows users need into build/packages/Morvalis-VERSION-windows.zip, and the same into
# an installer, Morvalis-VERSION-setup.exe; both modules must have been built. The same files give
# the same bytes, whoever packs them and when.
#   scripts/make_package.sh [FOLDER]      FOLDER: instead of build/packages
set -euo pipefail
folder=$(readlink -m "${1:-$(dirname "${BASH_SOURCE[0]}")/../build/packages}")
cd "$(dirname "${BASH_SOURCE[0]}")/.."

readonly kDate="2000-01-01 00:00:00 UTC" # of every file in it

version=$(sed -n 's/^project(morvalis VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=$folder/Morvalis-$version-windows.zip
installer=$folder/Morvalis-$version-setup.exe
script=$PWD/installer/morvalis.nsi
staged=$(mktemp -d)
work=$(mktemp -d)
trap 'rm -rf "$staged" "$work"' EXIT

for bits in 32 64; do
  mkdir "$staged/$bits-bit"
  cp "build/windows-$bits/Morvalis.8bf" "$staged/$bits-bit/"
done
pictures="environments and textures"
# Presets below the folder of this name: opening one tells the module where the pictures are.
mkdir -p "$staged/$pictures/presets"
cp presets/*.q9q "$staged/$pictures/presets/"
cp "presets/$pictures/"*.bmp "$staged/$pictures/"
sed "s/@VERSION@/$version/; s/\$/\r/" docs/windows-readme.txt >"$staged/README.txt"
sed 's/$/\r/' LICENSE >"$staged/LICENSE.txt"
bash scripts/third_party.sh module installer | sed 's/$/\r/' >"$staged/THIRD-PARTY.txt"
mkdir -p "$folder"

export TZ=UTC LC_ALL=C
cd "$staged"
find . -type f -exec chmod 644 {} + -exec touch -d "$kDate" {} +
find . -type f -printf '%P\n' | sort | zip -q -X -9 "$work/package.zip" -@
mv "$work/package.zip" "$package"
echo "${package#"$OLDPWD/"}"

# What the uninstaller takes away again, file by file.
{
  find . -type f -printf '%P\n' | sort | sed 's|/|\\|g; s|.*|Delete "$INSTDIR\\&"|'
  find . -mindepth 1 -type d -printf '%P\n' | sort -r | sed 's|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|'
} >"$work/remove.nsh"
makensis -V2 -DVERSION="$version" -DSTAGED="$staged" -DREMOVE="$work/remove.nsh" \
  -DOUTPUT="$installer" "$script"
echo "${installer#"$OLDPWD/"}"
