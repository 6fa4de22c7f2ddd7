#!/usr/bin/env bash
# Tries the plug-in in GIMP 3, which Debian 13 has: builds it in a Debian 13 of its own and runs the
# tests of GIMP there. Needs root, some 4 GB and, at first, half an hour.
#   scripts/check_gimp3.sh [ROOT]      ROOT: a Debian 13; made when it is not there, and kept
set -euo pipefail
source=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/..")
root=${1:-/var/tmp/morvalis-debian-13}

if [[ ! -d $root/usr ]]; then
  bash "$source/scripts/install_packages.sh" debootstrap
  debootstrap --variant=minbase trixie "$root" >/dev/null
fi
mkdir -p "$root/source" "$root/build"
cat >"$root/try.sh" <<'INSIDE'
set -eu
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 HOME=/root
needed="cmake ninja-build g++ qt6-base-dev libxcb1-dev libvips-dev libfontconfig-dev libisal-dev
  zlib1g-dev pkgconf libvips-tools libcli11-dev libgtest-dev gimp libgimp-3.0-dev xvfb
  xdotool x11-utils"
dpkg-query -W $needed >/apt.log 2>&1 || {
  apt-get -q update >/apt.log 2>&1
  apt-get -q -y --no-install-recommends install $needed >>/apt.log 2>&1 || { cat /apt.log; exit 1; }
}
cmake -S /source -B /build -G Ninja -DCMAKE_BUILD_TYPE=Release -DMORVALIS_BACKEND=desktop \
  >/build.log 2>&1 && cmake --build /build --target morvalis morvalis_gimp_tests >>/build.log 2>&1 ||
  { tail -n 40 /build.log; exit 1; }
ln -sfn /source/presets /presets  # two folders up, as in a tree that has been built
/build/morvalis_gimp_tests
INSIDE
unshare --mount bash -c "mount --bind /proc '$root/proc' && mount --bind /dev '$root/dev' &&
  mount --bind '$source' '$root/source' && cp -L /etc/resolv.conf '$root/etc/' &&
  chroot '$root' bash /try.sh"
