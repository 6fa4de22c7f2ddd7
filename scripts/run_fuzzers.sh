#!/usr/bin/env bash
# Runs the fuzzers of a build, as many at a time as there are processors, on the seeds and on what
# each has found before. Tells the executions of each, and ends with 1 where one has found something,
# after the place of the input that does it.
#   scripts/run_fuzzers.sh BUILD FOLDER SECONDS     FOLDER gets corpus/, logs, inputs and summary.txt
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
self=$PWD/scripts/run_fuzzers.sh

runOne() {  # NAME BUILD FOLDER SECONDS
  local name=$1 log=$3/$1.log corpus=$3/corpus/$1 code=0 executions input
  # The dialog's may save what it has made, under the name that the chooser gives it.
  mkdir -p "$3/saved"
  cd "$3/saved"
  # A rectangle may want gigabytes: the system has no more than 500 MB for a block.
  ASAN_OPTIONS=allocator_may_return_null=1:max_allocation_size_mb=500 \
    "$2/${name}_fuzzer" "$corpus" -max_total_time="$4" -max_len=4096 -timeout=20 \
    -rss_limit_mb=2000 -print_final_stats=1 \
    -artifact_prefix="$3/$name-" >"$log" 2>&1 || code=$?
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  if ((code == 0)); then
    echo "$name: ${executions} executions, nothing found"
  else
    input=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
    echo "$name: FOUND after ${executions:-some} executions: ${input:-no input, see $log}"
  fi | tee "$3/$name.summary"
  return "$code"
}

if [[ ${1:-} == --one ]]; then  # all paths from the root on
  runOne "${@:2}"
  exit
fi

mkdir -p "$2"
build=$(realpath "$1") folder=$(realpath "$2") seconds=$3
rm -f "$folder"/*.summary
names=()
for fuzzer in "$build"/*_fuzzer; do names+=("$(basename "$fuzzer" _fuzzer)"); done
for name in "${names[@]}"; do mkdir -p "$folder/corpus/$name"; done
"$build/morvalis_fuzz_seeds" "$folder/corpus"
cp -n presets/*.q9q "$folder/corpus/settings_file/"
code=0
printf '%s\n' "${names[@]}" |
  xargs -P "$(nproc)" -I NAME bash "$self" --one NAME "$build" "$folder" "$seconds" || code=1
cat "$folder"/*.summary >"$folder/summary.txt"
if ((code != 0)); then
  grep -l -- ": FOUND" "$folder"/*.summary | while read -r summary; do
    tail -n 60 "${summary%.summary}.log" >&2
  done
fi
exit "$code"
