"""That a mutant which a test notices is told from one which none does, and that nothing of it gets lost or stays."""

import os
import signal
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import building  # noqa: E402
import campaign  # noqa: E402
import explanations  # noqa: E402
from mutants import mutants_of  # noqa: E402
from worker import Verdict, Worker  # noqa: E402

UNIT = """\
#include "Unit.h"
int answer(int question) {
    int spare = 8;
    while (question > 100) question -= 1;
    return question == kQuestion ? 42 : 0;
}
"""
# In an archive, as what all tests share is.
SUPPORT = '#include "Unit.h"\nint supported() { return kSpare; }\n'
HEADER = "inline constexpr int kQuestion = 7;\ninline constexpr int kSpare = 3;\nint answer(int question);\n"
# Stands for a program of tests: it says what failed in the same words.
TESTS = """\
#include "Unit.h"
#include <cstdio>
int supported();
#if 0
TEST(UnitTest, KnowsTheAnswer)
#endif
int main(int, char** arguments) {
    const bool right = answer(7) == 42 && answer(6) == 0 && answer(200) == 0 && supported() == kSpare;
    if (!right) std::puts("[  FAILED  ] UnitTest.KnowsTheAnswer");
    std::puts(arguments[3]);
    return right ? 0 : 1;
}
"""


class SmallBase:
    """A library of one file, and a program that tests it, in the form in which the real build is known."""
    room = building.Room("Source", "unit")
    soname = "libunit.so.0"
    library_objects = ["unit.o"]
    support_objects = ["support.o"]
    test_objects = ["tests.o", "support.o"]

    def __init__(self, folder):
        self.build = folder / "base"
        self.room_folder = folder / "tree" / "Source"
        tests = folder / "tree" / "Tests"
        self.sources = {"unit.o": self.room_folder / "Unit.cpp", "tests.o": tests / "UnitTest.cpp",
                        "support.o": tests / "Support.cpp"}
        texts = {self.sources["unit.o"]: UNIT, self.room_folder / "Unit.h": HEADER, self.build / "none.h": "",
                 self.sources["support.o"]: SUPPORT,
                 self.sources["tests.o"]: TESTS}
        for path, text in texts.items():
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        for name in ("include", "lib", "bin"):
            (self.build / name).mkdir()
        (self.build / "include" / "Unit.h").symlink_to(self.room_folder / "Unit.h")
        self.compile = {name: ["c++", "-fPIC", "-I", str(self.build / "include"), "-o", name, "-c", str(source)]
                        for name, source in self.sources.items()}
        self.link_library = ["c++", "-shared", "-Wl,-soname," + self.soname, "-o", "lib/" + self.soname, "unit.o"]
        self.link_program = ["c++", "-o", "bin/SourceTests", "tests.o", "libsupport.a", "lib/" + self.soname,
                             "-Wl,-rpath,$ORIGIN/../lib", "-Wl,--enable-new-dtags"]
        self.objects_of = {os.path.realpath(self.room_folder / "Unit.h"): {"unit.o", "tests.o", "support.o"}}
        self.files_of = {name: {self.room_folder / "Unit.h", source} for name, source in self.sources.items()}
        self.words, self.symbols = {}, {}
        archive = ["ar", "rc", "libsupport.a", "support.o"]
        for command in [*self.compile.values(), archive, self.link_library, self.link_program]:
            status, output = building.run(command, self.build, building.CLEAN_LIMITS)
            assert status == 0, output

    def precompiled(self, _):
        return self.build / "none.h"

    def source_of(self, name):
        return self.sources[name]

    knows = building.Base.knows
    _symbols_of = building.Base._symbols_of
    _words_of = building.Base._words_of
    suites_of = building.Base.suites_of
    environment = building.Base.environment


def mutant(code, before, after):
    return next(found for found in mutants_of(code) if (code[found.start:found.end], found.after) == (before, after))


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(os.path.realpath(folder.name))


