#!/usr/bin/env bash
# Runs a program for Windows under Wine, in a Windows of its own that nothing else uses.
#   scripts/run_wine.sh 32|64 FOLDER PROGRAM [ARGUMENT]...
#       FOLDER is where the program runs; every file it needs lies there.
#   scripts/run_wine.sh 32|64 --check [FOLDER]
#       runs a small program of Wine's own, to see whether that works.
# Ends with the program's code, 124 when it took too long, 77 when such programs cannot be run here
# (scripts/install_wine.sh may change that).
#   MORVALIS_WINE_PREFIX      where that Windows is kept (beside FOLDER, wine-prefix-32 or -64)
#   MORVALIS_WINE_SECONDS     how long the program may take (300)
#   MORVALIS_WINE_CHECKED_32, MORVALIS_WINE_CHECKED_64
#                             what a check has found before: yes, or the reason why not
set -euo pipefail
export HOME=${HOME:-~}

readonly kCannotRun=77 kTookTooLong=124
readonly kCheckCode=42
readonly kSecondsToPrepare=300 # making a Windows takes some twenty seconds on a quiet machine

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/morvalis
# Where a system for 32-bit programs is kept when this one has none; install_wine.sh makes it.
root=$cache/wine32

cannotRun() {  # reason
  echo "run_wine: no $bits-bit programs for Windows here: $1" >&2
  exit "$kCannotRun"
}

