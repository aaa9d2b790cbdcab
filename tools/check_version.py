#!/usr/bin/env python3
"""Checks that the version is the same everywhere it is written.

Usage: check_version.py VERSION [ROOT]
VERSION is the one of CMakeLists.txt. Prints one line a fault; exits 1 if there is one.
"""

import pathlib
import re
import sys


def written(root):
    """Where a version is written, and which one, as far as it goes."""
    header = (root / "include/kord/version.h").read_text(encoding="utf-8")
    yield "include/kord/version.h", ".".join(re.findall(r"#define KORD_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header))
    changes = (root / "CHANGELOG.md").read_text(encoding="utf-8")
    yield "the newest entry of CHANGELOG.md", next(iter(re.findall(r"^## (\S+)", changes, re.M)), "none")
    for found in re.findall(r"find_package\(kord ([\d.]+)", (root / "README.md").read_text(encoding="utf-8")):
        yield "README.md", found


def main():
    version = sys.argv[1]
    root = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else pathlib.Path(__file__).resolve().parent.parent)
    faults = [f"{place}: {found}, where CMakeLists.txt has {version}" for place, found in written(root)
              if found != version and not (place == "README.md" and version.startswith(found + "."))]
    print("\n".join(faults) or f"{version} everywhere")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
