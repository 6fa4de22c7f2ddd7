#!/usr/bin/env bash
# Makes the Debian packages of a build, and looks at them as Debian's own checkers do, where those
# are installed.
#   scripts/make_debian_packages.sh BUILD FOLDER
set -euo pipefail
build=$(readlink -f "$1")
mkdir -p "$2"
folder=$(readlink -f "$2")

rm -rf "$build/cpack"
(cd "$build" && umask 022 && cpack -B "$build/cpack" >"$build/cpack.log" 2>&1) || {
  cat "$build/cpack.log" >&2
  exit 1
}
# CPack has the system's loader look again after every library near its own; none of these is for it.
for package in "$build"/cpack/*.deb; do
  tree=$build/cpack/tree
  dpkg-deb -R "$package" "$tree"
  rm -f "$tree"/DEBIAN/{postinst,postrm}
  dpkg-deb --root-owner-group -Zxz -b "$tree" "$package" >/dev/null
  rm -rf "$tree"
done
cp "$build"/cpack/*.deb "$folder/"
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --pedantic --no-net "$build"/documents/*.metainfo.xml
fi
if command -v lintian >/dev/null; then
  lintian --allow-root --fail-on error,warning "$build"/cpack/*.deb
fi
