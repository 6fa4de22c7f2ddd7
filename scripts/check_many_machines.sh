#!/usr/bin/env bash
# Runs the commands of docs/many-machines.md as they stand there, with this computer for all.
#   scripts/check_many_machines.sh PROGRAM DOCUMENT
# 77, which ctest takes for skipped, without GNU parallel.
set -euo pipefail

program=$(readlink -f "$1")
document=$(readlink -f "$2")
if ! parallel --version 2>/dev/null | grep -q 'GNU parallel'; then
  echo "check_many_machines: no GNU parallel; the commands are not run"
  exit 77
fi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# The n-th block of commands.
block() {
  awk -v wanted="$1" '/^```sh/ { n++; inside = 1; next } /^```/ { inside = 0 }
    inside && n == wanted' "$document"
}
fail() { echo "check_many_machines: $1" >&2; exit 1; }

mkdir bin icons
ln -s "$program" bin/morvalis
export PATH=$PWD/bin:$PATH HOME=$PWD
echo '2/:' >machines
for name in a b c 'd e'; do
  printf 'P6 40 30 255\n' >icons/"$name".ppm
  head -c 3600 /dev/zero | tr '\0' "${name:0:1}" >>icons/"$name".ppm
  morvalis apply icons/"$name".ppm --set textureChoice=none --quiet -o icons/"$name".png
  rm icons/"$name".ppm
done
cp icons/b.png whole.png
head -c 100 whole.png >icons/b.png

code=0
bash -c "$(block 1)" 2>errors || code=$?
((code == 1)) || { cat errors >&2; fail "one job was to fail, and the exit code is $code"; }
grep -q 'icons/b.png: is damaged or cut off' errors || fail "the reason is not told"
[[ $(ls out) == $'a-gold.png\nc-gold.png\nd e-gold.png' ]] || fail "not the results: $(ls out)"
[[ $(bash -c "$(block 2)") == *"morvalis apply icons/b.png "* ]] || fail "the failed job is not told"

cp whole.png icons/b.png
bash -c "$(block 3)" || fail "the failed job fails again"
for name in a b c 'd e'; do
  morvalis apply icons/"$name".png --preset gold --seed 7 --quiet -o alone.png
  cmp alone.png "out/$name-gold.png" || fail "$name is not what it is alone"
done
((2 * 2 == $(find out -type f | wc -l))) || fail "leftovers in out: $(ls -A out)"
