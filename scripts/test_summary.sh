#!/usr/bin/env bash
# Says in a few lines what `./dev test` has tested and what it has not, from what ctest wrote down.
#   scripts/test_summary.sh FOLDER      holds BUILD.xml and BUILD.log of every build that was tested,
#                                       tidy.log, and fuzz/summary.txt
set -euo pipefail
cd "$1"

# "passed failed skipped" of the tests whose names match; the reasons of those skipped, one a line.
counts() {  # BUILD PATTERN
  awk -v pattern="$2" '
    /<testcase name="/ {
      split($0, parts, "\""); mine = parts[2] ~ pattern
      if (mine) ++count[/status="run"/ ? "passed" : /status="(notrun|disabled)"/ ? "skipped" : "failed"]
    }
    mine && afterSkipped && NF { sub(/^run_wine: .* here: /, ""); if (!told[$0]++) reasons = reasons "\n" $0 }
    { afterSkipped = / Skipped$/ }
    END { printf "%d %d %d%s\n", count["passed"], count["failed"], count["skipped"], reasons }
  ' "$1.xml" | sed "s/&apos;/'/g; s/&quot;/\"/g; s/&lt;/</g; s/&gt;/>/g; s/&amp;/\&/g"
}

total=(0 0 0)
# Sets passed, failed, skipped, and why, the reasons in one line.
count() {  # BUILD PATTERN
  local text
  text=$(counts "$1" "$2")
  read -r passed failed skipped <<<"$text"
  why=$(tail -n +2 <<<"$text" | paste -sd '#' | sed 's/#/; /g')
  total=($((total[0] + passed)) $((total[1] + failed)) $((total[2] + skipped)))
}

line() {  # WHAT TEXT
  printf '  %-32s %s\n' "$1" "$2"
}

wholeBuild() {  # BUILD WHAT
  if [[ ! -s $1.xml ]]; then
    line "$2" "NOT TESTED: the run ended before"
    return
  fi
  count "$1" .
  if ((passed + failed + skipped == 0)); then
    line "$2" "NOT TESTED: no test of it was run"
    return
  fi
  line "$2" "tested: $(grep -h 'tests passed' "$1.log" | tail -n 1)"
  if ((skipped > 0)); then line "" "$skipped of them skipped: $why"; fi
  unsteady "$1"
}

# Tests that passed at their second try only.
unsteady() {  # BUILD
  local names
  names=$(awk '
    match($0, /Test +#[0-9]+: [^ ]+/) {
      name = substr($0, RSTART, RLENGTH); sub(/.*: /, "", name)
      if (/[*][*][*](Failed|Timeout|Exception)/) failed[name] = 1
      else if (/ Passed /) if (failed[name]) names = names " " name
    }
    END { print substr(names, 2) }
  ' "$1.log")
  if [[ -n $names ]]; then line "" "passed at a second try only: $names"; fi
}

# Some tests only read the module's file, and pass where nothing can be run.
windows() {  # BITS
  local what="module for $1-bit Windows"
  if [[ ! -s core-only-ci.xml ]]; then
    line "$what" "NOT TESTED: the run ended before"
    return
  fi
  count core-only-ci "/$1Bit"
  if ((passed + failed + skipped == 0)); then
    line "$what" "NOT TESTED: no test of it was run"
  elif ((skipped > 0)); then
    line "$what" "NOT TESTED, only built: $why"
    line "" "($skipped tests skipped; $passed passed that only read the file, $failed failed)"
  else
    line "$what" "tested under Wine: $passed passed, $failed failed"
  fi
  if (($1 == 32)); then unsteady core-only-ci; fi
}

fuzzers() {
  local what="fuzzers"
  if [[ ! -s fuzz/summary.txt ]]; then
    line "$what" "NOT TESTED: the run ended before"
  elif grep -q FOUND fuzz/summary.txt; then
    line "$what" "FAILED:"
    grep FOUND fuzz/summary.txt | while read -r found; do line "" "$found"; done
  else
    line "$what" "tested: $(awk '{ sum += $2 } END { print NR " of them, " sum " executions" }' \
      fuzz/summary.txt), nothing found"
  fi
}

tidy() {
  local what="sources, by clang-tidy"
  if [[ ! -s tidy.log ]]; then
    line "$what" "NOT READ: the run ended before"
  elif grep -q '^check_tidy: ' tidy.log; then
    line "$what" "read: $(sed -n 's/^check_tidy: //p' tidy.log)"
  else
    line "$what" "FAILED, or not read to the end"
  fi
}

wholeBuild desktop-ci "program and filter on Linux"
windows 64
windows 32
wholeBuild desktop-sanitize-ci "on Linux, under the sanitizers"
fuzzers
tidy
line "all together" "${total[0]} passed, ${total[1]} failed, ${total[2]} skipped"
