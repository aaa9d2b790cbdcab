#!/bin/sh
# Checks the packages in build/packages: installs them where nothing of this project is, builds and runs a user's program
# with them, and takes them away again.
#
#     check_packages.sh root               makes the system to install them in; prints why if it cannot, and exits with 77
#     check_packages.sh debian | archive   in that system
#     check_packages.sh windows            with the cross compiler and Wine
set -eu
cd "$(dirname "$0")/.."
consumer=$PWD/tests/install/consumer
packages=$PWD/build/packages

# Runs shell commands in the system, with the packages and the consumer in /kord.
inside() {
    # shellcheck disable=SC2016 # the inner shell expands it
    unshare --mount -- sh -ec '
        mount -t proc proc "$1/proc"
        mkdir -p "$1/kord"
        mount -t tmpfs tmpfs "$1/kord"
        cp -r "$2" "$3"/* "$1/kord"
        exec chroot "$1" env HOME=/root LC_ALL=C PATH=/usr/sbin:/usr/bin:/sbin:/bin sh -exc "cd /kord; $4"' sh "$root" \
        "$consumer" "$packages" "$1"
}

root=
[ "$1" = windows ] || root=$(tools/small_debian.sh packages "$(dpkg --print-architecture)" g++,cmake,make,pkgconf true) || {
    echo "$root"
    exit 77
}
case $1 in
root) ;;
debian)
    # shellcheck disable=SC2016
    inside '
        dpkg --purge libkord-dev $(dpkg-query -W -f "\${Package} " "libkord[0-9]*" || true)
        find / -xdev -path /proc -prune -o -path "/var/[lc]*" -prune -o -print | sort >before
        dpkg --install libkord*.deb
        for kind in shared static; do
            cmake -S consumer -B $kind -DKORD_KIND=$kind
            cmake --build $kind
            $kind/consumer
        done
        ldd shared/consumer | grep "libkord.so.*=> /"
        if ldd static/consumer | grep libkord; then exit 1; fi
        g++ -std=c++17 consumer/main.cpp -o by_pkg_config $(pkg-config --cflags --libs kord)
        ./by_pkg_config
        dpkg --remove libkord-dev
        ./by_pkg_config # which the other package is enough for
        dpkg --purge $(dpkg-query -W -f "\${Package}" "libkord[0-9]*")
        if ./by_pkg_config; then exit 1; fi
        find / -xdev -path /proc -prune -o -path "/var/[lc]*" -prune -o -print | sort >after
        diff before after'
    ;;
archive)
    # shellcheck disable=SC2016
    inside '
        mkdir unpacked
        tar -xf kord-*.tar.gz -C unpacked --strip-components=1
        for kind in shared static; do
            cmake -S consumer -B $kind -DKORD_KIND=$kind -DCMAKE_PREFIX_PATH=/kord/unpacked
            cmake --build $kind
            $kind/consumer
        done'
    ;;
windows)
    rm -rf build/packages-windows
    mkdir -p build/packages-windows
    cd build/packages-windows
    cmake -E tar xf "$packages"/kord-*-Windows-*.zip
    mv kord-* unpacked
    cmake -S "$consumer" -B consumer -G Ninja -DCMAKE_TOOLCHAIN_FILE="$OLDPWD/cmake/windows-i686.cmake" \
        -Dkord_DIR="$PWD/unpacked/lib/cmake/kord" -DCMAKE_RUNTIME_OUTPUT_DIRECTORY="$PWD/unpacked/bin"
    cmake --build consumer
    "$OLDPWD/tools/wine.sh" unpacked/bin/consumer.exe
    ;;
esac
