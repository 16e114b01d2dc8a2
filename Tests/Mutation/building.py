"""A copy of the sources, a quick build of it, and workers that build and test single mutants beside it."""

import ctypes
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

# As quick to build as can be. Warnings would tell of many mutants; they are to die by the tests.
CONFIGURATION = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_COMPILER_LAUNCHER=", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                 "-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld",
                 "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld", "-DQV_BUILD_TESTS=ON", "-DQV_BUILD_PROGRAMS=OFF"]
PRECOMPILED = ("algorithm any array atomic chrono cmath cstdint exception filesystem functional iterator map memory mutex "
               "optional string string_view thread utility variant vector").split()
PRECOMPILED_IN_TESTS = PRECOMPILED + ["fstream", "iostream", "sstream", "gmock/gmock.h", "gtest/gtest.h"]


SUITE_TIME = re.compile(r"^\[-+\] \d+ tests? from (?:\w+/)?(\w+)(?:/\d+)? \((\d+) ms total\)", re.MULTILINE)
TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+),", re.MULTILINE)


@dataclass(frozen=True)
class Room:
    folder: str
    library: str

    @property
    def program(self):
        return self.folder + "Tests"


ROOMS = {room.folder: room for room in (Room("Source", "QVCardScan"), Room("Platform", "QVPlatform"),
                                        Room("SocialSearch", "QVSocialSearch"))}


@dataclass(frozen=True)
class CleanTimes:
    """The seconds that each suite takes on the clock, and the part of them that a processor works."""
    suites: dict
    processor_share: float


class BuildFailed(Exception):
    pass


def mirror(root, target):
    """Makes `target` what the working tree at `root` is, without touching what is the same already."""
    listing = subprocess.run(["git", "-C", str(root), "ls-files", "-zco", "--exclude-standard"], check=True,
                             stdout=subprocess.PIPE).stdout.decode()
    files = {name for name in listing.split("\0") if name and (root / name).is_file()}
    for name in sorted(files):
        _copy_changed(root / name, target / name)
    for path in [path for path in target.rglob("*") if path.is_file() or path.is_symlink()]:
        if str(path.relative_to(target)) not in files:
            path.unlink()


def _copy_changed(source, target):
    if target.is_file() and source.read_bytes() == target.read_bytes():
        return
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(source, target)


@dataclass(frozen=True)
class Limits:
    """On the clock, of the processor in each process, of the address space in each process."""
    seconds: float
    processor_seconds: float
    memory: int = resource.RLIM_INFINITY


def run(command, folder, limits, environment=None):
    """The exit status and the output of a command, which is ended with all it started when its time is up: status None.
    What it may use is limited, so that a mutant harms nobody."""
    def limit():
        processor = int(limits.processor_seconds) + 1
        resource.setrlimit(resource.RLIMIT_CPU, (processor, processor + 1))
        resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 28, 1 << 28))
        LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_AS, (limits.memory, limits.memory))

    with subprocess.Popen(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, preexec_fn=limit, start_new_session=True) as process:
        try:
            output, _ = process.communicate(timeout=limits.seconds)
            status = process.returncode
        except subprocess.TimeoutExpired:
            status, output = None, b""
        _end_group(process)
    return (None if status == -signal.SIGXCPU else status), output.decode(errors="replace")


LIBC = ctypes.CDLL(None)
PR_SET_PDEATHSIG = 1
CLEAN_LIMITS = Limits(1200, 1200, 4 << 30)


def _end_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass


