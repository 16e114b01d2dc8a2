#!/usr/bin/env python3
"""Puts the results of several runs of the benchmark programs together: one table, each figure the median of the runs.

usage: table.py [--markdown] RESULT.json...

Exit status 1 when a limit is not met or a row could not be measured."""
import json
import os
import platform
import statistics
import subprocess
import sys


def rows_of(paths):
    """Rows by name and rival, in the order of the first run; each a list of what the runs measured."""
    rows = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            text = file.read()
        for entry in json.loads(text)["benchmarks"] if text.strip() else []:
            name = entry["run_name"].split("/iterations:")[0]
            label = entry.get("label", "") if not entry.get("error_occurred") else ""
            rows.setdefault((name, label), []).append(entry)
    return rows


def processor_of(paths):
    for path in paths:
        with open(path, encoding="utf-8") as file:
            text = file.read()
        if text.strip():
            return json.loads(text)["context"].get("processor", "unknown processor")
    return "unknown processor"


def value(number, unit):
    if unit == "ms" and number < 1:
        return f"{number * 1000:.2f} µs"
    if unit == "SSIM":
        return f"{number:.4f}"
    return f"{number:.2f} {unit}"


def figure(number, kind, unit):
    if kind == "ratio":
        return f"{number:.2f}×"
    return f"{number:+.4f}" if unit == "SSIM" else value(number, unit) if number >= 0 else f"{number:.2f} {unit}"


def cells_of(name, label, entries):
    """The cells of one row, and whether its limit is met."""
    if not label:
        return [name, "", "", "", "", entries[0].get("error_message", "not measured"), "no"], False
    rival, unit, kind, rule = label.split("|")
    median = lambda counter: statistics.median(entry[counter] for entry in entries)
    measured, limit = median("figure"), median("limit")
    met = measured >= limit if rule == "at least" else measured <= limit
    spread = "–".join(figure(end(entry["figure"] for entry in entries), kind, unit) for end in (min, max))
    wall = value(median("ours_on_wall"), "ms") if median("ours_on_wall") else ""
    return [name, value(median("ours"), unit), wall, f"{rival}: {value(median('other'), unit)}" if rival else "",
            f"{figure(measured, kind, unit)} ({spread})", f"{rule} {figure(limit, kind, unit)}",
            "yes" if met else "NO"], met


def print_table(rows, markdown):
    head = ["what", "ours", "on the wall", "against", "figure (lowest–highest run)", "limit", "met"]
    if markdown:
        for line in [head, ["---"] * len(head)] + rows:
            print("| " + " | ".join(cell.replace("|", "\\|") for cell in line) + " |")
        return
    widths = [max(len(line[index]) for line in [head] + rows) for index in range(len(head))]
    for line in [head] + rows:
        print("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())


def main(arguments):
    markdown = "--markdown" in arguments
    paths = [argument for argument in arguments if argument != "--markdown"]
    results = [cells_of(name, label, entries) for (name, label), entries in rows_of(paths).items()]
    date = subprocess.run(["date", "-u", "+%Y-%m-%d %H:%M UTC"], capture_output=True, text=True, check=True).stdout
    print(f"{processor_of(paths)}, {os.cpu_count()} processors, Linux {platform.release()}; {date.strip()}\n")
    print_table([cells for cells, _ in results], markdown)
    missed = sum(1 for _, met in results if not met)
    print(f"\n{len(results) - missed} of {len(results)} limits are met.")
    return 1 if missed or not results else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
