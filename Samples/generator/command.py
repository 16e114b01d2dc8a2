"""The command line of the generator."""

import argparse
import os
import sys

from . import collection, fonts, negatives, samples

FOLDER = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def main(arguments=None):
    """Runs the command; the result is the exit status: 0 done, 2 the call was wrong or fonts are missing."""
    options = _parser().parse_args(arguments)
    missing = fonts.missing_packages()
    if missing:
        print("generate: type faces are missing; install them with: apt-get install " + " ".join(missing),
              file=sys.stderr)
        return 2
    if options.samples is not None:
        samples.make(options.out or FOLDER, options.samples)
        return 0
    if options.negatives:
        negatives.make(options.out, options.count, options.seed)
        print("%d pictures without a card in %s" % (options.count, options.out))
        return 0
    entries = collection.make(options.out, options.count, options.seed, options.part)
    print("%d pictures of %d cards in %s" % (len(entries), options.count, options.out))
    return 0


def _parser():
    parser = argparse.ArgumentParser(prog="generate", description="Makes photographs of business cards of people who "
                                     "do not exist, with a file that says what is printed on them.")
    parser.add_argument("--count", type=int, default=300, help="number of cards (default 300)")
    parser.add_argument("--seed", default="1", help="the same seed gives the same cards (default 1)")
    parser.add_argument("--out", help="folder for the pictures and labels.jsonl")
    parser.add_argument("--part", choices=("all", "tuning", "held-out"), default="all",
                        help="which layouts and type faces to use (default all)")
    parser.add_argument("--negatives", action="store_true", help="make pictures that show no card instead")
    parser.add_argument("--samples", nargs="*", metavar="IMAGE",
                        help="make the samples of this folder instead (or only those named)")
    return _Checked(parser)


class _Checked:
    """The parser with the rules that argparse has no words for."""

    def __init__(self, parser):
        self.parser = parser

    def parse_args(self, arguments):
        options = self.parser.parse_args(arguments)
        unknown = set(options.samples or ()) - {sample.image for sample in samples.SAMPLES}
        if unknown:
            self.parser.error("no such sample: " + ", ".join(sorted(unknown)))
        if options.samples is None and not options.out:
            self.parser.error("--out DIR is needed: the folder for the pictures")
        if options.count < 1:
            self.parser.error("--count must be at least 1")
        return options
