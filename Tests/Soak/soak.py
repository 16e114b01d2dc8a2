#!/usr/bin/python3
"""Takes cards by the thousand through the library, and by the hundred through the real recognition server, looks at
each process whenever nothing is under way, and judges at the end whether it stayed as it was (see README.md)."""

import argparse
import json
import os
import subprocess
import sys
import urllib.request

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, os.path.join(ROOT, "Tests", "Support"))

from watching import flatness, metrics, processes, tables, verdict  # noqa: E402  (the path above must come first)

KIB = 1024

# Descriptors: three standard ones, and a connection for each of the queue's three threads.
CONNECTIONS = 3
STANDARD = 3
# Threads: the main one and the queue's three; for people one that saves, and four for each of five providers.
ALONE = 4
ALONE_AND_PEOPLE = ALONE + 1 + 5 * 4


def memory(heap, others):
    """Bounds of memory, in KiB."""
    return {"heap": heap, "resident": others, "proportional": others}


def library(threads, cards):
    """What a process with the library may need. What the system counts varies with what the allocator keeps of what was
    given back, and more so at first."""
    settled = cards >= 2000
    return {**memory(flatness.Growth(50, 16 / KIB), flatness.Growth((6 if settled else 24) * KIB, 64 / KIB)),
            "threads": flatness.Most(threads), "descriptors": flatness.Most(STANDARD + CONNECTIONS)}


def recogniser(first):
    """What the server may need. Which languages its engines are open for changes from card to card."""
    return {**memory(flatness.Growth(8 * KIB, 4), flatness.Growth(48 * KIB, 16)),
            "threads": flatness.Most(first["threads"]),
            "descriptors": flatness.Most(first["descriptors"] + CONNECTIONS)}


def kibibytes(count):
    return None if count is None else count // KIB


class Driver:
    """The program that takes the cards through the library; it stops after each round until it is told to go on."""

    def __init__(self, options, arguments):
        # What the allocator keeps for each thread would count as in use, and varies.
        environment = {**os.environ, "GLIBC_TUNABLES": "glibc.malloc.tcache_count=0"}
        self.process = subprocess.Popen([os.path.join(options.programs, "SoakDriver"), *map(str, arguments)],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=environment)

    def rounds(self, cards):
        """What it says after each round, while it waits."""
        for line in self.process.stdout:
            told = json.loads(line)
            yield told
            if sys.stderr.isatty():
                print("\r%d of %d cards" % (told["cards"], cards), end="\r\033[K" if told["cards"] == cards else "",
                      file=sys.stderr, flush=True)
            self.process.stdin.write("\n")
            self.process.stdin.flush()

    def end(self):
        self.process.stdin.close()
        status = self.process.wait()
        self.process.stdout.close()
        return status


def sample(cards, pid, heap):
    return {"cards": cards, "heap": kibibytes(heap), **vars(processes.look(pid))}


def problems_of(samples, bounds, whose):
    found = []
    for name, bound in bounds.items():
        points = [(row["cards"], row[name]) for row in samples if row[name] is not None]
        if not points:
            print("%s: %s is not judged, the allocator does not tell it" % (whose, name))
            continue
        found.append(bound.problem("%s: %s" % (whose, name), points))
    return [problem for problem in found if problem]


def report(title, samples, bounds, out):
    """Prints and keeps a process's curve; returns what is wrong with it."""
    print("\n%s (KiB; every %d cards a sample, some of them here)" % (title, samples[0]["cards"]))
    print(tables.text(samples))
    for name in bounds:
        points = [(row["cards"], row[name]) for row in samples if row[name] is not None]
        if len(points) > 4:
            before, after = flatness.halves(points)
            print("  %-12s median of the halves %.0f and %.0f, growth %.1f; allowed: %s" % (
                name, before, after, flatness.growth(points), bounds[name].allowed(points)))
    tables.write(os.path.join(out, title.replace(" ", "-") + ".csv"), samples)
    return problems_of(samples, bounds, title)


def problems_of_ends(last, cards, status):
    """Every card must have ended once, and nothing have gone wrong that was not planned."""
    found = []
    if last["completed"] + last["cancelled"] != cards:
        found.append("%d cards, but %d completed and %d cancelled" % (cards, last["completed"], last["cancelled"]))
    if last["problems"]:
        found.append("%d problems, told above" % last["problems"])
    if status != 0:
        found.append("the driver ended with status %d" % status)
    return found


