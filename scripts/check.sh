#!/usr/bin/env bash
# What everyone runs before a commit: format, includes, build with warnings as errors, tests.
# The whole run, with the sanitizers and the modules for Windows, is `./dev test`.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if command -v clang-format >/dev/null; then
  echo "== Format"
  scripts/each_source.sh clang-format --dry-run -Werror
else
  echo "== Format: not checked, clang-format is not installed (./dev format installs it)"
fi
echo "== Includes"
scripts/check_includes.sh
echo "== Build"
mkdir -p build
cmake --preset desktop-ci >build/configure.log 2>&1 || { cat build/configure.log >&2; exit 1; }
cmake --build --preset desktop-ci
echo "== Tests"
ctest --preset desktop-ci --no-tests=error
