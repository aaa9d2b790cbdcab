#!/bin/sh
# Makes a small Debian system, for what cannot be installed on the machine, or shall not, and prints the folder it is in.
# It is kept, as $XDG_CACHE_HOME/kord/NAME or /var/cache/kord/NAME. The command runs in it once, before it counts as made.
#
#     small_debian.sh NAME ARCHITECTURE PACKAGE,... COMMAND
#
# Only root can make one and use it. Where it cannot be done, prints why, as the end of a sentence, and exits with 77.
set -eu
folder=${XDG_CACHE_HOME:-/var/cache}/kord/$1 architecture=$2 packages=$3 command=$4
log=$folder.log

unavailable() {
    echo "$1"
    exit 77
}

# In a mount namespace of its own, so that whatever happens, no mount is left behind. Nothing that stays running keeps the
# locks, here or in wine_session.sh.
in_namespace() {
    unshare --mount -- "$@" 8>&- 9>&-
}

# Debian's version and mirror, as this machine's apt has them.
sources() {
    apt-get indextargets --format "\$(CODENAME) \$(SITE)" 'Created-By: Packages' 'Origin: Debian' 'Component: main' |
        grep -v '^[^ ]*-' | head -n 1
}

[ "$(id -u)" = 0 ] || unavailable "only root can use a Debian made for it"
for tool in debootstrap unshare chroot; do
    command -v $tool >/dev/null 2>&1 || unavailable "there is no $tool to make a Debian for it"
done
mkdir -p "$(dirname "$folder")"
in_namespace true 2>>"$log" || unavailable "nothing may be mounted here for a Debian made for it"
exec 8>"$folder.making" # one at a time
flock 8
if [ -d "$folder" ]; then
    echo "$folder"
    exit
fi
debian=$(sources 2>>"$log") || true
[ -n "$debian" ] || unavailable "apt knows no mirror to make a Debian for it"
echo "dev: making a small Debian in $folder; that takes some minutes" >&2
rm -rf --one-file-system "$folder.new"
# shellcheck disable=SC2016 # the inner shell expands it
in_namespace sh -c 'set -e
    debootstrap "--arch=$2" --variant=minbase "--include=$3" "${5% *}" "$1" "${5#* }"
    rm -f "$1"/var/cache/apt/archives/*.deb
    mountpoint -q "$1/proc" || mount -t proc proc "$1/proc"
    chroot "$1" env HOME=/root sh -ec "$4"' sh "$folder.new" "$architecture" "$packages" "$command" "$debian" \
    >>"$log" 2>&1 </dev/null || unavailable "a Debian for it could not be made: see $log"
mv "$folder.new" "$folder" # under its name it is complete
echo "$folder"
