#!/usr/bin/python3
"""Measures the recognition server (see README.md); `./measure` builds what this needs."""

import sys

sys.dont_write_bytecode = True

from scorer.command import main  # noqa: E402  (the switch above must come first)

if __name__ == "__main__":
    sys.exit(main())
