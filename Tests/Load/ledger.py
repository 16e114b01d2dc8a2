"""What the clients saw, and whether the server counted the same."""

import collections
import threading


class Ledger:
    """Counts of what clients saw, and what they complain about. Any thread may write."""

    def __init__(self):
        self._lock = threading.Lock()
        self.counts = collections.Counter()
        self.problems = []

    def count(self, what):
        with self._lock:
            self.counts[what] += 1

    def complain(self, problem):
        with self._lock:
            self.counts["complaints"] += 1
            if len(self.problems) < 50:
                self.problems.append(problem)


def disagreements(seen, told):
    """Where the server's outcomes (since the load began) and the clients' counts cannot both be true. Requests whose
    answer nobody read may have ended in several ways; everything else must agree to the last one."""
    found = []

    def same(what, theirs, ours):
        if theirs != ours:
            found.append("%s: the server counted %d, the clients %d" % (what, theirs, ours))

    def between(what, theirs, least, most):
        if not least <= theirs <= most:
            found.append("%s: the server counted %d, the clients from %d to %d" % (what, theirs, least, most))

    for outcome, status in (("unauthorized", 401), ("not_found", 404), ("wrong_method", 405), ("no_picture", 422)):
        same(outcome, told[outcome], seen[status])
    between("too_large", told["too_large"], seen[413], seen[413] + seen["missed 413"])
    between("malformed", told["malformed"], seen[400] + seen[431], seen[400] + seen[431] + seen["missed 431"])
    same("incomplete", told["incomplete"], seen["incomplete"])
    for never in ("failed", "stopping", "nothing_found"):
        same(never, told[never], 0)
    unread = seen["unread"]
    between("read", told["read"], seen[200], seen[200] + unread)
    between("overloaded", told["overloaded"], seen[503], seen[503] + unread)
    between("hung_up", told["hung_up"], 0, unread)
    same("read, overloaded and hung up together", told["read"] + told["overloaded"] + told["hung_up"],
         seen[200] + seen[503] + unread)
    return found
