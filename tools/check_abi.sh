#!/bin/sh
# Compares the binary interface of a built library with the recorded one, tools/kord.abi: names, parameters, layouts
# and virtual operations. Any difference is a fault, also an addition.
#
#     check_abi.sh LIBRARY [--write]
#
# LIBRARY is libkord.so for x86-64, by g++, unoptimised and with debug information, as the preset "debug" builds it.
# --write records its interface instead, after a change that is meant. Needs Debian's package abigail-tools.
set -eu
folder=$(cd "$(dirname "$0")" && pwd)
baseline=$folder/kord.abi

readelf --sections --wide "$1" | grep -q ' \.debug_info ' || {
    echo "$1: has no debug information: build the preset \"debug\""
    exit 1
}
if [ "${2-}" = --write ]; then
    # The interface alone, no paths or lines; without indentation, and with short identifiers, half as long.
    abidw --exported-interfaces-only --no-corpus-path --no-comp-dir-path --no-show-locs --short-locs \
        --drop-private-types --headers-dir "$folder/../include" --no-elf-needed --drop-undefined-syms \
        --no-parameter-names --no-write-default-sizes --out-file "$baseline.new" "$1"
    sed 's/^ *//; s/type-id-/t/g' "$baseline.new" >"$baseline"
    rm "$baseline.new"
    exit
fi
# Told of the headers, it would take the record's classes, which name no file, for private ones and pass over them.
abidiff --exported-interfaces-only --no-show-locs --harmless "$baseline" "$1" || {
    echo "$1: another interface than that of tools/kord.abi; if that is meant, run tools/check_abi.sh $1 --write"
    exit 1
}
echo "the interface is the recorded one"
