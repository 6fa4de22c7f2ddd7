#!/usr/bin/env bash
# Makes Wine available for 64-bit and for 32-bit programs, as far as it can be had: what is missing
# is named in one line each, and is no failure. Quick when all is there.
#   scripts/install_wine.sh [FOLDER]     FOLDER is where Wine is tried, as for run_wine.sh --check
#
# Where the machine starts 32-bit programs, it takes Debian's i386 packages when they fit those
# installed. Otherwise it keeps a small i386 system in the user's cache folder (1.1 GB), which
# scripts/run_wine.sh enters. Elsewhere nothing of that kind is installed.
set -euo pipefail
tryIn=${1:+$(realpath -m "$1")}
cd "$(dirname "${BASH_SOURCE[0]}")"
export HOME=${HOME:-~}

cache=${XDG_CACHE_HOME:-$HOME/.cache}/morvalis
root=$cache/wine32
log=$cache/wine32.log

# What Wine takes when it finds it, as in install_packages.sh.
libraries=(libxcursor1 libxfixes3 libxi6 libxrandr2 libxrender1)

canRun() {  # bits
  bash run_wine.sh "$1" --check ${tryIn:+"$tryIn"}
}

asRoot() {
  if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

aptGet() {
  asRoot env DEBIAN_FRONTEND=noninteractive apt-get -q -o Acquire::Retries=3 -o Dpkg::Use-Pty=0 "$@"
}

addedArchitecture=
takeBackArchitecture() {
  if [[ -n $addedArchitecture ]]; then
    asRoot dpkg --remove-architecture i386 || true
    addedArchitecture=
  fi
}
trap takeBackArchitecture EXIT

# Only when apt finds a way in which no installed package has to go.
installPackages32() {
  local packages=(wine32:i386 "${libraries[@]/%/:i386}")
  local install=(install --no-install-recommends --no-remove)
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    addedArchitecture=yes
    asRoot dpkg --add-architecture i386
  fi
  aptGet update >"$log" 2>&1 || true
  if aptGet --simulate "${install[@]}" "${packages[@]}" >>"$log" 2>&1; then
    echo "Installing ${packages[*]}"
    if aptGet "${install[@]}" --yes "${packages[@]}" >>"$log" 2>&1; then
      addedArchitecture=
      return 0
    fi
  fi
  takeBackArchitecture
  return 1
}

# It gets its name when it is whole.
makeRoot32() {
  local part=$root.part include
  if [[ -d $root ]] || ! asRoot unshare --mount true 2>/dev/null; then return 1; fi
  bash install_packages.sh debootstrap >>"$log" 2>&1 || return 1
  echo "Making a system for 32-bit Wine in $root (some minutes)"
  include=wine,wine32,xvfb,xauth,fonts-liberation,$(IFS=,; echo "${libraries[*]}")
  # In a name space of its own: an interrupted run leaves nothing mounted in the folder.
  asRoot rm -rf --one-file-system "$part" &&
    asRoot unshare --mount debootstrap --arch=i386 --variant=minbase --include="$include" \
      bookworm "$part" >>"$log" 2>&1 &&
    asRoot mkdir -p "$part/mnt/folder" "$part/mnt/prefix" &&
    asRoot find "$part/var/cache/apt/archives" -name '*.deb' -delete &&
    asRoot mv "$part" "$root" && return 0
  asRoot rm -rf --one-file-system "$part"
  return 1
}

# Found out first, by running one: what is installed says nothing about it.
runs32=
if bash can_run_32.sh; then runs32=yes; fi

if command -v dpkg >/dev/null && [[ $(dpkg --print-architecture) == amd64 ]]; then
  bash install_packages.sh wine || true
  if [[ -n $runs32 ]] && canRun 64 && ! canRun 32 2>/dev/null &&
    { ((EUID == 0)) || command -v sudo >/dev/null; }; then
    mkdir -p "$cache"
    exec 8>"$cache/lock"
    flock 8
    canRun 32 2>/dev/null || installPackages32 || makeRoot32 || true
  fi
fi
canRun 64 || true
canRun 32 || true
