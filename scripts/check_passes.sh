#!/usr/bin/env bash
# Checks that each object compiled for one instruction set defines its one procedure for others and
# nothing else: a second symbol could take the place of another set's when the program is linked.
#   scripts/check_passes.sh NM OBJECT...
set -euo pipefail

nm=$1
shift
failures=0
for object in "$@"; do
  mapfile -t symbols < <("$nm" --defined-only --extern-only --demangle "$object")
  if ((${#symbols[@]} != 1)) || [[ ${symbols[0]} != *" T "*[Pp]"asses()" ]]; then
    printf '%s defines:\n' "$object"
    printf '  %s\n' "${symbols[@]}"
    failures=$((failures + 1))
  fi
done
if ((failures > 0)); then exit 1; fi
echo "check_passes: $# objects, one symbol each"