class Judging(Folder):
    def setUp(self):
        super().setUp()
        self.base = SmallBase(self.folder)
        self.worker = Worker(self.base, 0, building.CleanTimes({"UnitTest": 0.1}, 1))

    def judge(self, name, code, before, after, suites=frozenset({"UnitTest"})):
        return self.worker.judge(name, code, mutant(code, before, after), [suites] if suites else [])

    def test_one_that_a_test_notices_is_killed(self):
        self.assertEqual(self.judge("Unit.cpp", UNIT, "==", "!="), Verdict("killed", "UnitTest.KnowsTheAnswer"))

    def test_one_that_no_test_notices_survives(self):
        self.assertEqual(self.judge("Unit.cpp", UNIT, "8", "9"), Verdict("survived"))

    def test_one_in_a_header_changes_the_tests_too(self):
        self.assertEqual(self.judge("Unit.h", HEADER, "7", "8"), Verdict("killed", "UnitTest.KnowsTheAnswer"))

    def test_what_a_function_in_a_header_is_part_of(self):
        header = str(self.base.room_folder / "Unit.h")
        known = {name for name in ("unit.o", "tests.o", "support.o") if self.base.knows(name, "answer(", header)}
        self.assertEqual(known, {"unit.o", "tests.o"})
        known = {name for name in ("unit.o", "tests.o", "support.o") if self.base.knows(name, "kQuestion", Path(header))}
        self.assertEqual(known, {"unit.o"})

    def test_one_in_a_header_changes_what_the_tests_share_too(self):
        self.assertEqual(self.judge("Unit.h", HEADER, "3", "4"), Verdict("survived"))

    def test_one_that_does_not_compile(self):
        self.assertEqual(self.judge("Unit.cpp", UNIT.replace("8", "true"), "true", "false").word, "survived")
        broken = UNIT.replace("int spare = 8;", "static_assert(sizeof(char[3]) == 3); char spare[3] = {1, 2, 3};")
        self.assertEqual(self.judge("Unit.cpp", broken.replace("[3] =", "[2 + 1] ="), "+", "-").word, "does-not-compile")

    def test_one_that_never_ends_runs_out_of_time(self):
        self.worker.limits_for = lambda _: building.Limits(60, 1)
        self.assertEqual(self.judge("Unit.cpp", UNIT, "question -= 1;", ";").word, "timeout")

    def test_time_goes_by_the_suites_that_are_run(self):
        worker = Worker(self.base, 1, building.CleanTimes({"Quick": 0.1, "Slow": 300, "Other": 60}, 0.5))
        self.assertEqual(worker.limits_for({"Quick"}), building.Limits(120, 10, 4 << 30))
        self.assertEqual(worker.limits_for({"Quick", "Slow"}), building.Limits(3001, 1500.5, 4 << 30))
        self.assertEqual(worker.limits_for(None).seconds, 3601)

    def test_without_known_suites_all_are_run(self):
        self.assertEqual(self.judge("Unit.cpp", UNIT, "42", "43", frozenset()).word, "killed")

    def test_nothing_stays_changed(self):
        self.judge("Unit.cpp", UNIT, "==", "!=")
        self.assertEqual((self.worker.room_folder / "Unit.cpp").read_text(), UNIT)
        self.assertEqual((self.base.room_folder / "Unit.cpp").read_text(), UNIT)
        self.assertEqual(self.judge("Unit.cpp", UNIT, "8", "9"), Verdict("survived"))

    def test_the_tests_of_the_unit_are_tried_first(self):
        journal = campaign.Journal(self.folder / "journal")
        first = campaign.FirstTests(self.base, journal)
        self.assertEqual(first.of("Unit.cpp"), [{"UnitTest"}])
        self.assertEqual(first.of("Other.cpp"), [])
        other = campaign.Case("Unit.cpp", UNIT, mutants_of(UNIT)[0])
        journal.add(other, Verdict("killed", "Rows/OtherTest.Knows/1"), 1)
        self.assertEqual(first.of("Unit.cpp"), [{"UnitTest"}, {"OtherTest"}])

    def test_a_campaign_tells_of_each(self):
        cases = campaign.cases_of(self.base.room_folder)
        self.assertEqual(set(cases), {"Unit.cpp", "Unit.h"})
        self.worker.limits_for = lambda _: building.Limits(60, 1)
        journal = campaign.Journal(self.folder / "journal")
        told = []
        chosen = [case for case in cases["Unit.cpp"] if case.mutant.kind == "constant"]
        campaign.Campaign(self.base, journal, [self.worker], lambda *what: told.append(what)).run(chosen)
        words = {case.code[case.mutant.start:case.mutant.end]: verdict.word for case, verdict in told}
        self.assertEqual(words, {"8": "survived", "100": "survived", "1": "timeout", "42": "killed", "0": "killed"})
        again = campaign.Journal(self.folder / "journal")
        self.assertEqual([again.verdict_of(case) for case, _ in told], [verdict for _, verdict in told])
        self.assertEqual(again.killers_of("Unit.cpp"), {"UnitTest"})


