"""The command line of the measure."""

import argparse
import json
import os
import sys

from . import run, tables

TURNS = (0, 90, 180, 270)


def main(arguments=None):
    """Runs the command; the result is the exit status: 0 measured, 2 the call was wrong."""
    options = _options(arguments)
    labels = [label for label in run.load(options.labels) if all(word in label["image"] for word in options.only)]
    if options.part:
        labels = [label for label in labels if bool(label.get("held_out")) == (options.part == "held-out")]
    labels = labels[:options.limit]
    if not labels:
        print("measure: no picture is left to be read", file=sys.stderr)
        return 2
    reader = run.Reader(options.folder, options.programs, options.language,
                        ("--debug-dir", options.debug_dir) if options.debug_dir else ())
    done = reader.read(labels, TURNS if options.turns else (0,), options.workers)
    _print(done, [reading.outcome() for reading in done.readings], options)
    return 0


def _print(done, outcomes, options):
    if options.errors:
        print(tables.mistakes(outcomes) + "\n")
    print(tables.report(outcomes, done.memory))
    if options.json:
        with open(options.json, "w", encoding="utf-8") as file:
            json.dump(tables.figures(outcomes, done.memory), file, indent=1, ensure_ascii=False)
    if options.predictions:
        with open(options.predictions, "w", encoding="utf-8") as file:
            file.writelines(json.dumps(_prediction(*pair), ensure_ascii=False) + "\n"
                            for pair in zip(done.readings, outcomes))
    if options.answers:
        _write_answers(done.readings, options.answers)


def _prediction(reading, outcome):
    """What was read on one picture, and what was wrong with it."""
    given = reading.answer()
    return {"image": reading.label["image"], "turn": reading.turn, "orient": given.orient, "upright": outcome.upright,
            "items": [item.__dict__ for item in given.items], "mistakes": outcome.mistakes, "problem": given.problem,
            "seconds": round(reading.seconds, 3), "processor_seconds": round(reading.processor_seconds, 3)}


def _write_answers(readings, folder):
    """The answers as they came, IMAGE.xml (IMAGE.90.xml for a picture that was turned)."""
    os.makedirs(folder, exist_ok=True)
    for reading in readings:
        name = reading.label["image"] + (".%d" % reading.turn if reading.turn else "") + ".xml"
        with open(os.path.join(folder, name), "wb") as file:
            file.write(reading.body)


def _options(arguments):
    parser = argparse.ArgumentParser(prog="measure", description="Has the recognition server read pictures of cards and "
                                     "says how well what it read agrees with what is printed.")
    parser.add_argument("folder", metavar="DIR", help="folder of the pictures")
    parser.add_argument("labels", metavar="LABELS", help="what is printed on them, one JSON object a line")
    parser.add_argument("--workers", type=int, default=1, metavar="N", help="servers side by side (default 1)")
    parser.add_argument("--turns", action="store_true", help="every picture in all four turns")
    parser.add_argument("--language", help="say this language with every picture, instead of the label's")
    parser.add_argument("--part", choices=("tuning", "held-out"), help="only these of the labels")
    parser.add_argument("--only", action="append", default=[], metavar="TEXT", help="only pictures with TEXT in their name")
    parser.add_argument("--limit", type=int, metavar="N", help="only the first N pictures")
    parser.add_argument("--errors", action="store_true", help="list what was missed and what was invented")
    parser.add_argument("--json", metavar="OUT", help="write the figures as JSON")
    parser.add_argument("--predictions", metavar="OUT", help="write what was read, one JSON object a line")
    parser.add_argument("--answers", metavar="DIR", help="write the answers as they came")
    parser.add_argument("--debug-dir", metavar="DIR", help="have the server keep its stages there")
    parser.add_argument("--programs", required=True, help=argparse.SUPPRESS)
    options = parser.parse_args(arguments)
    if options.workers < 1:
        parser.error("--workers must be at least 1")
    for path in (options.folder, options.labels):
        if not os.path.exists(path):
            parser.error("\"%s\" does not exist" % path)
    return options