bits=${1:-}
if (($# < 2)) || [[ $bits != 32 && $bits != 64 ]] || [[ $2 != --check && $# -lt 3 ]]; then
  sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "${BASH_SOURCE[0]}" >&2
  exit 2
fi

checked=MORVALIS_WINE_CHECKED_$bits
checked=${!checked:-}
if [[ -n $checked && $checked != yes ]]; then cannotRun "$checked"; fi
if [[ -n $checked && $2 == --check ]]; then exit 0; fi

# --- What there is to run it with -----------------------------------------------------------

# By its own name: Debian's `wine` takes the loader for 32-bit programs whenever that is installed,
# even on a machine that cannot start it.
loader=wine
rooted=
if [[ $bits == 64 ]]; then
  loader=/usr/lib/wine/wine64
  export WINELOADER=$loader
  [[ -x $loader ]] || cannotRun "Wine is not installed"
else
  bash "$scripts/can_run_32.sh" || cannotRun "this machine starts no 32-bit programs at all"
  if [[ ! -x /usr/lib/wine/wine ]]; then
    [[ -d $root ]] || cannotRun "32-bit Wine is not installed"
    rooted=yes
  fi
fi
[[ -n ${DISPLAY:-} ]] || command -v Xvfb >/dev/null || cannotRun "no screen and no Xvfb"

# In a name space of its own, so that its mounts end with it. Without the rights of root, as the
# root of a space of users that has only this user in it.
if [[ -n $rooted && -z ${MORVALIS_WINE_MOUNTS:-} ]]; then
  space=(unshare --mount)
  if ((EUID != 0)); then space+=(--map-root-user); fi
  "${space[@]}" true 2>/dev/null || cannotRun "mounting is not permitted"
  MORVALIS_WINE_MOUNTS=private exec "${space[@]}" bash "${BASH_SOURCE[0]}" "$@"
fi

enter=()
mountRoot() {  # FOLDER PREFIX
  local authority=${XAUTHORITY:-$HOME/.Xauthority}
  enter=(chroot "$root")
  {
    mount --rbind /proc "$root/proc" &&
      mount --rbind /dev "$root/dev" &&
      mount -t tmpfs tmpfs "$root/tmp" &&
      mkdir "$root/tmp/.X11-unix" &&
      if [[ -d /tmp/.X11-unix ]]; then mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"; fi &&
      # The same fonts for both kinds of programs.
      if [[ -d /usr/share/fonts ]]; then mount --bind /usr/share/fonts "$root/usr/share/fonts"; fi &&
      mount --bind "$1" "$root/mnt/folder" && mount --bind "$2" "$root/mnt/prefix"
  } 2>/dev/null || cannotRun "mounting is not permitted"
  if [[ -f $authority ]]; then
    cp "$authority" "$root/tmp/xauthority"
    export XAUTHORITY=/tmp/xauthority
  fi
}

# --- Running it -----------------------------------------------------------------------------

checking=
folder=$2
shift 2
if [[ $folder == --check ]]; then
  checking=yes
  folder=${1:-$cache/check}
  mkdir -p "$folder"
  set -- cmd.exe /c "exit $kCheckCode"
fi
folder=$(cd "$folder" && pwd)
prefix=${MORVALIS_WINE_PREFIX:-${folder%/*}/wine-prefix-$bits}
seconds=${MORVALIS_WINE_SECONDS:-300}
mkdir -p "$prefix"
prefix=$(cd "$prefix" && pwd)

# One at a time: the end of each ends all programs of its Windows. No child may keep the lock.
exec 9>"$prefix.lock"
flock 9

screen=
used=
endEverything() {
  if [[ -n $used ]]; then
    # Writes the registry, too.
    wineDo wineserver -k || true
    wineDo wineserver -w || true
  fi
  if [[ -n $screen ]]; then
    kill "$screen" 2>/dev/null || true
    wait "$screen" 2>/dev/null || true
  fi
}
trap endEverything EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# Large enough for the dialog and its menus at 300 percent.
if [[ -z ${DISPLAY:-} ]]; then
  # It finds a free number by itself and tells it when it is ready.
  coproc XVFB {
    exec Xvfb -displayfd 3 -screen 0 2240x1600x24 -nolisten tcp 3>&1 >/dev/null 2>&1 9>&-
  }
  screen=$XVFB_PID
  read -r -t 60 number <&"${XVFB[0]}" || cannotRun "Xvfb does not start"
  export DISPLAY=:$number
fi

inFolder=$folder
inPrefix=$prefix
if [[ -n $rooted ]]; then
  mountRoot "$folder" "$prefix"
  inFolder=/mnt/folder
  inPrefix=/mnt/prefix
elif [[ -f ${XAUTHORITY:-$HOME/.Xauthority} ]]; then
  export XAUTHORITY=${XAUTHORITY:-$HOME/.Xauthority}
fi

# With its home inside, it keeps away from the user's documents and menus. The two libraries left
# out would ask for downloads, and the debugger would hold a program that has crashed.
wineDo() {  # command...
  "${enter[@]}" env --chdir="$inFolder" \
    HOME="$inPrefix" WINEPREFIX="$inPrefix" WINEARCH="win$bits" LC_ALL=C.UTF-8 \
    WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d" "$@" 9>&-
}

# Waits in a way that lets a signal through.
within() {  # SECONDS command...
  local limit=$1 code=0
  shift
  wineDo timeout --kill-after=10 "$limit" "$@" <&0 &
  wait $! || code=$?
  return "$code"
}

doesNotStart() {
  cannotRun "Wine is installed but does not start, see $prefix.log"
}

used=yes
if [[ ! -f $prefix/prepared ]]; then
  if ! within "$kSecondsToPrepare" "$loader" wineboot.exe --update >"$prefix.log" 2>&1; then
    if [[ -n $checking ]]; then doesNotStart; fi
    echo "run_wine: the Windows in $prefix cannot be made; see $prefix.log" >&2
    exit 1
  fi
  # No screen of ours has a window manager; waiting for one takes two seconds a window.
  wineDo "$loader" reg.exe add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f \
    >>"$prefix.log" 2>&1
  touch "$prefix/prepared"
fi

code=0
if [[ -n $checking ]]; then
  within "$seconds" "$loader" "$@" >>"$prefix.log" 2>&1 || code=$?
  ((code == kCheckCode)) || doesNotStart
  exit 0
fi
within "$seconds" "$loader" "$@" || code=$?
if ((code == kTookTooLong || code == 128 + 9)); then
  code=$kTookTooLong
  echo "run_wine: $1: ended, it took more than $seconds s" >&2
fi
exit "$code"
