#!/usr/bin/env python3
"""Checks that the library needs nothing but what tools/imports.txt lists.

Usage: check_imports.py [--nm NM] [--objdump OBJDUMP] LIBRARY OBJECT...

Looks at the libraries that the finished one is loaded with, and at what its objects leave undefined together. A line of
the list that a compiler does not make use of is no fault: each of them needs a little else. Prints one line a fault,
with what to do about it; exits 1 if there is one.
"""

import argparse
import pathlib
import re
import sys

from symbols import ROOT, demangled, nm, output, read_list, report


def needed_libraries(objdump, library):
    return set(re.findall(r"^\s+(?:NEEDED|DLL Name:)\s+(\S+)$", output(objdump, "-p", library), re.MULTILINE))


def undefined_symbols(tool, objects):
    pairs = nm(tool, [], objects)
    own = {name for name, letter in pairs if letter not in "Uvw"}
    return demangled({name for name, _ in pairs} - own)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--objdump", default="objdump")
    parser.add_argument("binary", type=pathlib.Path)
    parser.add_argument("objects", type=pathlib.Path, nargs="+")
    options = parser.parse_args()
    libraries = needed_libraries(options.objdump, options.binary)
    symbols = undefined_symbols(options.nm, options.objects)
    unlisted = symbols | {f"library {name}" for name in libraries}
    unlisted -= read_list(ROOT / "tools/imports.txt")
    return report([f"{name}: not in tools/imports.txt: do without, or list it" for name in sorted(unlisted)],
                  f"{len(symbols)} names and {len(libraries)} libraries, all listed")


if __name__ == "__main__":
    sys.exit(main())
