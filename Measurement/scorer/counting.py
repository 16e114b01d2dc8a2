"""Compares what was read with what is printed, and counts."""

from dataclasses import dataclass, field
from typing import Dict, List, Tuple

from .answer import KINDS
from .matching import NUMBERS, matches

MAIN_KINDS = KINDS[:10]  # those of the figure over all: handles are too rare to be mixed in
ANY_NUMBER = "any number"


@dataclass
class Count:
    """How often a kind is printed, was read right, was read though it is not there, and was missed. `anywhere` counts
    the printed ones whose text was read, whatever it was taken for."""

    printed: int = 0
    right: int = 0
    extra: int = 0
    missed: int = 0
    anywhere: int = 0

    def add(self, other):
        """Adds another count to this one."""
        for name in self.__dict__:
            setattr(self, name, getattr(self, name) + getattr(other, name))

    @property
    def precision(self):
        return self.right / (self.right + self.extra) if self.right + self.extra else 0.0

    @property
    def recall(self):
        return self.right / self.printed if self.printed else 0.0

    @property
    def f1(self):
        return 2 * self.precision * self.recall / (self.precision + self.recall) if self.right else 0.0


@dataclass
class Outcome:
    """One picture in one turn. `weights` pairs each field's weight with whether it was right, by kind."""

    label: dict
    turn: int
    counts: Dict[str, Count]
    mistakes: List[Tuple[str, str, str]] = field(default_factory=list)
    weights: List[Tuple[str, int, bool]] = field(default_factory=list)
    upright: bool = False
    found: int = 0
    seconds: float = 0.0
    processor_seconds: float = 0.0
    problem: str = ""

    @property
    def complete(self):
        """Whether every field that has to be found was."""
        return not any(self.counts[kind].missed for kind in MAIN_KINDS)


def total(outcomes, kinds=MAIN_KINDS):
    """The sum over pictures and kinds."""
    count = Count()
    for outcome in outcomes:
        for kind in kinds:
            count.add(outcome.counts[kind])
    return count


def compare(label, answer, turn=0):
    """The outcome for one answer. `turn` is how far the picture was turned clockwise before it was sent."""
    outcome = Outcome(label, turn, {kind: Count() for kind in KINDS + (ANY_NUMBER,)}, found=len(answer.items),
                      problem=answer.problem)
    wanted = [one for one in label["fields"] if not one.get("optional") and one["type"] in KINDS]
    allowed = [one for one in label["fields"] if one.get("optional")]
    used = _found(wanted, answer.items, outcome)
    _any_number(wanted, answer.items, outcome.counts[ANY_NUMBER])
    for index, item in enumerate(answer.items):
        good = index in used or any(_is(one, item) for one in allowed)
        if item.kind in KINDS:
            outcome.weights.append((item.kind, item.weight, good))
            if not good:
                outcome.counts[item.kind].extra += 1
                outcome.mistakes.append(("extra", item.kind, item.text))
    outcome.upright = answer.orient is not None and _same_turn(answer.orient, label["rotation"] - turn)
    return outcome


def _found(wanted, items, outcome):
    """Counts the fields that have to be found, in printing order; the result is the items that were them."""
    used = set()
    for one in wanted:
        count = outcome.counts[one["type"]]
        count.printed += 1
        count.anywhere += any(_reads(one, one["type"], item.text) for item in items)
        hit = next((i for i, item in enumerate(items) if i not in used and _is(one, item)), None)
        if hit is None:
            count.missed += 1
            outcome.mistakes.append(("missed", one["type"], one["text"]))
        else:
            count.right += 1
            used.add(hit)
    return used


def _any_number(wanted, items, count):
    """The same for telephone numbers, whatever they are taken for."""
    left = [item for item in items if item.kind in NUMBERS]
    for one in wanted:
        if one["type"] in NUMBERS:
            count.printed += 1
            hit = next((item for item in left if _reads(one, "phone", item.text)), None)
            if hit is None:
                count.missed += 1
            else:
                count.right += 1
                count.anywhere += 1
                left.remove(hit)
    count.extra += len(left)


def _is(one, item):
    """Whether an item is a printed field: its kind, or another that the print allows, and its text."""
    return item.kind in [one["type"]] + one.get("alt_types", []) and _reads(one, item.kind, item.text)


def _reads(one, kind, text):
    return any(matches(kind, printed, text) for printed in [one["text"]] + one.get("alt", []))


def _same_turn(first, second):
    return abs((first - second + 180) % 360 - 180) < 45
