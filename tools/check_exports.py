#!/usr/bin/env python3
"""Checks that a built library exports what the lists say, and nothing else.

Usage: check_exports.py [--nm NM] [--write] LIBRARY
       check_exports.py [--nm NM] --used OBJECT
       check_exports.py [--readelf READELF] --visible OBJECT...

cmake/kord.def has the names for the linkers, tools/exports_elf.txt and tools/exports_pe.txt what a reader makes of them;
--write renews the latter from the library. --used checks that an object refers to every name of the ELF list, --visible
that the library's own objects, by g++ and optimised, make visible what cmake/kord.def lists, so that no member is
forgotten there. Prints one line a fault, with what to do about it; exits 1 if there is one.
"""

import argparse
import pathlib
import struct
import sys

from symbols import ROOT, demangled, nm, output, read_list, report

LIST = ROOT / "cmake/kord.def"
READABLE = ROOT / "tools/exports_elf.txt", ROOT / "tools/exports_pe.txt"
# Every program has the members of these classes; what an ELF library exports of them is their identity.
EXCEPTIONS = "14os_logic_error", "15os_length_error"


def listed(elf):
    """The names of the list, and which of them are data."""
    lines = LIST.read_text(encoding="utf-8").splitlines()
    rows = [line.split() for line in lines[lines.index("EXPORTS") + 1:] if line.split()]
    identities = {prefix + name: True for prefix in ("_ZTI", "_ZTS") for name in EXCEPTIONS}
    return {row[0]: "DATA" in row[1:] for row in rows} | (identities if elf else {})


def elf_exports(tool, library):
    return {name: letter in "BDRVu" for name, letter in nm(tool, ["-D", "--defined-only"], [library])}


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


def differences(expected, found):
    for name in sorted(expected.keys() - found.keys()):
        yield f"{name}: listed, not exported: take it from the list, or see that the compiler writes it out"
    for name in sorted(found.keys() - expected.keys()):
        yield f"{name}: exported, not listed: list it, or hide it"
    for name in sorted(expected.keys() & found.keys()):
        if expected[name] != found[name]:
            yield f"{name}: {'data' if found[name] else 'a function'}: let the list say so"


def check_library(tool, library, write):
    data = library.read_bytes()
    elf = data.startswith(b"\x7fELF")
    found = elf_exports(tool, library) if elf else pe_exports(data)
    readable = READABLE[0 if elf else 1]
    lines = sorted(demangled(found))
    if write:
        readable.write_text("".join(line + "\n" for line in lines), encoding="utf-8")
    faults = list(differences(listed(elf), found))
    old = readable.read_text(encoding="utf-8").splitlines()
    if lines != old:
        faults += [f"{readable.name}: lacks {name}" for name in sorted(set(lines) - set(old))]
        faults += [f"{readable.name}: has {name}, which is not exported" for name in sorted(set(old) - set(lines))]
        faults.append(f"{readable.name}: if that is meant, renew it with --write")
    return report(faults, f"{len(found)} names, as listed")


def check_used(tool, thing):
    used = demangled(name for name, _ in nm(tool, [], [thing]))
    # Programs refer to a class's description and constructors, and these to its name and table.
    expected = {name for name in read_list(READABLE[0]) if not name.startswith(("typeinfo name for", "vtable for"))}
    return report([f"{name}: exported, not used: use it there" for name in sorted(expected - used)],
                  f"{len(expected)} names, all used")


def check_visible(readelf, objects):
    # What is local to a function (_ZZ) is nobody's to call.
    rows = [line.split(None, 7) for line in output(readelf, "--wide", "--symbols", *objects).splitlines()]
    found = {row[7]: row[3] == "OBJECT" for row in rows
             if len(row) == 8 and row[4] != "LOCAL" and row[5] == "DEFAULT" and row[6] != "UND"
             and not row[7].startswith("_ZZ") and not any(name in row[7] for name in EXCEPTIONS)}
    return report(list(differences(listed(elf=False), found)), f"{len(found)} names, as listed")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--readelf", default="readelf")
    mode = parser.add_mutually_exclusive_group()
    mode.add_argument("--write", action="store_true")
    mode.add_argument("--used", action="store_true")
    mode.add_argument("--visible", action="store_true")
    parser.add_argument("binary", type=pathlib.Path, nargs="+")
    options = parser.parse_args()
    if options.used:
        return check_used(options.nm, options.binary[0])
    if options.visible:
        return check_visible(options.readelf, options.binary)
    return check_library(options.nm, options.binary[0], options.write)


if __name__ == "__main__":
    sys.exit(main())
