"""That a unit's finding is told, that what is known is kept until something changes, and that no unit takes for ever."""

import contextlib
import io
import os
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from analyze import Analysis, call_of  # noqa: E402

UNIT = """\
#include "Unit.h"
#include <cstdlib>
int answer() {
    int* const number = static_cast<int*>(std::malloc(sizeof(int)));
    if (!number) return 0;
    std::free(number);
    if (kFreesTwice) std::free(number);
    return 42;
}
"""
# A compiler that comes to no end with a unit, but to one with all else.
ENDLESS = """\
#!/bin/sh
case "$*" in *-fanalyzer*) while :; do :; done;; esac
echo "$@"
"""
# One that says that it went no further.
BOUNDED = """\
#!/bin/sh
case "$*" in *-fanalyzer*) echo "Unit.h:1: warning: analysis bailed out early [-Wanalyzer-too-complex]" >&2;; esac
"""


class AnalysisTest(unittest.TestCase):
    def setUp(self):
        kept = tempfile.TemporaryDirectory()
        self.addCleanup(kept.cleanup)
        self.folder = Path(kept.name)
        (self.folder / "Unit.cpp").write_text(UNIT)
        self.write_header("false")
        self.call = call_of(["g++", "-Werror", "-O3", "-D_FORTIFY_SOURCE=3", "-c", "Unit.cpp", "-o", "Unit.o"])

    def write_header(self, frees_twice):
        (self.folder / "Unit.h").write_text(f"inline constexpr bool kFreesTwice = {frees_twice};\n")

    def look(self, seconds=60, call=None, in_vain=()):
        """What is known, and what was printed."""
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            analysis = Analysis(self.folder / "build", seconds, in_vain)
            known = analysis.of(("Room/Unit.cpp", str(self.folder), call or self.call))
        return known, printed.getvalue()

    def call_of_script(self, text):
        compiler = self.folder / "compiler"
        compiler.write_text(text)
        compiler.chmod(0o755)
        return [str(compiler), *self.call[1:]]

    def test_asks_for_no_object_and_no_optimisation(self):
        self.assertEqual(self.call, ["g++", "-c", "Unit.cpp", "-O0"])
        self.assertEqual(call_of(["/usr/bin/ccache", "g++", "-c", "Unit.cpp", "-o", "Unit.o"]), self.call)

    def test_a_unit_without_a_finding(self):
        known, printed = self.look()
        self.assertEqual((known["text"], known["complete"], printed), ("", True, ""))

    def test_a_finding_is_printed_again_from_what_is_kept(self):
        self.write_header("true")
        first, printed = self.look()
        self.assertIn("[-Wanalyzer-double-free]", printed)
        second, again = self.look()
        self.assertEqual((first["isNew"], second["isNew"], again), (True, False, printed))

    def test_what_is_said_in_vain_is_left_out_for_its_unit_and_words_only(self):
        self.write_header("true")
        self.assertEqual(self.look(in_vain=[("Room/Unit.cpp", "[-Wanalyzer-double-free]")])[0]["text"], "")
        for other in [("Room/Other.cpp", "[-Wanalyzer-double-free]"), ("Room/Unit.cpp", "[-Wanalyzer-malloc-leak]")]:
            self.assertIn("double-free", self.look(in_vain=[other])[1])

    def test_what_a_unit_includes_counts(self):
        self.look()
        self.write_header("true")
        known, printed = self.look()
        self.assertTrue(known["isNew"])
        self.assertIn("[-Wanalyzer-double-free]", printed)

    def test_a_unit_without_end_is_named_and_tried_again_with_more_time(self):
        call = self.call_of_script(ENDLESS)
        known, printed = self.look(1, call)
        self.assertIsNone(known["text"])
        self.assertIn("not analysed: Room/Unit.cpp: no end in 1 seconds", printed)
        self.assertFalse(self.look(1, call)[0]["isNew"])
        self.assertTrue(self.look(2, call)[0]["isNew"])

    def test_a_unit_that_is_too_much_for_the_analyzer_is_named_and_no_finding(self):
        known, printed = self.look(60, self.call_of_script(BOUNDED))
        self.assertEqual((known["text"], known["complete"]), ("", False))
        self.assertIn("not to its end: Room/Unit.cpp", printed)


if __name__ == "__main__":
    unittest.main()
