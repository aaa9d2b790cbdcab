#!/bin/sh
# Makes the packages in build/packages out of the builds of the presets package, package-static and package-windows, if
# the last is there: a pair of Debian packages, an archive and a zip for Windows.
set -eu
cd "$(dirname "$0")/.."
rm -rf build/packages

# Packs what both builds install, with libraries in the given folder below the prefix, as the given kind of package.
pack() {
    for preset in package package-static; do cmake --preset $preset "-DCMAKE_INSTALL_LIBDIR=$1"; done
    cpack -G "$2" --config build/package/CPackConfig.cmake -B build/packages -D CPACK_INSTALL_CMAKE_PROJECTS="\
$PWD/build/package;kord;ALL;/;$PWD/build/package-static;kord;ALL;/"
}

pack "lib/$(g++ -print-multiarch)" DEB
pack lib TGZ
[ ! -f build/package-windows/bin/kord.dll ] ||
    cpack -G ZIP --config build/package-windows/CPackConfig.cmake -B build/packages
rm -rf build/packages/_CPack_Packages
