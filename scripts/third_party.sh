#!/usr/bin/env bash
# Prints the notices of all that is inside of what is given away, as this system's packages have
# them.
#   scripts/third_party.sh program|module|installer...
set -euo pipefail

notice() {  # WHAT PACKAGE
  printf '%s\n%s\n\n' "$1" "$(sed 's/./=/g' <<<"$1")"
  sed 's/[[:space:]]*$//' "/usr/share/doc/$2/copyright"
  printf '\n\n'
}

for part in "$@"; do
  case $part in
    program)
      notice "CLI11, in the program for Linux" libcli11-dev
      ;;
    module)
      notice "The runtime of MinGW-w64, in the modules for Windows" mingw-w64-common
      notice "The runtime libraries of GCC, in the modules for Windows" gcc-mingw-w64-base
      ;;
    installer)
      notice "The Nullsoft Scriptable Install System, in the installer" nsis
      ;;
    *)
      echo "third_party: no part '$part'" >&2
      exit 2
      ;;
  esac
done