class Journals(Folder):
    def test_a_line_cut_short_is_forgotten_and_the_next_is_whole(self):
        cases = [campaign.Case("Unit.cpp", UNIT, found) for found in mutants_of(UNIT)[:3]]
        path = self.folder / "journal"
        journal = campaign.Journal(path)
        journal.add(cases[0], Verdict("killed", "A.b"), 1)
        journal.add(cases[1], Verdict("survived"), 1)
        path.write_bytes(path.read_bytes()[:-20])
        journal = campaign.Journal(path)
        self.assertEqual([journal.verdict_of(case) for case in cases], [Verdict("killed", "A.b"), None, None])
        journal.add(cases[2], Verdict("timeout"), 1)
        journal = campaign.Journal(path)
        self.assertEqual([journal.verdict_of(case) for case in cases], [Verdict("killed", "A.b"), None, Verdict("timeout")])

    def test_another_content_is_another_mutant(self):
        first, second = (campaign.Case("Unit.cpp", code, mutant(code, "42", "43")) for code in (UNIT, UNIT + "\n"))
        self.assertNotEqual(first.identity, second.identity)


class Samples(unittest.TestCase):
    def cases(self):
        table = "const char* kTable[] = {" + ", ".join('"a"' for _ in range(300)) + "};\n"
        texts = {"Table.h": table, "Unit.cpp": UNIT, "Lines.cpp": "".join(f"int a{n} = {n};\n" for n in range(40))}
        return {name: [campaign.Case(name, code, found) for found in mutants_of(code)] for name, code in texts.items()}

    def test_every_file_has_its_part_by_lines(self):
        chosen = campaign.sample(self.cases(), 22, 1)
        counts = {name: sum(case.name == name for case in chosen) for name in self.cases()}
        self.assertEqual(counts, {"Table.h": 1, "Unit.cpp": 2, "Lines.cpp": 20})
        self.assertEqual(len({case.identity for case in chosen}), 23)

    def test_the_seed_decides(self):
        first, same, other = ([case.identity for case in campaign.sample(self.cases(), 10, seed)] for seed in (1, 1, 2))
        self.assertEqual(first, same)
        self.assertNotEqual(first, other)


class Explanations(Folder):
    def test_an_explained_mutant_is_known_by_its_lines(self):
        case = campaign.Case("Unit.cpp", UNIT, mutant(UNIT, "8", "9"))
        page = self.folder / "page.md"
        page.write_text("# Page\n\n### Source/Unit.cpp\n\n- `` int spare = 8; ``\n  `` int spare = 9; ``\n  Nobody reads it.\n")
        self.assertEqual(explanations.read(page), {explanations.key("Source", case)})
        self.assertNotIn(explanations.key("Platform", case), explanations.read(page))

    def test_no_page_explains_nothing(self):
        self.assertEqual(explanations.read(self.folder / "none.md"), set())


class Running(Folder):
    def test_a_command_is_ended_with_what_it_started(self):
        script = "sleep 600 & echo $! >child; wait"
        status, _ = building.run(["sh", "-c", script], self.folder, building.Limits(1, 1))
        self.assertIsNone(status)
        child = int((self.folder / "child").read_text())
        with self.assertRaises(ProcessLookupError):
            while not is_zombie(child):
                os.kill(child, 0)
            raise ProcessLookupError

    def test_a_crash_is_no_time_out(self):
        status, _ = building.run(["sh", "-c", "kill -SEGV $$"], self.folder, building.Limits(60, 60))
        self.assertEqual(status, -signal.SIGSEGV)


def is_zombie(process):
    with open(f"/proc/{process}/stat", encoding="utf-8") as file:
        return file.read().rsplit(")", 1)[1].split()[0] == "Z"


class Mirrors(Folder):
    def test_only_what_differs_is_written_and_what_is_gone_is_removed(self):
        root, target = self.folder / "root", self.folder / "target"
        root.mkdir()
        building.subprocess.run(["git", "init", "-q", str(root)], check=True)
        for name in ("same", "changed", "gone"):
            (root / name).write_text(name)
        building.mirror(root, target)
        os.utime(target / "same", ns=(1, 1))
        (root / "changed").write_text("other")
        (root / "gone").unlink()
        building.mirror(root, target)
        self.assertEqual(sorted(path.name for path in target.iterdir()), ["changed", "same"])
        self.assertEqual((target / "changed").read_text(), "other")
        self.assertEqual((target / "same").stat().st_mtime_ns, 1)


if __name__ == "__main__":
    unittest.main()
