"""Which mutants are tried, with which tests first, and what became of them."""

import hashlib
import json
import os
import queue
import random
import re
import threading
import time
from dataclasses import dataclass

from mutants import Mutant, line_of, mutants_of
from worker import Verdict, Worker


@dataclass(frozen=True)
class Case:
    """A mutant of a file. Its identity is the file's whole content and the change: after an edit it is another one."""
    name: str
    code: str
    mutant: Mutant

    @property
    def identity(self):
        parts = (self.name, self.code, str(self.mutant.start), str(self.mutant.end), self.mutant.after)
        return hashlib.sha256("\0".join(parts).encode()).hexdigest()[:20]

    @property
    def line(self):
        return line_of(self.code, self.mutant.start)

    def lines(self):
        """The lines that are changed, before and after, without the space around and between them."""
        start = self.code.rfind("\n", 0, self.mutant.start) + 1
        end = self.code.find("\n", self.mutant.end)
        end = len(self.code) if end < 0 else end
        changed = self.code[start:self.mutant.start] + self.mutant.after + self.code[self.mutant.end:end]
        return " ".join(self.code[start:end].split()), " ".join(changed.split())


def cases_of(folder):
    """Each file of a room and its mutants."""
    cases = {}
    for path in sorted(folder.rglob("*")):
        if path.suffix in (".cpp", ".h"):
            code = path.read_text(encoding="utf-8")
            name = str(path.relative_to(folder))
            cases[name] = [Case(name, code, mutant) for mutant in mutants_of(code)]
    return {name: found for name, found in cases.items() if found}


def sample(cases, size, seed):
    """As many of each file as it has lines that can be changed, so that a table of texts does not crowd out the rest. The
    same seed gives the same sample, and a file's part does not depend on the others' contents but for its size."""
    lines = {name: len({case.line for case in found}) for name, found in cases.items()}
    total = sum(lines.values())
    chosen = []
    for name, found in cases.items():
        count = min(len(found), max(1, round(size * lines[name] / total)))
        chosen += random.Random(f"{seed} {name}").sample(found, count)
    random.Random(seed).shuffle(chosen)
    return chosen


class Journal:
    """What became of each mutant, a line each. One that is cut short by a kill is as if it had never been."""

    def __init__(self, path):
        self.path = path
        self.entries = {}
        self.lock = threading.Lock()
        if path.is_file():
            self._read()

    def _read(self):
        whole = self.path.read_bytes()
        whole = whole[:whole.rfind(b"\n") + 1]
        os.truncate(self.path, len(whole))
        for line in whole.decode().splitlines():
            entry = json.loads(line)
            self.entries[entry["id"]] = entry

    def verdict_of(self, case):
        entry = self.entries.get(case.identity)
        return Verdict(entry["verdict"], entry["by"]) if entry else None

    def add(self, case, verdict, seconds):
        before, after = case.lines()
        entry = {"id": case.identity, "file": case.name, "line": case.line, "before": before, "after": after,
                 "verdict": verdict.word, "by": verdict.by, "seconds": round(seconds, 1)}
        with self.lock:
            self.entries[entry["id"]] = entry
            with open(self.path, "a", encoding="utf-8") as file:
                file.write(json.dumps(entry, ensure_ascii=False) + "\n")
                file.flush()
                os.fsync(file.fileno())

    def killers_of(self, name):
        """The suites that killed mutants of a file."""
        with self.lock:
            tests = {entry["by"] for entry in self.entries.values() if entry["file"] == name and "." in entry["by"]}
        return {re.sub(r"/\d+$", "", test.split(".")[0]).rsplit("/", 1)[-1] for test in tests}


class FirstTests:
    """Which tests may know a file, in the order in which they are tried before the rest: those of its unit; those of units
    that are called alike, or of what includes it where there are none, and all that killed a mutant of it before."""

    def __init__(self, base, journal):
        self.base = base
        self.journal = journal
        self.includers = self._includers()

    def _includers(self):
        includers = {}
        for path in self.base.room_folder.rglob("*"):
            if path.suffix in (".cpp", ".h"):
                for header in re.findall(r'^#include "([^"]+)"', path.read_text(encoding="utf-8"), re.MULTILINE):
                    includers.setdefault(header.rsplit("/", 1)[-1], set()).add(path.stem)
        return includers

    def of(self, name):
        seen, units = set(), [os.path.splitext(os.path.basename(name))[0]]
        own = self._suites_of_unit(units[0], exactly=True)
        suites = set()
        while units and not suites:
            seen |= set(units)
            for unit in units:
                suites |= self._suites_of_unit(unit)
            units = sorted({user for unit in units for user in self.includers.get(unit + ".h", ())} - seen)
        suites |= self.journal.killers_of(name)
        return [step for step in (own, suites - own) if step]

    def _suites_of_unit(self, unit, exactly=False):
        suites = set()
        for test in self.base.test_objects:
            stem = self.base.source_of(test).stem
            if stem == unit + "Test" or (not exactly and stem.startswith(unit) and stem.endswith("Test")):
                suites |= set(self.base.suites_of(test))
        return suites


class Campaign:
    def __init__(self, base, journal, workers, tell):
        self.base = base
        self.journal = journal
        self.workers = workers
        self.tell = tell
        self.first_tests = FirstTests(base, journal)

    def run(self, cases):
        todo = queue.SimpleQueue()
        for case in cases:
            todo.put(case)
        threads = [threading.Thread(target=self._work, args=(worker, todo), daemon=True) for worker in self.workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()

    def _work(self, worker, todo):
        while True:
            try:
                case = todo.get_nowait()
            except queue.Empty:
                return
            before = time.monotonic()
            verdict = worker.judge(case.name, case.code, case.mutant, self.first_tests.of(case.name))
            self.journal.add(case, verdict, time.monotonic() - before)
            self.tell(case, verdict)


def workers_for(base, jobs, clean_times):
    return [Worker(base, number, clean_times) for number in range(jobs)]
