#!/bin/sh
# Runs a command in which tools/wine.sh runs Windows programs, quickly one after the other. Without a command it only
# sees to it that Wine is there.
#
#     wine_session.sh [COMMAND [ARGUMENT...]]
#
# Takes the Wine that is installed if that runs 32-bit programs. Otherwise root gets a small i386 system with one, in a
# folder that is kept ($XDG_CACHE_HOME/kord-wine or /var/cache/kord-wine, 1.5 GB): a package of a foreign architecture
# cannot be installed everywhere, and nothing else on the machine changes. Where there is no Wine to be had, says why in
# one line on standard output and exits with 77.
set -eu
checkout=$(cd "$(dirname "$0")/.." && pwd)
shared=/var/cache
[ "$(id -u)" = 0 ] || shared=$HOME/.cache
cache=${XDG_CACHE_HOME:-$shared}/kord-wine
root=$cache/root
log=$cache/setup.log
export WINEDEBUG=-all

unavailable() {
    echo "there is no Wine for 32-bit programs, and $1"
    exit 77
}

# Does the installed Wine run 32-bit programs? Its files stay away from the user's own.
installed() {
    command -v wine >/dev/null 2>&1 || return 1
    export WINEPREFIX="$cache/prefix" WINEARCH=win32
    wine cmd.exe /c exit >>"$log" 2>&1 </dev/null || {
        unset WINEPREFIX WINEARCH
        return 1
    }
}

# In a mount namespace of its own, so that whatever happens, no mount is left behind.
in_namespace() {
    unshare --mount -- "$@" 9>&-
}

# Debian's version and mirror, as this machine's apt has them.
sources() {
    apt-get indextargets --format "\$(CODENAME) \$(SITE)" 'Created-By: Packages' 'Origin: Debian' 'Component: main' |
        grep -v '^[^ ]*-' | head -n 1
}

# Makes the system under another name, so that one with its name is complete.
make_root() {
    [ "$(id -u)" = 0 ] || unavailable "only root can make a system that has it"
    for tool in debootstrap unshare chroot; do
        command -v $tool >/dev/null 2>&1 || unavailable "no $tool to make a system that has it"
    done
    in_namespace true 2>>"$log" || unavailable "nothing may be mounted here for a system that has it"
    debian=$(sources 2>>"$log") || true
    [ -n "$debian" ] || unavailable "apt knows no mirror of Debian to make a system that has it"
    echo "wine: making a small system with Wine in $root; that takes some minutes" >&2
    rm -rf --one-file-system "$root.new"
    # shellcheck disable=SC2086 # two words
    set -- $debian
    # shellcheck disable=SC2016 # the inner shell expands it
    in_namespace sh -c 'set -e
        debootstrap --arch=i386 --variant=minbase --include=wine,wine32 "$2" "$1" "$3"
        rm -f "$1"/var/cache/apt/archives/*.deb
        mountpoint -q "$1/proc" || mount -t proc proc "$1/proc"
        chroot "$1" env HOME=/root wineboot --init
        chroot "$1" env HOME=/root wineserver --wait' sh "$root.new" "$1" "$2" >>"$log" 2>&1 </dev/null ||
        unavailable "a system that has it could not be made: see $log"
    mv "$root.new" "$root"
}

# Lets the system of the cache see the devices and what programs work on. Only in a namespace of its own.
mount_folders() {
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    for folder in "$checkout" "$PWD"; do
        [ "$folder" != / ] || continue
        mkdir -p "$root$folder"
        mount --bind "$folder" "$root$folder"
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
exec 9>"$cache/lock" # one session at a time
flock 9
if installed; then
    export KORD_WINE=
    [ $# = 0 ] || serve "$@" 9>&-
else
    [ -d "$root" ] || make_root
    export KORD_WINE="$root"
    [ $# = 0 ] || in_namespace "$0" "$@"
fi
