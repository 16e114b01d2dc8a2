#!/usr/bin/env python3
"""Runs GCC's analyzer over the units of the libraries and programs, as many at a time as there are processors.

usage: analyze.py BUILD [PATTERN…]

Prints what it says of units whose path holds one of the patterns (of all of them without one), and exits 1 when it finds
anything. Units that it follows without end are given up, and named. GCC 12's analyzer is made for C. In C++ two of its kinds of findings are always wrong, and are left out: it knows
neither that `new` throws nor that a function which returns an object by value writes it where the caller wants it.
"""

import json
import os
import resource
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOMS = ("Platform", "SocialSearch", "Source", "Recognition", "Host", "Interface", "Adapters")
WRONG = ("-Wno-analyzer-possible-null-dereference", "-Wno-analyzer-possible-null-argument",
         "-Wno-analyzer-use-of-uninitialized-value")
# Unoptimised: the analyzer then sees calls of the standard library as calls, instead of following it inside.
LEVEL = "-O0"
# It follows some units without end. Counted as processor time, so that a busy machine gives the same answer.
LONGEST_SECONDS = 120


def units(build, patterns):
    """The units to look at: (path, folder, words of the call)."""
    root = Path(__file__).resolve().parents[2]
    for unit in json.loads((build / "compile_commands.json").read_text()):
        path = Path(unit["file"])
        if not path.is_relative_to(root):
            continue
        name = str(path.relative_to(root))
        if name.split("/")[0] in ROOMS and "/CMakeFiles/" not in unit["file"] and matches(name, patterns):
            yield name, unit["directory"], call_of(shlex.split(unit["command"]))


def matches(name, patterns):
    return not patterns or any(pattern in name for pattern in patterns)


def call_of(words):
    output = words.index("-o")
    words = [word for word in words[:output] + words[output + 2:] if word not in ("-Werror", "-O3")]
    return [word for word in words if "_FORTIFY_SOURCE" not in word] + [
        LEVEL, "-fanalyzer", *WRONG, "-fdiagnostics-plain-output", "-o", os.devnull]


def limit():
    resource.setrlimit(resource.RLIMIT_CPU, (LONGEST_SECONDS, LONGEST_SECONDS))


def findings(unit):
    """What it says of a unit; None when it came to no end."""
    name, folder, words = unit
    result = subprocess.run(words, cwd=folder, capture_output=True, text=True, preexec_fn=limit)
    if "CPU time limit" in result.stderr or "signal terminated" in result.stderr or result.returncode < 0:
        print(f"{name}: no end in {LONGEST_SECONDS} seconds")
        return None
    return result.stderr if result.returncode or "warning:" in result.stderr else ""


def main():
    build, patterns = Path(sys.argv[1]), sys.argv[2:]
    wanted = list(units(build, patterns))
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(findings, wanted))
    sys.stdout.write("".join(text for text in results if text))
    said, endless = sum(map(bool, results)), results.count(None)
    print(f"{len(wanted)} units analyzed, {said} with findings, {endless} given up")
    return 1 if said or not wanted else 0


if __name__ == "__main__":
    sys.exit(main())
