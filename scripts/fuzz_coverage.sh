#!/usr/bin/env bash
# Runs the inputs that the fuzzers have found once more, in a build that counts lines, and tells how
# many of each one's own code they reach.
#   scripts/fuzz_coverage.sh BUILD CORPUS
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=$(realpath "$1") corpus=$(realpath -m "$2")

# What each is there for; the renders behind it are the tests' affair. What the preview asks the host
# for belongs to the dialog, which alone asks for it, recorded scripts to the target of that name.
declare -A ownCode=(
  [settings_file]="persistence/settings_codec persistence/settings_items persistence/mac_roman"
  [host]="entry/entry_point entry/handles entry/load_mark entry/selector_handlers services/host_
          geometry/row_requests"
  [dialog]="dialog/ geometry/preview/preview_request"
  [script]="entry/scripting"
  [kept_blocks]="entry/entry_point entry/load_mark entry/handles settings/settings_validation"
  [picture_file]="hosts/small_formats/ hosts/png_files/png_read hosts/png_files/png_chunks
                  hosts/picture_files/exif_block platform/unix/bitmap_file"
  [command_line]="hosts/effect_choices/setting_text hosts/command_line/"
)
for name in $(printf '%s\n' "${!ownCode[@]}" | LC_ALL=C sort); do
  mkdir -p "$corpus/$name"
done
"$build/morvalis_fuzz_seeds" "$corpus"
cp -n presets/*.q9q "$corpus/settings_file/"
for name in $(printf '%s\n' "${!ownCode[@]}" | LC_ALL=C sort); do
  # The dialog's may save what it has made, where it runs. Large blocks are refused as they are under
  # the address sanitizer.
  (cd "$build/fuzz" && ulimit -v 800000 && LLVM_PROFILE_FILE=$build/$name.profraw "$build/${name}_fuzzer" -runs=0 \
    -detect_leaks=0 "$corpus/$name" >"$build/$name.log" 2>&1)
  llvm-profdata merge -o "$build/$name.profdata" "$build/$name.profraw"
  llvm-cov export -format=lcov -instr-profile "$build/$name.profdata" "$build/${name}_fuzzer" \
    >"$build/$name.lcov"
  awk -F'[:,]' -v name="$name" -v own="${ownCode[$name]}" '
    BEGIN { starts = split(own, start, /[ \n]+/) }
    /^SF:/ {
      file = substr($0, 4)
      sub(/.*\/\.\.\//, "", file)  # as the build saw it from its own folder
      mine = 0
      for (i = 1; i <= starts; ++i) {
        if (start[i] != "" && index(file, start[i]) == 1 && file ~ /[.]cpp$/) mine = 1
      }
      if (mine) order[++files] = file
    }
    mine && /^DA:/ { ++lines[file]; ++all; if ($3 > 0) { ++hit[file]; ++reached } }
    END {
      printf "%-14s %5.1f %% of %d lines\n", name, 100 * reached / all, all
      for (i = 1; i <= files; ++i) {
        file = order[i]
        if (hit[file] < 0.9 * lines[file])
          printf "    %5.1f %%  %s\n", 100 * hit[file] / lines[file], file
      }
    }' "$build/$name.lcov"
done
