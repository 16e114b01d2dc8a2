"""Builds one mutant after the other beside the unchanged build, and lets the tests loose on it."""

import os
import re
import shutil
from dataclasses import dataclass
from pathlib import Path

import building
from mutants import entity_of

COMPILE_LIMITS = building.Limits(600, 120)
# A machine that others use too lets tests wait: the clock is only for what waits for ever.
LEAST_SECONDS = 120
LEAST_PROCESSOR_SECONDS = 10
MEMORY = 4 << 30
# What the compiler says when a test is decided while it is compiled.
ASSERTED = "static assertion failed"
ALL = None
FAILED = re.compile(r"^\[  FAILED  \] ((?:\w+/)?\w+(?:/\d+)?\.[\w/]+)", re.MULTILINE)


@dataclass(frozen=True)
class Verdict:
    """`word`: killed, survived, timeout or does-not-compile; `by`: the test that failed first, where one did."""
    word: str
    by: str = ""


class Worker:
    """Has a copy of the room for itself. The tree that others work on is never touched."""

    def __init__(self, base, number, clean_times):
        self.base = base
        self.clean_times = clean_times
        self.folder = base.build / "workers" / str(number)
        shutil.rmtree(self.folder, ignore_errors=True)
        self.room_folder = self.folder / base.room.folder
        shutil.copytree(base.room_folder, self.room_folder)
        self._link_headers()
        for name in ("objects", "lib", "bin", "tmp"):
            (self.folder / name).mkdir()

    def _link_headers(self):
        """The public headers as the build has them, those of the room from the copy."""
        public = self.base.build / "include"
        for link in public.rglob("*.h"):
            target = Path(os.path.realpath(link))
            if target.is_relative_to(self.base.room_folder):
                target = self.room_folder / target.relative_to(self.base.room_folder)
            place = self.folder / "include" / link.relative_to(public)
            place.parent.mkdir(parents=True, exist_ok=True)
            place.symlink_to(target)

    def judge(self, name, code, mutant, first_suites):
        """What becomes of a mutant of the file `name` of the room. `first_suites`: sets of suites that may know it."""
        changed = self.room_folder / name
        changed.write_text(mutant.apply(code))
        try:
            return self._judge(self._objects_of(self.base.room_folder / name, code, mutant), first_suites)
        finally:
            changed.write_text(code)
            for folder in ("objects", "lib", "bin", "tmp"):
                shutil.rmtree(self.folder / folder, ignore_errors=True)
                (self.folder / folder).mkdir()

    def _judge(self, objects, first_suites):
        built = [name for name in self.base.library_objects if name in objects]
        if self._compile(built) is not None or not self._link_library(built):
            return Verdict("does-not-compile")
        affected = [name for name in self.base.test_objects if name in objects]
        for suites in first_suites + [ALL]:
            verdict = self._test(affected, suites)
            if verdict.word != "survived":
                break
        return verdict

    def _objects_of(self, file, code, mutant):
        """What must be compiled anew."""
        if file.suffix == ".cpp":
            return {name for name in self.base.library_objects if self.base.source_of(name) == file}
        objects = self.base.objects_of.get(str(file.resolve()), set())
        entity = entity_of(code, mutant.start)
        return {name for name in objects if self.base.knows(name, entity, file)} if entity else objects

    # Building

    def _compile(self, names):
        """What went wrong; nothing when nothing did."""
        for name in names:
            output = None if (self.folder / self._object(name)).is_file() else self._compile_one(name)
            if output is not None:
                return output or "no output"
        return None

    def _object(self, name):
        return "objects/" + name.replace("/", "_")

    def _compile_one(self, name):
        words = [self._own(word) for word in self.base.compile[name]]
        words[words.index("-o") + 1] = str(self.folder / self._object(name))
        words[1:1] = ["-include", str(self.base.precompiled(name))]
        status, output = building.run(words, self.base.build, COMPILE_LIMITS)
        return None if status == 0 else output

    def _own(self, word):
        """A word of a command with this worker's folders for those of the unchanged build."""
        for theirs, own in ((self.base.build / "include", self.folder / "include"), (self.base.room_folder, self.room_folder)):
            word = re.sub(re.escape(str(theirs)) + r"(?=/|$)", str(own), word)
        return word

    def _link_library(self, built):
        library = self.folder / "lib" / self.base.soname
        if not self._link(self.base.link_library, library, built, []):
            return False
        (library.parent / f"lib{self.base.room.library}.so").symlink_to(library.name)
        return True

    def _link(self, command, target, built, left_out):
        words = []
        for word in command:
            if word in left_out:
                continue
            words.append(str(self.folder / self._object(word)) if word in built else word)
        # What is otherwise taken from an archive comes first, so that the archive is not asked for it.
        words[1:1] = [str(self.folder / self._object(name)) for name in built if name not in command]
        words[words.index("-o") + 1] = str(target)
        status, _ = building.run(words, self.base.build, COMPILE_LIMITS)
        return status == 0

    # Testing

    def _test(self, affected, suites):
        """Some suites or all, in a program whose parts all know the mutant."""
        program = self.base.build / "bin" / self.base.room.program
        if affected:
            wanted = [name for name in affected if suites is ALL or name in self.base.support_objects
                      or suites & set(self.base.suites_of(name))]
            complaint = self._compile(wanted)
            if complaint is not None:
                return Verdict("killed", "static_assert") if ASSERTED in complaint else Verdict("does-not-compile")
            program = self.folder / "bin" / self.base.room.program
            others = [name for name in affected if name not in wanted]
            if not self._link(self.base.link_program, program, wanted, others):
                return Verdict("does-not-compile")
        patterns = ["*"] if suites is ALL else [start + suite + ".*" for suite in sorted(suites) for start in ("", "*/")]
        command = [str(program), "--gtest_brief=1", "--gtest_fail_fast", "--gtest_filter=" + ":".join(patterns)]
        environment = {**self.base.environment(), "LD_LIBRARY_PATH": str(self.folder / "lib"), "TMPDIR": str(self.folder / "tmp")}
        status, output = building.run(command, self.base.build, self.limits_for(suites), environment)
        if status is None:
            return Verdict("timeout")
        if status == 0:
            return Verdict("survived")
        failed = FAILED.search(output)
        return Verdict("killed", failed.group(1) if failed else f"status {status}")

    def limits_for(self, suites):
        """Ten times what the suites take without a change."""
        clean = self.clean_times
        seconds = 10 * sum(time for suite, time in clean.suites.items() if suites is ALL or suite in suites)
        return building.Limits(max(LEAST_SECONDS, seconds), max(LEAST_PROCESSOR_SECONDS, seconds * clean.processor_share),
                               MEMORY)
