#!/usr/bin/env python3
"""Checks that the house keeps its rules: who includes whom, and which word stands in which file only.

Usage: check_house.py [--self-test] [ROOT]
Prints one line a fault, with what to do about it; exits 1 if there is one.
"""

import pathlib
import re
import sys
import tempfile

# What a room may include besides its own files and the standard library: files, or folders ending in a slash.
FLOORS = {
    "include": [],
    "core": ["kord/range.h", "kord/errors.h", "kord/body.h", "kord/basic_string.h",
             "kord/string.h"],
    "text": ["kord/range.h", "kord/chars.h", "kord/real.h", "core/case.h", "core/lanes.h", "core/scan.h"],
    "format": ["kord/range.h", "kord/basic_string.h", "kord/string.h", "kord/format.h", "kord/chars.h", "kord/real.h",
               "core/copy.h", "core/draft.h", "core/lanes.h", "core/scan.h", "text/classify.h", "text/number.h"],
    "convert": ["kord/convert.h", "kord/string.h", "kord/range.h", "kord/errors.h", "core/copy.h", "core/draft.h",
                "core/scan.h", "core/lanes.h"],
    "hash": ["kord/hash.h"],
    "path": ["kord/path.h", "kord/list.h", "kord/string.h", "kord/chars.h", "core/scan.h", "text/classify.h"],
}
# A single file that may include more than its room.
GUESTS = {
    "core/case.h": ["kord/chars.h"],  # of the text rooms, core needs the case mapping only
}
# The standard headers that a public header may cost its users.
LIGHT = {"cstddef", "exception", "iterator", "new", "type_traits"}
# What only these files may say; the pattern is searched in code, comments and strings left out.
ONLY_IN = [
    (r"\b_mm\w*|\b__m\d+\w*|\b\w*mmintrin\b", {"core/lanes.h"}, "intrinsics: give core/lanes.h a name for it"),
    (r"\bthrow\b", {"core/errors.cpp"}, "throw: call a thrower of core/fail.h"),
    (r"\b(?:malloc|realloc|calloc|free)\s*\(", {"core/body.h"}, "the heap: use core/body.h"),
    (r"<cstdio>|<stdio\.h>|<iostream>", {"format/printf.cpp"}, "stdio: only format/printf.cpp prints"),
    (r"\bcatch\s*\(", set(), "catch: the library catches nothing"),
    (r"\busing\s+namespace\b", set(), "using namespace: write the name"),
    (r"#\s*define\s+(?!KORD_)\w+", set(), "a macro: use a template or a constant, or name it KORD_"),
]
# What would hide a finding of clang-tidy or of a sanitizer, in a comment or in the code.
SUPPRESSIONS = re.compile(r"NOLINT|no_sanitize|pragma\s+\w+\s+diagnostic")


def without_comments(text, strings):
    """The code with comments, and unless wanted, the contents of strings, blanked out; lines stay where they are."""
    token = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'', re.S)

    def blank(match):
        piece = match.group()
        if piece[0] in "\"'":
            return piece if strings else piece[0] * 2
        return re.sub(r"[^\n]", " ", piece)

    return token.sub(blank, text)


def check(root):
    """All faults of the tree, as lines."""
    faults = []
    headers = {path.name for path in (root / "include/kord").glob("*.h")}
    everything = (root / "include/kord/kord.h").read_text(encoding="utf-8")
    for name in sorted(headers - {"kord.h", "export.h", "std.h"}):
        if f"<kord/{name}>" not in everything:
            faults.append(f"include/kord/kord.h: leaves out {name}: include it")
    for room, allowed in FLOORS.items():
        for path in sorted((root / room).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                faults += check_file(path, path.relative_to(root).as_posix(), room, allowed)
    return faults


def check_file(path, name, room, allowed):
    text = path.read_text(encoding="utf-8")
    faults = [f"{name}: {word}: mend what the tool found" for word in SUPPRESSIONS.findall(text)]
    for number, line in enumerate(without_comments(text, strings=True).splitlines(), 1):
        include = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', line)
        if not include:
            continue
        wanted = include.group(2)
        own = wanted.startswith("kord/") if room == "include" else wanted.startswith(room + "/")
        ours = "/" in wanted and (wanted.startswith("kord/") or wanted.split("/")[0] in FLOORS)
        if ours and not own and wanted not in allowed + GUESTS.get(name, []):
            faults.append(f"{name}:{number}: {room}/ may not include {wanted}: move the code or the rule")
        if include.group(1) == '"' and not ours:
            faults.append(f'{name}:{number}: write <{wanted}> or name it from the root')
        if room == "include" and not ours and wanted not in LIGHT:
            faults.append(f"{name}:{number}: <{wanted}> in a public header is paid for by every user: do without")
    for number, line in enumerate(without_comments(text, strings=False).splitlines(), 1):
        for pattern, homes, advice in ONLY_IN:
            if name not in homes and re.search(pattern, line):
                faults.append(f"{name}:{number}: {advice}")
    return faults


def self_test():
    """Every rule broken once in a small tree; returns the rules that nobody noticed."""
    rows = [
        ("core/a.cpp", '#include "path/x.h"', "may not include"),
        ("core/a.cpp", "#include <kord/chars.h>", "may not include"),
        ("text/a.cpp", "#include <kord/string.h>", "may not include"),
        ("hash/a.cpp", '#include "core/scan.h"', "may not include"),
        ("path/a.cpp", '#include "x.h"', "from the root"),
        ("include/kord/range.h", "#include <string>", "paid for"),
        ("core/a.cpp", "void f() { throw 1; }", "throw"),
        ("core/a.cpp", "void* p = malloc (3);", "heap"),
        ("core/a.cpp", "__m128i v;", "intrinsics"),
        ("core/a.cpp", "#include <cstdio>", "stdio"),
        ("core/a.cpp", "#define MAX 3", "macro"),
        ("core/a.cpp", "int f() try { } catch (...) { }", "catch"),
        ("core/a.cpp", "int x; // NOLINT", "mend"),
        ("include/kord/new.h", "int x;", "leaves out"),
        ("core/a.cpp", '// throw malloc( __m128i\nconst char* s = "throw"; /* catch (\n */ int free_ = 1;', None),
        ("core/case.h", "#include <kord/chars.h>", None),
        ("core/lanes.h", "#include <emmintrin.h>\n__m128i v;", None),
    ]
    missed = []
    for name, code, expected in rows:
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for path, content in (("include/kord/kord.h", "#include <kord/range.h>\n"), ("include/kord/range.h", ""),
                                  (name, code)):
                (root / path).parent.mkdir(parents=True, exist_ok=True)
                (root / path).write_text(content, encoding="utf-8")
            faults = check(root)
            if [expected in fault for fault in faults] != ([True] if expected else []):
                missed.append(f"self-test: {name}: {code!r}: expected {expected!r}, got {faults}")
    return missed


def main():
    arguments = [a for a in sys.argv[1:] if a != "--self-test"]
    root = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parent.parent
    faults = self_test() if "--self-test" in sys.argv else check(root)
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
