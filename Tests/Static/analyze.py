#!/usr/bin/env python3
"""Runs GCC's analyzer over the units of the libraries and programs.

usage: analyze.py BUILD [-j N] [--seconds N] [PATTERN…]

Prints what it says of units whose path holds one of the patterns (of all of them without one), and exits 1 when it finds
anything. A unit that it follows for longer than the seconds (of processor time) is given up, and named; so is one that it
follows until its own bounds only. What it said of a unit stands in BUILD/analysis until the unit or what that includes
changes, so that the work can be ended and taken up again.

GCC 12's analyzer is made for C. In C++ two of its kinds of findings are always wrong, and are left out: it knows neither that
`new` throws nor that a function which returns an object by value writes it where the caller wants it. Other findings that were
looked at and are wrong stand in in-vain.txt beside this, with the reasons.
"""

import argparse
import hashlib
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
# What it is asked for besides, and to say where it stopped by itself.
ANALYZER = ("-fanalyzer", *WRONG, "-Wanalyzer-too-complex", "-fdiagnostics-plain-output", "-o", os.devnull)
LARGEST_BYTES = 6 << 30
# How it tells that it was ended, or broke.
ENDS = ("CPU time limit", "signal terminated", "out of memory", "internal compiler error")


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
    # Whoever has a compiler cache would ask it in vain.
    words = words[1:] if Path(words[0]).name == "ccache" else words
    return [word for word in words if "_FORTIFY_SOURCE" not in word] + [LEVEL]


class Analysis:
    """The work on all units: how long each may take, and what is known of it."""

    def __init__(self, build, seconds, in_vain=()):
        self.folder = build / "analysis"
        self.seconds = seconds
        self.in_vain = in_vain

    def of(self, unit):
        """What is known of a unit: `text` (null when it came to no end), `complete` and `isNew`."""
        name, folder, words = unit
        kept = self.folder / f"{name}.json"
        key = key_of(folder, words)
        known = json.loads(kept.read_text()) if kept.exists() else {}
        if key and known.get("key") == key and (known["text"] is not None or known["seconds"] >= self.seconds):
            return self.told(name, {**known, "isNew": False})
        known = {"key": key, "seconds": self.seconds, **self.run(folder, words)}
        kept.parent.mkdir(parents=True, exist_ok=True)
        kept.with_suffix(".new").write_text(json.dumps(known))
        kept.with_suffix(".new").replace(kept)
        return self.told(name, {**known, "isNew": True})

    def run(self, folder, words):
        result = subprocess.run(words + list(ANALYZER), cwd=folder, capture_output=True, text=True, preexec_fn=self.limit)
        if result.returncode < 0 or any(end in result.stderr for end in ENDS):
            return {"text": None, "complete": False}
        lines = [line for line in result.stderr.splitlines(True) if "[-Wanalyzer-too-complex]" not in line]
        text = "".join(lines)
        says = result.returncode or "warning:" in text
        return {"text": text if says else "", "complete": "bailed out early" not in result.stderr}

    def limit(self):
        resource.setrlimit(resource.RLIMIT_CPU, (self.seconds, self.seconds + 1))
        resource.setrlimit(resource.RLIMIT_AS, (LARGEST_BYTES, LARGEST_BYTES))

    def told(self, name, known):
        warnings = [line for line in (known["text"] or "").splitlines() if " warning: " in line]
        if warnings and all(self.is_in_vain(name, line) for line in warnings):
            known = {**known, "text": ""}
        if known["text"] is None:
            print(f"not analysed: {name}: no end in {self.seconds} seconds and {LARGEST_BYTES >> 30} GiB", flush=True)
        elif not known["complete"]:
            print(f"not to its end: {name}: the analyzer's own bounds", flush=True)
        sys.stdout.write(known["text"] or "")
        return known

    def is_in_vain(self, name, warning):
        return any(name == unit and words in warning for unit, words in self.in_vain)


def key_of(folder, words):
    """What the answer depends on: the call, the compiler, and the unit with all that it includes."""
    expanded = subprocess.run([*words, "-E"], cwd=folder, capture_output=True)
    compiler = subprocess.run([words[0], "--version"], capture_output=True).stdout
    if expanded.returncode:
        return ""
    call = json.dumps([*words, *ANALYZER]).encode()
    return hashlib.sha256(b"\0".join([call, compiler, expanded.stdout])).hexdigest()


def findings_in_vain():
    """Units and words of warnings that mean nothing: lines "unit | words | reason"."""
    lines = (Path(__file__).parent / "in-vain.txt").read_text().splitlines()
    return [tuple(line.split(" | ")[:2]) for line in lines if line and not line.startswith("#")]


def arguments():
    parser = argparse.ArgumentParser(description="Runs GCC's analyzer over the units of the libraries and programs.")
    parser.add_argument("build", type=Path)
    parser.add_argument("patterns", nargs="*", metavar="PATTERN")
    parser.add_argument("-j", type=int, default=os.cpu_count(), metavar="N", help="units at a time")
    parser.add_argument("--seconds", type=int, default=120, metavar="N", help="processor time for one unit")
    return parser.parse_intermixed_args()


def main():
    given = arguments()
    wanted = list(units(given.build, given.patterns))
    analysis = Analysis(given.build, given.seconds, findings_in_vain())
    with ThreadPoolExecutor(given.j) as pool:
        results = list(pool.map(analysis.of, wanted))
    given_up = sum(result["text"] is None for result in results)
    said = sum(bool(result["text"]) for result in results)
    stopped = sum(result["text"] is not None and not result["complete"] for result in results)
    new = sum(result["isNew"] for result in results)
    print(f"{len(wanted) - given_up} units analysed ({new} now, the others before), {said} with findings, "
          f"{stopped} not to their end, {given_up} given up")
    return 1 if said or not wanted else 0


if __name__ == "__main__":
    sys.exit(main())
