#!/usr/bin/env bash
# Has cppcheck read every source file of the core and of the hosts that run here. Runs as the test
# static_checks; ends with 77 where cppcheck is not installed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if ! command -v cppcheck >/dev/null; then
  echo "check_static: cppcheck is not installed"
  exit 77
fi
folders=(entry settings geometry shading pictures persistence services dialog vector
         platform/none platform/unix platform/screenless)
for room in hosts/*/; do
  # The other two need headers that are not everywhere.
  case $room in hosts/windows_host/ | hosts/gimp/) ;; *) folders+=("$room") ;; esac
done
cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --quiet -I. \
  --suppress=missingInclude --suppress=missingIncludeSystem \
  --suppressions-list=scripts/cppcheck.suppressions --error-exitcode=1 -j"$(nproc)" \
  "${folders[@]}"
echo "check_static: $(find "${folders[@]}" -name '*.cpp' | wc -l) files, nothing found"
