#!/usr/bin/env bash
# Prints what is in the packages of a folder and what they need, as an SPDX document.
#   scripts/bill_of_materials.sh VERSION FOLDER
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

version=$1
folder=$2

versionOf() {  # Debian package; 0 where it is not installed
  dpkg-query -W -f '${Version}\n' "$1" 2>/dev/null | head -n 1 || echo 0
}

package() {  # ID NAME VERSION LICENCE [SHA256]
  cat <<TEXT

PackageName: $2
SPDXID: SPDXRef-$1
PackageVersion: $3
PackageDownloadLocation: NOASSERTION
FilesAnalyzed: false
PackageLicenseConcluded: NOASSERTION
PackageLicenseDeclared: $4
PackageCopyrightText: NOASSERTION
TEXT
  if [[ -n ${5:-} ]]; then echo "PackageChecksum: SHA256: $5"; fi
}

relate() {
  echo "Relationship: SPDXRef-$1 $2 SPDXRef-$3"
}

moment=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
mapfile -t files < <(cd "$folder" && ls -- *.deb *.zip *.exe 2>/dev/null | LC_ALL=C sort)
sums=$(cd "$folder" && sha256sum -- "${files[@]}")
cat <<TEXT
SPDXVersion: SPDX-2.3
DataLicense: CC0-1.0
SPDXID: SPDXRef-DOCUMENT
DocumentName: morvalis-$version
DocumentNamespace: urn:morvalis:$version:$(sha256sum <<<"$sums" | cut -c 1-32)
Creator: Organization: The Morvalis developers
Created: $(date -u -d "@$moment" +%Y-%m-%dT%H:%M:%SZ)
TEXT

# What is inside; the licences are those of the parts that are.
package CLI11 CLI11 "$(versionOf libcli11-dev)" BSD-3-Clause
package GccRuntime "runtime libraries of GCC" "$(versionOf gcc-mingw-w64-base)" \
  "GPL-3.0-or-later WITH GCC-exception-3.1"
package MingwRuntime "runtime of MinGW-w64" "$(versionOf mingw-w64-common)" \
  "ZPL-2.1"
package Nsis NSIS "$(versionOf nsis)" Zlib
# What Debian brings along.
package Vips libvips "$(versionOf libvips42)" LGPL-2.1-or-later
package Isal ISA-L "$(versionOf libisal2)" BSD-3-Clause
package Zlib zlib "$(versionOf zlib1g)" Zlib
package Fontconfig fontconfig "$(versionOf libfontconfig1)" HPND
package Qt "Qt 6" "$(versionOf libqt6widgets6)" LGPL-3.0-only
package Gimp "GIMP's plug-in library" "$(versionOf libgimp2.0)" LGPL-3.0-or-later

number=0
while read -r sum file; do
  number=$((number + 1))
  id=File$number
  package "$id" "$file" "$version" MIT "$sum"
  relate DOCUMENT DESCRIBES "$id"
  case $file in
    morvalis_*) parts=(CLI11) needs=(Vips Isal Zlib Fontconfig) ;;
    morvalis-window_*) parts=() needs=(Qt Isal Zlib) ;;
    gimp-morvalis_*) parts=() needs=(Gimp Isal Zlib) ;;
    inkscape-morvalis_* | krita-morvalis_*) parts=() needs=() ;;
    *.exe) parts=(GccRuntime MingwRuntime Nsis) needs=() ;;
    *) parts=(GccRuntime MingwRuntime) needs=() ;;
  esac
  for part in "${parts[@]}"; do relate "$id" CONTAINS "$part"; done
  for need in "${needs[@]}"; do relate "$id" DEPENDS_ON "$need"; done
done <<<"$sums"
