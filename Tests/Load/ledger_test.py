"""The book-keeping finds what does not agree, and nothing else."""

import collections
import os
import sys
import unittest

sys.path[:0] = [os.path.dirname(os.path.abspath(__file__))]

import ledger  # noqa: E402  (the path above must come first)

SEEN = {200: 50, 503: 30, 401: 4, 404: 3, 405: 2, 413: 6, 422: 5, 400: 1, 431: 2, "incomplete": 7, "unread": 9,
        "missed 413": 1}
TOLD = {"read": 53, "overloaded": 34, "hung_up": 2, "unauthorized": 4, "not_found": 3, "wrong_method": 2, "too_large": 7,
        "no_picture": 5, "malformed": 3, "incomplete": 7}


def disagreements(seen=(), told=()):
    return ledger.disagreements(collections.Counter({**SEEN, **dict(seen)}), collections.Counter({**TOLD, **dict(told)}))


class Disagreements(unittest.TestCase):
    def test_none_where_all_agrees(self):
        self.assertEqual(disagreements(), [])

    def test_every_single_difference_is_found(self):
        for outcome, count in TOLD.items():
            for other in (count - 3, count + 3):
                with self.subTest(outcome=outcome, count=other):
                    self.assertTrue(disagreements(told={outcome: other}))

    def test_what_must_never_happen_is_found(self):
        for outcome in ("failed", "stopping", "nothing_found"):
            self.assertEqual(disagreements(told={outcome: 1}), ["%s: the server counted 1, the clients 0" % outcome])

    def test_an_answer_that_nobody_got(self):
        self.assertEqual(disagreements(seen={200: 49}), [
            "read, overloaded and hung up together: the server counted 89, the clients 88"])


if __name__ == "__main__":
    unittest.main()
