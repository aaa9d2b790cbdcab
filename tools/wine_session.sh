#!/bin/sh
# Runs a command in which tools/wine.sh runs Windows programs, quickly one after the other. Without a command it only
# sees to it that Wine is there.
#
#     wine_session.sh [COMMAND [ARGUMENT...]]
#
# Takes the Wine that is installed if that runs 32-bit programs. Otherwise root gets a small i386 system with one (1.5
# GB): a package of a foreign architecture cannot be installed everywhere, and nothing else on the machine changes. Where
# there is no Wine to be had, says why in one line on standard output and exits with 77.
set -eu
checkout=$(cd "$(dirname "$0")/.." && pwd)
shared=/var/cache
[ "$(id -u)" = 0 ] || shared=$HOME/.cache
cache=${XDG_CACHE_HOME:-$shared}/kord
log=$cache/wine_session.log
export WINEDEBUG=-all

unavailable() {
    echo "there is no Wine for 32-bit programs, and $1"
    exit 77
}

# Does the installed Wine run 32-bit programs? Its files stay away from the user's own.
installed() {
    command -v wine >/dev/null 2>&1 || return 1
    export WINEPREFIX="$cache/wine_prefix" WINEARCH=win32
    wine cmd.exe /c exit >>"$log" 2>&1 </dev/null || {
        unset WINEPREFIX WINEARCH
        return 1
    }
}

# In a mount namespace of its own, so that whatever happens, no mount is left behind.
in_namespace() {
    unshare --mount -- "$@" 9>&-
}

# Lets the system of the cache see the devices and what programs work on. Only in a namespace of its own.
mount_folders() {
    mount -t proc proc "$KORD_WINE/proc"
    mount --rbind /dev "$KORD_WINE/dev"
    for folder in "$checkout" "$PWD"; do
        [ "$folder" != / ] || continue
        mkdir -p "$KORD_WINE$folder"
        mount --bind "$folder" "$KORD_WINE$folder"
    done
}

# Runs a command beside a Windows program that waits for input and gets none. Without one, every program would start
# Wine's services anew, and they would hold its output open.
serve() {
    inside=
    [ -z "$KORD_WINE" ] || inside="chroot $KORD_WINE env HOME=/root"
    trap '$inside wineserver --kill' EXIT
    trap 'exit 1' INT TERM HUP
    pipe=$(mktemp -u)
    mkfifo "$pipe"
    exec 8<>"$pipe"
    rm "$pipe"
    $inside wine cmd.exe <&8 >/dev/null 2>&1 &
    $inside wine cmd.exe /c exit </dev/null >/dev/null 2>&1 # whichever comes first starts the services
    "$@"
}

if [ -n "${KORD_WINE+set}" ]; then # in the namespace
    [ -z "$KORD_WINE" ] || mount_folders
    serve "$@"
    exit
fi
mkdir -p "$cache" || unavailable "$cache cannot be written for one"
exec 9>"$cache/wine.lock" # one session at a time
flock 9
if installed; then
    export KORD_WINE=
    [ $# = 0 ] || serve "$@" 9>&-
else
    KORD_WINE=$("$checkout/tools/small_debian.sh" wine i386 wine,wine32 'wineboot --init; wineserver --wait') ||
        unavailable "${KORD_WINE:-a Debian for it could not be made}"
    export KORD_WINE
    [ $# = 0 ] || in_namespace "$0" "$@"
fi
