#!/usr/bin/env bash
# Adds to the packages in a folder what goes with all of them: notices, a bill of materials, sums.
#   scripts/finish_packages.sh FOLDER
set -euo pipefail
scripts=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
version=$(sed -n 's/^project(morvalis VERSION \([0-9.]*\).*/\1/p' "$scripts/../CMakeLists.txt")
folder=$(readlink -f "$1")

bash "$scripts/third_party.sh" program module installer >"$folder/THIRD-PARTY.txt"
bash "$scripts/bill_of_materials.sh" "$version" "$folder" >"$folder/morvalis-$version.spdx"
cd "$folder"
rm -f SHA256SUMS
sha256sum -- * >SHA256SUMS.new
mv SHA256SUMS.new SHA256SUMS
