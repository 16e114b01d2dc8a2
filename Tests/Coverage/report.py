#!/usr/bin/env python3
"""How much of the libraries the tests run, room by room, and whether what they leave out is explained.

usage: report.py ROOT EXPLAINED JSON…

JSON is what gcovr wrote. A line that never runs, and a line with a branch that is never taken, is explained by an entry in
the file EXPLAINED, or else it is printed and the exit status is 1. So it is with an entry that explains nothing any more.
"""

import json
import sys
from pathlib import Path

ROOMS = ("Platform", "SocialSearch", "Source")
LINES_AT_LEAST = 95.0
BRANCHES_AT_LEAST = 85.0


class Line:
    """What is known of one line from all programs that were built with it."""

    def __init__(self):
        self.count = 0
        self.branches = []

    def add(self, line):
        self.count += line["count"]
        taken = [branch["count"] for branch in line["branches"]]
        if len(taken) > len(self.branches):
            self.branches, taken = taken, self.branches
        for index, count in enumerate(taken):
            self.branches[index] += count

    def missing(self):
        """Which of its branches nobody took; none when the line itself never ran."""
        return sum(1 for count in self.branches if count == 0) if self.count else 0


def read(root, reports):
    """The lines of each file of the rooms; a header that was reached by a link is the file that the link names."""
    files = {}
    for report in reports:
        for entry in json.loads(Path(report).read_text())["files"]:
            path = (root / entry["file"]).resolve()
            if not path.is_relative_to(root) or path.relative_to(root).parts[0] not in ROOMS:
                continue
            lines = files.setdefault(str(path.relative_to(root)), {})
            for line in entry["lines"]:
                if not line.get("gcovr/noncode"):
                    lines.setdefault(line["line_number"], Line()).add(line)
    return files


def uncovered(root, files):
    """What is left out, as entries of the list, each with the places it stands for."""
    found = {}
    for path, lines in sorted(files.items()):
        text = (root / path).read_text().splitlines()
        for number, line in sorted(lines.items()):
            kind = "line" if line.count == 0 else "branch" if line.missing() else None
            if kind:
                found.setdefault(f"{path}: {kind}: {text[number - 1].strip()}", []).append(number)
    return found


def explained(path):
    """The entries of the list: (those that must be there, those that may)."""
    always, sometimes = set(), set()
    for line in Path(path).read_text().splitlines():
        if line.startswith("sometimes "):
            sometimes.add(line.removeprefix("sometimes "))
        elif line and not line.startswith("#"):
            always.add(line)
    return always, sometimes


def share(done, of):
    return 100.0 * done / of if of else 100.0


def table(files):
    """Prints a row for each room and one for all; the shares of all rows."""
    rows = {}
    for path, lines in files.items():
        for room in (path.split("/")[0], "all"):
            row = rows.setdefault(room, [0, 0, 0, 0])
            row[0] += sum(1 for line in lines.values() if line.count)
            row[1] += len(lines)
            row[2] += sum(len(line.branches) - sum(1 for count in line.branches if count == 0) for line in lines.values())
            row[3] += sum(len(line.branches) for line in lines.values())
    print(f"{'room':<14}{'lines':>14}{'':>8}{'branches':>14}")
    for room in (*ROOMS, "all"):
        run, lines, taken, branches = rows.get(room, [0, 0, 0, 0])
        print(f"{room:<14}{f'{run}/{lines}':>14}{share(run, lines):7.1f}%{f'{taken}/{branches}':>14}{share(taken, branches):7.1f}%")
    return rows


def main():
    root, path, *reports = sys.argv[1:]
    root = Path(root).resolve()
    files = read(root, reports)
    rows = table(files)
    failed = False
    for room in ROOMS:
        run, lines, taken, branches = rows.get(room, [0, 0, 0, 0])
        if not lines or share(run, lines) < LINES_AT_LEAST or share(taken, branches) < BRANCHES_AT_LEAST:
            print(f"{room}: less than {LINES_AT_LEAST:.0f} % of the lines or {BRANCHES_AT_LEAST:.0f} % of the branches")
            failed = True
    found = uncovered(root, files)
    always, sometimes = explained(path)
    for entry, numbers in found.items():
        if entry not in always and entry not in sometimes:
            print(f"not explained: {entry}  (line {', '.join(map(str, numbers))})")
            failed = True
    for entry in sorted(always - set(found)):
        print(f"explained in vain: {entry}")
        failed = True
    missing = [entry for entry in found if ": line: " in entry]
    print(f"{len(missing)} lines and {len(found) - len(missing)} lines with branches are left out")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
