"""The tables that are printed, as Markdown."""

from . import counting
from .answer import KINDS

BINS = ((1, 50), (51, 60), (61, 70), (71, 80), (81, 90), (91, 95), (96, 100))
HEAD = ("", "printed", "right", "extra", "missed", "precision", "recall", "F1", "anywhere")
MOST = 100  # letters of a table's cell


def report(outcomes, memory=()):
    """Everything that can be said about some outcomes."""
    cards = [one for one in outcomes if one.label["fields"]]
    parts = [_problems(outcomes)]
    if cards:
        parts += [_kinds(cards), _groups(cards), _orientation(cards), _calibration(cards)]
    parts += [_negatives([one for one in outcomes if not one.label["fields"]]), _cost(outcomes, memory)]
    return "\n\n".join(part for part in parts if part)


def mistakes(outcomes):
    """What was missed and what was read though it is not printed, picture by picture."""
    lines = []
    for outcome in outcomes:
        if outcome.mistakes or outcome.problem or (outcome.label["fields"] and not outcome.upright):
            turn = " turned by %d" % outcome.turn if outcome.turn else ""
            lines.append("## %s%s (%s)%s" % (outcome.label["image"], turn, outcome.label.get("kind", ""),
                                             "" if outcome.upright else " – not upright"))
            lines += ["    %-6s %-10s %s" % mistake for mistake in outcome.mistakes]
    return "\n".join(lines)


def figures(outcomes, memory=()):
    """The same as plain values, to be kept and compared by programs."""
    cards = [one for one in outcomes if one.label["fields"]]
    by_kind = {kind: _values(counting.total(cards, (kind,))) for kind in KINDS + (counting.ANY_NUMBER,)}
    groups = {title: {name: _values(counting.total(some)) for name, some in rows.items()}
              for title, rows in _grouped(cards)}
    return {"pictures": len(outcomes), "all": _values(counting.total(cards)), "kinds": by_kind, "groups": groups,
            "upright": sum(one.upright for one in cards), "cards": len(cards),
            "found_on_no_card": sum(one.found for one in outcomes if not one.label["fields"]),
            "processor_seconds": _spread([one.processor_seconds for one in outcomes]),
            "seconds": _spread([one.seconds for one in outcomes]), "memory_mib": max(memory, default=0)}


def _values(count):
    return {**count.__dict__, "precision": count.precision, "recall": count.recall, "f1": count.f1}


def _table(head, rows):
    """A table whose first column is text."""
    cells = [[str(cell) for cell in row] for row in (head, *rows)]
    widths = [max(len(row[i]) for row in cells) for i in range(len(head))]
    lines = ["| " + " | ".join([row[0].ljust(widths[0])] + [c.rjust(w) for c, w in zip(row[1:], widths[1:])]) + " |"
             for row in cells]
    rule = "|" + "|".join(["-" * (widths[0] + 2)] + ["-" * (w + 1) + ":" for w in widths[1:]]) + "|"
    return "\n".join([lines[0], rule, *lines[1:]])


def _row(name, count):
    return (name, count.printed, count.right, count.extra, count.missed, "%.3f" % count.precision,
            "%.3f" % count.recall, "%.3f" % count.f1, _share(count.anywhere, count.printed))


def _share(part, whole):
    return "%.3f" % (part / whole) if whole else "–"


def _problems(outcomes):
    return "\n".join("%s: %s" % (one.label["image"], one.problem) for one in outcomes if one.problem)


def _kinds(cards):
    rows = [_row(kind, counting.total(cards, (kind,))) for kind in KINDS]
    rows.append(_row("**all ten**", counting.total(cards)))
    rows.append(_row("with handles", counting.total(cards, KINDS)))
    rows.append(_row(counting.ANY_NUMBER, counting.total(cards, (counting.ANY_NUMBER,))))
    complete = sum(one.complete for one in cards)
    return _table(("kind",) + HEAD[1:], rows) + "\n\nEvery field that has to be found was found on %d of %d pictures." % (
        complete, len(cards))


