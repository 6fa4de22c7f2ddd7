#!/usr/bin/env bash
# Installs the Debian packages that a task needs, those that are missing only: when nothing is
# missing it neither touches the network nor needs root.
#   scripts/install_packages.sh [TASK]...     the tasks are those of the table
set -euo pipefail

declare -A packages=(
  [build]="cmake ninja-build g++ qt6-base-dev qt6-image-formats-plugins libxcb1-dev
           libvips-dev libfontconfig-dev libisal-dev zlib1g-dev pkgconf
           libimage-exiftool-perl libvips-tools parallel fonts-liberation libcli11-dev libgtest-dev desktop-file-utils cppcheck
           xvfb xdotool dbus at-spi2-core gir1.2-atspi-2.0 python3-gi"
  # What the plug-in for GIMP is built with and tried in.
  [gimp]="gimp libgimp2.0-dev libvips-tools xvfb xdotool x11-utils"
  # What the files for other editors and for file managers are tried in.
  [editors]="inkscape python3-lxml krita python3-pyqt5 dolphin nautilus python3-nautilus
             dbus xvfb xdotool"
  [bench]="libgtest-dev libvips-tools time fonts-liberation"
  [format]="clang-format"
  [tidy]="clang-tidy"
  [fuzz]="cmake ninja-build clang libclang-rt-14-dev"
  [fuzz_coverage]="llvm"
  [windows]="cmake ninja-build g++-mingw-w64-i686-win32 g++-mingw-w64-x86-64-win32
             zip nsis"
  [package]="zip nsis dpkg-dev lintian appstream"
  # Besides Wine, the libraries that it takes when it finds them: the cursors and the text would
  # look different without.
  [wine]="wine wine64 xvfb xauth fonts-liberation
          libxcursor1 libxfixes3 libxi6 libxrandr2 libxrender1"
  [debootstrap]="debootstrap"
)

if (($# == 0)); then set -- build; fi
wanted=()
for task in "$@"; do
  if [[ -z ${packages[$task]:-} ]]; then
    echo "install_packages: no task '$task'; there are: ${!packages[*]}" >&2
    exit 2
  fi
  read -r -d '' -a names <<<"${packages[$task]}" || true
  wanted+=("${names[@]}")
done

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  echo "install_packages: not a Debian system; going on with what is installed." >&2
  echo "  On Debian 12 the packages would be: ${wanted[*]}" >&2
  exit 0
fi

# A package may also be there for another architecture, with a line of its own.
architecture=$(dpkg --print-architecture)
missing=()
for name in "${wanted[@]}"; do
  states=$(dpkg-query -W -f '${Architecture} ${Status}\n' "$name" 2>/dev/null || true)
  grep -qxE "(all|$architecture) install ok installed" <<<"$states" || missing+=("$name")
done
if ((${#missing[@]} == 0)); then exit 0; fi

asRoot=()
if ((EUID != 0)); then
  if ! command -v sudo >/dev/null; then
    echo "install_packages: missing: ${missing[*]}" >&2
    echo "  Run as root, or install sudo, or install them by hand." >&2
    exit 1
  fi
  asRoot=(sudo)
fi

echo "Installing ${missing[*]}"
aptGet=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o Acquire::Retries=3
        -o Dpkg::Use-Pty=0)
"${asRoot[@]}" "${aptGet[@]}" update
"${asRoot[@]}" "${aptGet[@]}" install -y --no-install-recommends "${missing[@]}"
