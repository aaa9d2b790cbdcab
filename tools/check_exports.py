#!/usr/bin/env python3
"""Checks that a built library exports what the list says, and nothing else.

Usage: check_exports.py --nm NM --list cmake/kord.def LIBRARY

The linker takes the list for kord.dll. An ELF library exports by attributes, and besides the list the exception classes,
whose identity is an address there. Prints one line a fault, with what to do about it; exits 1 if there is one.
"""

import argparse
import pathlib
import struct
import subprocess
import sys

EXCEPTIONS = ("14os_logic_error", "15os_length_error")


def listed(path):
    """The names of a module definition file, and which of them are data."""
    lines = path.read_text(encoding="utf-8").splitlines()
    rows = [line.split() for line in lines[lines.index("EXPORTS") + 1:] if line.split()]
    return {row[0]: "DATA" in row[1:] for row in rows}


def elf_exports(nm, library):
    out = subprocess.run([nm, "-D", "--defined-only", "--format=posix", library], check=True, capture_output=True,
                         text=True).stdout
    rows = [line.split() for line in out.splitlines()]
    return {row[0]: row[1] in "BDRVu" for row in rows if not any(name in row[0] for name in EXCEPTIONS)}


def pe_exports(data):
    """The names in a PE file's export table, and which of them lie outside its code."""
    header = struct.unpack_from("<I", data, 0x3C)[0]
    section_count, optional_size = struct.unpack_from("<H12xH", data, header + 6)
    optional = header + 24
    directory = optional + (96 if struct.unpack_from("<H", data, optional)[0] == 0x10B else 112)
    sections = [struct.unpack_from("<8sIIII", data, optional + optional_size + 40 * i) for i in range(section_count)]

    def offset(address):
        start, raw = next((s[2], s[4]) for s in sections if s[2] <= address < s[2] + max(s[1], s[3]))
        return address - start + raw

    table = offset(struct.unpack_from("<I", data, directory)[0])
    _, count, functions, names, ordinals = struct.unpack_from("<IIIII", data, table + 20)
    exports = {}
    for i in range(count):
        name = offset(struct.unpack_from("<I", data, offset(names) + 4 * i)[0])
        ordinal = struct.unpack_from("<H", data, offset(ordinals) + 2 * i)[0]
        address = struct.unpack_from("<I", data, offset(functions) + 4 * ordinal)[0]
        code = any(s[0].rstrip(b"\0") == b".text" and s[2] <= address < s[2] + s[1] for s in sections)
        exports[data[name:data.index(b"\0", name)].decode()] = not code
    return exports


def faults(expected, found):
    for name in sorted(expected.keys() - found.keys()):
        yield f"{name}: listed, not exported: take it from the list, or see that the compiler writes it out"
    for name in sorted(found.keys() - expected.keys()):
        yield f"{name}: exported, not listed: list it, or hide it"
    for name in sorted(expected.keys() & found.keys()):
        if expected[name] != found[name]:
            yield f"{name}: {'data' if found[name] else 'a function'}: let the list say so"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--list", type=pathlib.Path, required=True)
    parser.add_argument("binary", type=pathlib.Path)
    options = parser.parse_args()
    data = options.binary.read_bytes()
    found = elf_exports(options.nm, options.binary) if data.startswith(b"\x7fELF") else pe_exports(data)
    lines = list(faults(listed(options.list), found))
    print("\n".join(lines) if lines else f"{len(found)} names, as listed")
    return 1 if lines else 0


if __name__ == "__main__":
    sys.exit(main())