def _grouped(cards):
    """The ways of taking the pictures apart, each with its groups in order; a way that gives one group says nothing."""
    ways = (("picture", lambda one: one.label.get("kind", "?").removesuffix("-dark")),
            ("paper", lambda one: "dark" if one.label.get("kind", "").endswith("-dark") else "light"),
            ("part", lambda one: {True: "held out", False: "tuning"}.get(one.label.get("held_out"), "?")),
            ("language", lambda one: one.label.get("lang", "?")),
            ("layout", lambda one: one.label.get("layout", "?")),
            ("turned by", lambda one: "%3d°" % one.turn))
    for title, key in ways:
        groups = {}
        for one in cards:
            groups.setdefault(key(one), []).append(one)
        if len(groups) > 1:
            yield title, dict(sorted(groups.items()))


def _groups(cards):
    tables = []
    for title, groups in _grouped(cards):
        rows = []
        for name, some in groups.items():
            count = counting.total(some)
            rows.append((name, len(some), "%.3f" % count.precision, "%.3f" % count.recall, "%.3f" % count.f1,
                         _share(sum(one.upright for one in some), len(some))))
        tables.append(_table((title, "pictures", "precision", "recall", "F1", "upright"), rows))
    return "\n\n".join(tables)


def _orientation(cards):
    good = sum(one.upright for one in cards)
    return "Orientation right on %d of %d pictures (%.1f %%)." % (good, len(cards), 100 * good / len(cards))


def _calibration(cards):
    """Weights are chances in per cent: among fields of some weight so many should be right."""
    weights = [(kind, weight, good) for one in cards for kind, weight, good in one.weights]
    if not weights:
        return ""
    bins = [("%d–%d" % (low, high), [one for one in weights if low <= one[1] <= high]) for low, high in BINS]
    kinds = [(kind, [one for one in weights if one[0] == kind]) for kind in KINDS]
    gap = sum(abs(sum(weight / 100 - good for _, weight, good in some)) for _, some in bins) / len(weights)
    head = ("fields", "mean weight", "right, %")
    return "%s\n\nMean distance between weight and share, over the bins: %.1f points.\n\n%s" % (
        _table(("weight",) + head, _weight_rows(bins)), 100 * gap, _table(("kind",) + head, _weight_rows(kinds)))


def _weight_rows(groups):
    return [(name, len(some), "%.1f" % (sum(one[1] for one in some) / len(some)),
             "%.1f" % (100 * sum(one[2] for one in some) / len(some))) for name, some in groups if some]


def _negatives(pictures):
    if not pictures:
        return ""
    rows = [(one.label["image"], one.found, "; ".join("%s: %s" % (kind, text) for _, kind, text in one.mistakes)[:MOST])
            for one in pictures if one.found]
    line = "Pictures without a card: %d, on %d of them fields were found, %d in all." % (
        len(pictures), len(rows), sum(one.found for one in pictures))
    return line + ("\n\n" + _table(("picture", "fields", "which"), rows) if rows else "")


def _cost(outcomes, memory):
    rows = []
    for name, values in (("processor, all threads", [one.processor_seconds for one in outcomes]),
                         ("clock on the wall", [one.seconds for one in outcomes])):
        spread = _spread(values)
        rows.append((name,) + tuple("%.2f" % spread[key] for key in ("mean", "median", "p95", "most")))
    table = _table(("seconds per picture", "mean", "median", "95 %", "most"), rows)
    return table + ("\n\nPeak memory of a server with one worker: %.0f MiB." % max(memory) if memory else "")


def _spread(values):
    ordered = sorted(values) or [0.0]
    return {"mean": sum(ordered) / len(ordered), "median": ordered[len(ordered) // 2],
            "p95": ordered[min(len(ordered) - 1, int(len(ordered) * 0.95))], "most": ordered[-1]}
