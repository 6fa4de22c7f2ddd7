#!/usr/bin/env bash
# Tries the Debian packages of a folder on a bare Debian 12: installs them, runs them, puts a later
# version over them, and removes them, after which nothing of them may be left. Needs root.
#   scripts/check_debian_packages.sh FOLDER [ROOT]      ROOT: a bare system; made when it is not there
set -euo pipefail
folder=$(readlink -f "$1")
base=${2:-/var/tmp/morvalis-debian-12}
root=$base.try

if [[ ! -d $base/usr ]]; then
  bash "$(dirname "${BASH_SOURCE[0]}")/install_packages.sh" debootstrap
  debootstrap --variant=minbase bookworm "$base" >/dev/null
fi
rm -rf "$root"
cp -a "$base" "$root"
trap 'rm -rf "$root"' EXIT
mkdir "$root/packages" "$root/later"
cp "$folder"/*.deb "$root/packages/"

# The same again under a later version.
for package in "$folder"/*.deb; do
  dpkg-deb -R "$package" "$root/later/tree"
  sed -i -E 's/^(Version: .*)/\1+later/; s/\(= ([^)]*)\)/(= \1+later)/g' "$root/later/tree/DEBIAN/control"
  dpkg-deb --root-owner-group -b "$root/later/tree" "$root/later/$(basename "$package")" >/dev/null
  rm -rf "$root/later/tree"
done

cat >"$root/try.sh" <<'INSIDE'
set -eu
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 HOME=/root
say() { echo "check_debian_packages: $*"; }
install() { apt-get -q -y --no-install-recommends install "$@" >/apt.log 2>&1 || { cat /apt.log; exit 1; }; }
apt-get -q update >/apt.log 2>&1
cd /root
{ printf 'P5 60 40 255\n'; head -c 2400 /dev/zero | tr '\0' '\200'; } >grey.pgm
try() {
  morvalis apply grey.pgm --preset gold --set radius=8 --seed 5 --color --quiet -o "$1.png"
  morvalis apply grey.pgm --preset gold --set radius=8 --seed 5 --color --quiet -o "$1.webp"
  test -s "$1.png" && test -s "$1.webp"
}

install /packages/morvalis_*.deb
try alone
test "$(morvalis preset list | grep -c .)" -ge 16
test -s /usr/share/man/man1/morvalis.1.gz || grep -q path-exclude /etc/dpkg/dpkg.cfg.d/* 
if morvalis about 2>said; then exit 1; fi
grep -q 'is not installed' said
say "the program runs alone"

install /packages/morvalis-window_*.deb
if QT_QPA_PLATFORM= DISPLAY= morvalis about 2>said; then exit 1; fi
grep -q 'there is no display' said
QT_QPA_PLATFORM=offscreen timeout 5 morvalis about || test $? = 124
say "its windows open"

install /packages/gimp-morvalis_*.deb
cat >gimp.scm <<'SCRIPT'
(let* ((image (car (gimp-file-load RUN-NONINTERACTIVE "grey.pgm" "grey.pgm")))
       (layer (aref (cadr (gimp-image-get-layers image)) 0)))
  (gimp-image-convert-rgb image)
  (plug-in-morvalis RUN-NONINTERACTIVE image layer "gold" "radius=8" 5)
  (file-png-save RUN-NONINTERACTIVE image layer "gimp.png" "gimp.png" 0 9 0 0 0 0 0))
SCRIPT
gimp -i -d -f -b '(load "gimp.scm")' -b '(gimp-quit 1)' >gimp.log 2>&1 || true
test -s gimp.png || { cat gimp.log; exit 1; }
morvalis apply gimp.png --mask none --set radius=2 --seed 1 --quiet -o again.png
say "GIMP runs the plug-in"

install /packages/inkscape-morvalis_*.deb
cat >drawing.svg <<'DRAWING'
<svg xmlns="http://www.w3.org/2000/svg" width="90" height="90"><circle id="disc" cx="45" cy="45" r="30"/></svg>
DRAWING
/usr/bin/python3 /usr/share/inkscape/extensions/morvalis/morvalis_render.py --id=disc --preset="old copper" \
  drawing.svg >lit.svg
grep -q '<image' lit.svg
say "Inkscape's extension runs"

install /packages/krita-morvalis_*.deb
mkdir scripts
cat >scripts/look.py <<'SCRIPT'
import sys
sys.path.insert(0, "/usr/share/krita/pykrita")
from morvalis import layers
def __main__(*_):
    print("KINDS", sorted(layers.KINDS))
SCRIPT
PYTHONPATH=/root/scripts PYTHONDONTWRITEBYTECODE=1 QT_QPA_PLATFORM=offscreen \
  timeout 300 kritarunner -s look >krita.log 2>&1 || true
grep -q "KINDS" krita.log || { tail krita.log; exit 1; }
say "Krita loads the plug-in"

install /later/*.deb
test "$(dpkg-query -W -f '${Version}' gimp-morvalis)" = "$(dpkg-query -W -f '${Version}' morvalis)"
dpkg-query -W -f '${Version}' morvalis | grep -q later
try later
cmp alone.png later.png
say "a later version takes their place"

apt-get -q -y purge morvalis morvalis-window {gimp,inkscape,krita}-morvalis >/apt.log 2>&1
rm -rf /packages /later /root /tmp/* /apt.log
left=$(find / -xdev \( -path /proc -o -path /sys -o -path /dev \) -prune -o -iname '*morvalis*' -print)
test -z "$left" || { say "left behind: $left"; exit 1; }
say "they go without leaving anything"
INSIDE

unshare --mount bash -c "mount --bind /proc '$root/proc' && mount --bind /dev '$root/dev' &&
  cp -L /etc/resolv.conf '$root/etc/' && chroot '$root' bash /try.sh"
