#!/usr/bin/env bash
# Writes what every Debian package has to hold besides its files: the copyright with the notices of
# all that has gone into the program, and a changelog.
#   scripts/debian_documents.sh VERSION MAINTAINER FOLDER
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

version=$1
maintainer=$2
folder=$3
moment=$(date -u -R -d "@${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}")
mkdir -p "$folder"

# A text as a paragraph of a copyright file.
indented() {
  sed 's/[[:space:]]*$//; s/^$/./; s/^/ /'
}

{
  cat <<TEXT
Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Morvalis
Comment: The program holds parts of CLI11, whose notice follows, and of the C++
 library of GCC, which its runtime library exception lets stand under any terms.

Files: *
Copyright: $(sed -n 's/^Copyright (c) //p' LICENSE)
License: Expat

Files: CLI11
Copyright: $(sed -n '/^Files: \*/,/^License:/s/^Copyright: //p' /usr/share/doc/libcli11-dev/copyright)
License: BSD-3-clause

License: Expat
TEXT
  sed '1,/^Copyright/d' LICENSE | sed '1{/^$/d}' | indented
  echo
  awk '/^$/ { inside = 0 } named && /^ / { print "License: BSD-3-clause"; inside = 1 }
       inside { print } { named = /^License: BSD-3-clause/ }' \
    /usr/share/doc/libcli11-dev/copyright | sed 's/[[:space:]]*$//'
} >"$folder/copyright"

for package in morvalis morvalis-window {gimp,inkscape,krita}-morvalis; do
  mkdir -p "$folder/$package"
  cat <<TEXT | gzip -9n >"$folder/$package/changelog.gz"
morvalis ($version) stable; urgency=medium

  * Release $version.

 -- $maintainer  $moment
TEXT
done
