#!/usr/bin/env bash
# Runs a command on every C++ source file of the project, some files a time.
#   scripts/each_source.sh [--units] COMMAND [ARGUMENT]...     --units: only .cpp, one a time
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

names=(-name '*.cpp' -o -name '*.h')
filesATime=20
if [[ ${1:-} == --units ]]; then
  names=(-name '*.cpp')
  filesATime=1
  shift
fi
find . \( -path './.git' -o -path './build*' -o -path './out' \) -prune -o \
  -type f \( "${names[@]}" \) -print0 | LC_ALL=C sort -z |
  xargs -0 -r -n "$filesATime" -P "$(nproc)" "$@"