def say_ends(last):
    print("\n%(cards)d cards: %(completed)d completed, %(cancelled)d cancelled; %(searches)d searches, %(created)d "
          "contacts created and %(updated)d updated; %(problems)d problems" % last)


def with_stub(options):
    """The library alone, with a server that answers as planned."""
    samples, last = [], None
    with processes.Server([os.path.join(options.programs, "SoakStub")]) as stub:
        driver = Driver(options, ["--server", "http://127.0.0.1:%d/" % stub.port, "--cards", options.cards,
                                  "--round", options.round] + (["--plant", options.plant] if options.plant else []))
        for last in driver.rounds(options.cards):
            samples.append(sample(last["cards"], driver.process.pid, last["heap"]))
        status = driver.end()
    if last is None:
        return ["the driver said nothing, and ended with status %d" % status]
    say_ends(last)
    return (report("library with stub", samples, library(ALONE_AND_PEOPLE, options.cards), options.out) +
            problems_of_ends(last, options.cards, status))


def list_of_cards(options):
    """Makes the photographs, unless they are there, and the list of them that the driver reads."""
    folder = os.path.join(options.out, "cards-%d" % options.real)
    labels = os.path.join(folder, "labels.jsonl")
    if not os.path.exists(labels):
        subprocess.run([os.path.join(ROOT, "Samples", "generate"), "--count", str(options.real), "--seed", "1", "--out",
                        folder], check=True)
    cards = {}
    with open(labels, encoding="utf-8") as file:
        for label in map(json.loads, file):
            name = label["image"].replace("-front.", ".").replace("-back.", ".")
            cards.setdefault(name, (label["lang"], []))[1].append(os.path.join(folder, label["image"]))
    path = os.path.join(options.out, "cards.list")
    with open(path, "w", encoding="utf-8") as file:
        for language, pictures in cards.values():
            file.write("\t".join([language, *sorted(pictures, key=lambda picture: "-back." in picture)]) + "\n")
    return path


def engine_memory(port):
    """The server's heap in use, as it says itself."""
    with urllib.request.urlopen("http://127.0.0.1:%d/metrics" % port, timeout=60) as answer:
        _, figures = metrics.read(answer.read().decode())
    memory = figures.get("engine_memory_bytes")
    return None if memory is None else int(memory)


def with_recogniser(options):
    """The library and the real server, both watched."""
    cards = list_of_cards(options)
    host, server, last = [], [], None
    command = [os.path.join(options.programs, "qvcardrecod"), "--workers", "2", "--quiet"]
    with processes.Server(command) as recod:
        driver = Driver(options, ["--server", "http://127.0.0.1:%d/" % recod.port, "--cards", options.real, "--round",
                                  options.real_round, "--list", cards])
        for last in driver.rounds(options.real):
            host.append(sample(last["cards"], driver.process.pid, last["heap"]))
            server.append(sample(last["cards"], recod.pid, engine_memory(recod.port)))
        status = driver.end()
    if last is None:
        return ["the driver said nothing, and ended with status %d" % status]
    say_ends(last)
    return (report("library with recogniser", host, library(ALONE, options.real), options.out) +
            report("recogniser", server, recogniser(server[0]), options.out) +
            problems_of_ends(last, options.real, status))


def parse(arguments):
    parser = argparse.ArgumentParser(prog="soak", description=__doc__)
    parser.add_argument("--cards", type=int, default=10000, metavar="N", help="cards with the stub server, 0 for none")
    parser.add_argument("--real", type=int, default=300, metavar="N", help="cards with the real recogniser, 0 for none")
    parser.add_argument("--round", type=int, default=100, metavar="N", help="look after so many cards (default 100)")
    parser.add_argument("--real-round", type=int, default=5, metavar="N", help="the same with the recogniser (5)")
    parser.add_argument("--programs", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--out", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--plant", help=argparse.SUPPRESS)
    return parser.parse_args(arguments)


def main(arguments=None):
    options = parse(arguments)
    sys.stdout.reconfigure(line_buffering=True)
    os.makedirs(options.out, exist_ok=True)
    problems = with_stub(options) if options.cards else []
    if options.real:
        problems += with_recogniser(options)
    return verdict.tell(problems, "NOT FLAT OR NOT RIGHT", "Flat, and every card ended once.")


if __name__ == "__main__":
    sys.exit(main())
