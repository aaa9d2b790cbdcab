"""What the checkers of the binary interface share: reading symbols, demangling them, and saying what is wrong."""

import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
COFF_I386 = b"\x4c\x01"


def output(*command, text=None):
    return subprocess.run([str(word) for word in command], input=text, check=True, capture_output=True, text=True).stdout


def nm(tool, options, files):
    """The symbols of some files, with their letters. Of the names of 32-bit Windows, only what the source says."""
    rows = [line.split() for line in output(tool, "--format=posix", *options, *files).splitlines()]
    pairs = [(row[0], row[1]) for row in rows if len(row) > 1 and len(row[1]) == 1]
    if pathlib.Path(files[0]).read_bytes()[:2] == COFF_I386:
        pairs = [(re.sub(r"^(__imp_)?_|@\d+$", "", name), letter) for name, letter in pairs]
    return pairs


def demangled(names):
    """The same as the source says it; the copies of a constructor or destructor become one."""
    return set(output("c++filt", text="".join(name + "\n" for name in sorted(names))).splitlines())


def read_list(path):
    """The lines of a file without comments and empty lines."""
    lines = (re.sub(r"(^|\s+)# .*", "", line) for line in path.read_text(encoding="utf-8").splitlines())
    return {line for line in lines if line}


def report(faults, good):
    """Prints one line a fault, or that all is well; returns what to exit with."""
    print("\n".join(faults) if faults else good)
    return 1 if faults else 0