class Base:
    """The unchanged sources in the folder `tree`, built."""

    def __init__(self, folder, room, jobs):
        self.room = room
        self.tree = folder / "tree"
        self.build = folder / "base"
        if not (self.build / "build.ninja").is_file():
            self._call(["cmake", "-S", str(self.tree), "-B", str(self.build)] + CONFIGURATION)
        self._call(["ninja", "-C", str(self.build), f"-j{jobs}", room.program])
        self.room_folder = self.tree / room.folder
        self.test_folder = self.tree / "Tests" / room.folder
        self._read_commands()
        self._read_dependencies()
        self._precompile()

    def _call(self, command):
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if done.returncode != 0:
            raise BuildFailed(done.stdout.decode(errors="replace")[-4000:])

    def _read_commands(self):
        """What compiles each object, and what links the library and the program."""
        self.compile = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            self.compile[words[words.index("-o") + 1]] = words
        library = f"CMakeFiles/{self.room.library}.dir/"
        program = f"CMakeFiles/{self.room.program}.dir/"
        self.library_objects = [name for name in self.compile if library in name]
        # What the tests share is in an archive, and belongs to no suite.
        self.support_objects = [name for name in self.compile if "CMakeFiles/TestSupport.dir/" in name]
        self.test_objects = [name for name in self.compile if program in name] + self.support_objects
        self.link_library = self._link_command(f"lib/lib{self.room.library}.so")
        self.link_program = self._link_command(f"bin/{self.room.program}")
        self.soname = next(word for word in self.link_library if word.startswith("-Wl,-soname,")).rsplit(",", 1)[1]

    def _link_command(self, target):
        done = subprocess.run(["ninja", "-C", str(self.build), "-t", "commands", target], stdout=subprocess.PIPE, check=True)
        path = re.compile(re.escape(target) + r"[.\d]*")
        for line in reversed(done.stdout.decode().splitlines()):
            for part in line.split(" && "):
                words = shlex.split(part)
                if "-o" in words and path.fullmatch(words[words.index("-o") + 1]):
                    return words
        raise BuildFailed(f"no command links {target}")

    def _read_dependencies(self):
        """Which objects are made of a file, and of which files an object is made."""
        done = subprocess.run(["ninja", "-C", str(self.build), "-t", "deps"], stdout=subprocess.PIPE, check=True)
        self.objects_of, self.files_of, self.words, self.symbols = {}, {}, {}, {}
        objects = set(self.library_objects) | set(self.test_objects)
        current = None
        known = {}
        for line in done.stdout.decode().splitlines():
            if line and not line.startswith(" "):
                current = line.split(":")[0]
            elif line.strip() and current in objects and line.strip().startswith((str(self.tree), str(self.build), "include/")):
                name = line.strip()
                if name not in known:
                    known[name] = os.path.realpath(self.build / name)
                self.objects_of.setdefault(known[name], set()).add(current)
                self.files_of.setdefault(current, set()).add(Path(known[name]))

    def _precompile(self):
        """The headers of others, read once for all."""
        for name, headers in ((self.library_objects[0], PRECOMPILED), (self.test_objects[0], PRECOMPILED_IN_TESTS),
                              (self.support_objects[0], PRECOMPILED_IN_TESTS)):
            header = self.precompiled(name)
            header.parent.mkdir(exist_ok=True)
            text = "".join(f"#include <{name}>\n" for name in headers)
            made = Path(str(header) + ".gch")
            if made.is_file() and header.is_file() and header.read_text() == text:
                continue
            header.write_text(text)
            words = list(self.compile[name])
            words[words.index("-o") + 1] = str(made)
            words[words.index("-c") + 1] = str(header)
            self._call_in_build(words[:words.index("-c")] + ["-x", "c++-header"] + words[words.index("-c"):])

    def _call_in_build(self, command):
        done = subprocess.run(command, cwd=self.build, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if done.returncode != 0:
            raise BuildFailed(done.stdout.decode(errors="replace")[-4000:])

    def precompiled(self, name):
        part = "support" if name in self.support_objects else "tests" if name in self.test_objects else "library"
        return self.build / "precompiled" / f"{self.room.folder}-{part}.h"

    def source_of(self, name):
        words = self.compile[name]
        return Path(words[words.index("-c") + 1])

    def knows(self, name, entity, header):
        """Whether an object may be another when something of a header is: a function that nothing is made of where it is
        called, since that is what a build without optimisation does, or any other name."""
        if entity.endswith("("):
            return f"{len(entity) - 1}{entity[:-1]}" in self._symbols_of(name)
        return any(file != header and entity in self._words_of(file) for file in self.files_of[name])

    def _symbols_of(self, name):
        if name not in self.symbols:
            self.symbols[name] = subprocess.run(["nm", str(self.build / name)], stdout=subprocess.PIPE, check=True).stdout.decode()
        return self.symbols[name]

    def _words_of(self, file):
        if file not in self.words:
            self.words[file] = set(re.findall(r"\w+", file.read_text(encoding="utf-8")))
        return self.words[file]

    def suites_of(self, name):
        """The suites that an object of the test program holds."""
        return TEST.findall(self.source_of(name).read_text(encoding="utf-8"))

    def environment(self):
        return {**os.environ, "GTEST_COLOR": "no"}

    def clean_times(self):
        """How long the suites take when nothing is changed; all tests must pass."""
        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
        command = [str(self.build / "bin" / self.room.program), "--gtest_color=no"]
        status, output = run(command, self.build, CLEAN_LIMITS, self.environment())
        if status != 0:
            raise BuildFailed("The tests fail without any change:\n" + output[-4000:])
        times = {}
        for suite, milliseconds in SUITE_TIME.findall(output):
            times[suite] = times.get(suite, 0) + int(milliseconds) / 1000
        used = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before
        return CleanTimes(times, min(1, used / max(sum(times.values()), 0.001)))
