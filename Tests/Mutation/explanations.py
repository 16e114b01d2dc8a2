"""Survivors of which Tests/mutants.md says why they may live.

An entry is a heading `### PATH`, and below it a paragraph for each mutant:

    - `the line before`
      `the line after`
      why
"""

import re

ENTRY = re.compile(r"^- `` (?P<before>.*) ``\n  `` (?P<after>.*) ``$", re.MULTILINE)


def read(path):
    """The keys of what is explained there."""
    if not path.is_file():
        return set()
    keys = set()
    for section in re.split(r"^### ", path.read_text(encoding="utf-8"), flags=re.MULTILINE)[1:]:
        name = section.split("\n", 1)[0].strip()
        keys |= {(name, match["before"], match["after"]) for match in ENTRY.finditer(section)}
    return keys


def key(room, case):
    return (f"{room}/{case.name}", *case.lines())
