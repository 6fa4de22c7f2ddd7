#!/usr/bin/env bash
# Installs the Debian packages that a task needs, those that are missing only: when nothing is
# missing it neither touches the network nor needs root.
#   scripts/install_packages.sh [build|bench|format|tidy]...
set -euo pipefail

declare -A packages=(
  [build]="cmake ninja-build g++ qt6-base-dev qt6-image-formats-plugins
           fonts-liberation libcli11-dev libgtest-dev"
  [bench]="libbenchmark-dev"
  [format]="clang-format"
  [tidy]="clang-tidy"
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

missing=()
for name in "${wanted[@]}"; do
  status=$(dpkg-query -W -f '${Status}' "$name" 2>/dev/null || true)
  [[ $status == "install ok installed" ]] || missing+=("$name")
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
