#!/usr/bin/env bash
# Ends with 0 when this machine runs 32-bit programs. Kernels may be built or started without, and
# neither the installed packages nor the processor tell: so it writes the smallest one and runs it.
# Where no folder at hand lets programs run, it ends with 1 too.
set -euo pipefail

# An ELF file for i386 of one segment, which does nothing but exit(0) by the kernel's 32-bit door.
program() {
  printf '\x7fELF\1\1\1\0\0\0\0\0\0\0\0\0'              # 32 bits, little-endian
  printf '\2\0\3\0\1\0\0\0\x54\x80\4\x08\x34\0\0\0'     # executable, i386, starts at 0x8048054
  printf '\0\0\0\0\0\0\0\0\x34\0\x20\0\1\0\0\0\0\0\0\0' # one program header, at 0x34
  printf '\1\0\0\0\0\0\0\0\0\x80\4\x08\0\x80\4\x08'     # load the file at 0x8048000,
  printf '\x5d\0\0\0\x5d\0\0\0\5\0\0\0\0\x10\0\0'       # all 93 bytes, to read and run
  printf '\x31\xdb\x31\xc0\x40\xcd\x80\0\0'             # ebx = 0, eax = 1, int 0x80
}

file=
trap 'rm -f "$file"' EXIT
# Programs may be forbidden in one of these folders.
for folder in "${TMPDIR:-/tmp}" "${HOME:-/root}" "$PWD"; do
  file=$(mktemp -p "$folder" morvalis-32.XXXXXX 2>/dev/null) || continue
  program >"$file"
  chmod 700 "$file"
  # In a shell of its own, which keeps what it says of the program to itself.
  if bash -c '"$1" || exit 1' bash "$file" 2>/dev/null; then exit 0; fi
  rm -f "$file"
done
exit 1
