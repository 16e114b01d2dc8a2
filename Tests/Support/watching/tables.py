"""Samples as a table for people, and as CSV."""

import csv

ROWS = 11


def picked(samples, rows=ROWS):
    """At most so many of them, at even distances, the first and the last among them."""
    if len(samples) <= rows:
        return samples
    return [samples[round(i * (len(samples) - 1) / (rows - 1))] for i in range(rows)]


def text(samples):
    """The samples, dictionaries with the same keys, as columns."""
    names = list(samples[0])
    lines = [names] + [["-" if row[name] is None else str(row[name]) for name in names] for row in picked(samples)]
    widths = [max(len(line[i]) for line in lines) for i in range(len(names))]
    return "\n".join("  ".join(cell.rjust(width) for cell, width in zip(line, widths)) for line in lines)


def write(path, samples):
    with open(path, "w", encoding="utf-8", newline="") as file:
        writer = csv.DictWriter(file, list(samples[0]))
        writer.writeheader()
        writer.writerows(samples)
