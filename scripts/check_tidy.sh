#!/usr/bin/env bash
# Has clang-tidy read the core, the back ends that run here, and what reads strangers' files, by the
# list of .clang-tidy; nicely, for it runs beside tests. The analyzer, which takes most of the time,
# is left to `./dev tidy`.
#   scripts/check_tidy.sh BUILD      a build by Clang that exports its commands
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

folders=(entry settings geometry shading pictures persistence services dialog vector
         platform/none platform/unix platform/screenless hosts/png_files hosts/small_formats)
find "${folders[@]}" -name '*.cpp' -print0 | LC_ALL=C sort -z |
  xargs -0 -n 4 -P "$(nproc)" nice clang-tidy -p "$1" --quiet --checks='-clang-analyzer-*'
echo "check_tidy: $(find "${folders[@]}" -name '*.cpp' | wc -l) files, nothing found"
