"""What the recognition server says of itself, in Prometheus' text format."""

import collections
import re

OUTCOME = re.compile(r'^qvcardrecod_requests_total\{outcome="(\w+)"\} (\d+)')
OTHER = re.compile(r"^qvcardrecod_(\w+) ([0-9.e+]+)$")


def read(text):
    """Outcomes, and the figures without labels, by name."""
    outcomes, figures = collections.Counter(), {}
    for line in text.splitlines():
        if found := OUTCOME.match(line):
            outcomes[found[1]] = int(found[2])
        elif found := OTHER.match(line):
            figures[found[1]] = float(found[2])
    return outcomes, figures
