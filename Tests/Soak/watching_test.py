"""What stays is told from what grows, and what is looked at is shown and read as it is."""

import contextlib
import io
import os
import random
import sys
import unittest

sys.path[:0] = [os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "Support")]

from watching import flatness, metrics, tables, verdict  # noqa: E402  (the path above must come first)


def noisy(slope, count=100, warm_up=0, spread=40):
    """A figure of about 10000 with so much growth for each step."""
    chance = random.Random(1)
    return [(x, 10000 + slope * x + chance.uniform(-spread, spread) - (warm_up if x < count / 10 else 0))
            for x in range(1, count + 1)]


class Growth(unittest.TestCase):
    BOUND = flatness.Growth(50)

    def test_noise_is_no_growth(self):
        self.assertIsNone(self.BOUND.problem("heap", noisy(0)))

    def test_what_is_made_once_is_no_growth(self):
        self.assertIsNone(self.BOUND.problem("heap", noisy(0, warm_up=5000)))

    def test_growth_is_found_under_noise(self):
        self.assertIn("heap grew by", self.BOUND.problem("heap", noisy(1)))

    def test_a_few_wild_samples_hide_nothing_and_tell_nothing(self):
        for slope, wanted in ((0, False), (1, True)):
            points = noisy(slope)
            points[50:55] = [(x, y + 90000) for x, y in points[50:55]]
            self.assertEqual(self.BOUND.problem("heap", points) is not None, wanted)

    def test_a_part_for_each_step(self):
        self.assertIsNone(flatness.Growth(50, per_step=1.2).problem("heap", noisy(1)))
        self.assertIsNotNone(flatness.Growth(0, per_step=0.8).problem("heap", noisy(1, spread=0)))

    def test_shrinking_is_none(self):
        self.assertIsNone(self.BOUND.problem("heap", noisy(-5)))

    def test_too_few_samples_are_no_proof(self):
        self.assertIn("too few", self.BOUND.problem("heap", noisy(0, count=4)))


class Most(unittest.TestCase):
    def test_one_sample_is_enough(self):
        points = [(1, 5), (2, 6), (3, 5)]
        self.assertIsNone(flatness.Most(6).problem("threads", points))
        self.assertEqual(flatness.Most(5).problem("threads", points), "threads: 6, and at most 5 are needed")


class Tables(unittest.TestCase):
    def test_first_and_last_are_shown(self):
        shown = tables.picked(list(range(100)))
        self.assertEqual((shown[0], shown[-1], len(shown)), (0, 99, tables.ROWS))


class Metrics(unittest.TestCase):
    def test_outcomes_and_figures(self):
        outcomes, figures = metrics.read('# HELP x\nqvcardrecod_requests_total{outcome="read"} 12\n'
                                         "qvcardrecod_busy_workers 2\nqvcardrecod_engine_memory_bytes 3e+07\n")
        self.assertEqual((outcomes["read"], figures), (12, {"busy_workers": 2.0, "engine_memory_bytes": 3e7}))


class Verdict(unittest.TestCase):
    def told(self, problems):
        with contextlib.redirect_stdout(io.StringIO()) as said:
            status = verdict.tell(problems, "NOT RIGHT", "All is well.")
        return status, said.getvalue()

    def test_praise_without_a_problem(self):
        self.assertEqual(self.told([]), (0, "\nAll is well.\n"))

    def test_every_problem_is_told(self):
        self.assertEqual(self.told(["a", "b"]), (1, "\nNOT RIGHT: a\nNOT RIGHT: b\nFailed.\n"))


if __name__ == "__main__":
    unittest.main()
