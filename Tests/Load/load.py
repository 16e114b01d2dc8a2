#!/usr/bin/python3
"""The recognition server with more clients than it has workers and places in its line, half of them slow or broken: no
good request may be lost but by a clear 503, nothing may grow, and the server must end well in the middle of it (see
README.md)."""

import argparse
import os
import signal
import socket
import subprocess
import sys
import threading
import time

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(os.path.dirname(HERE), "Support")]

import cards  # noqa: E402  (the paths above must come first)
import clients  # noqa: E402
import ledger  # noqa: E402
import wire  # noqa: E402
from watching import flatness, metrics, processes, tables, verdict  # noqa: E402

KIB = 1024
STOP_LIMIT = 20  # seconds that the server says it needs at most
GUARD = 120  # seconds after which a broken server is not waited for any more
ENOUGH = 4  # answers before the server is told to end in the middle of the load

# By how much memory may differ, in KiB: how much it varies with what is being read at the moment, and for each request.
HEAP = flatness.Growth(12 * KIB)
OTHERS = flatness.Growth(24 * KIB)
CALM_HEAP = 256
CALM_HEAP_PER_REQUEST = 0.1


class Loser:
    """Takes one connection and loses it, as a server must not; for a test that sees that found."""

    def __init__(self):
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port = self._listener.getsockname()[1]
        threading.Thread(target=self._lose, daemon=True).start()

    def _lose(self):
        connection, _ = self._listener.accept()
        connection.recv(65536)
        connection.close()


class Scene:
    """What the clients share."""

    def __init__(self, port, token, pictures, planted=None):
        self.port = port
        self.token = token
        self.cards = pictures
        self.ledger = ledger.Ledger()
        self.stop = threading.Event()
        self.ending = threading.Event()  # set when the server is told to end
        self._planted = planted
        self._loser = Loser() if planted == "lost" else None

    def port_for(self, number, turn):
        return self._loser.port if self._loser and (number, turn) == (0, 0) else self.port

    def picture_for(self, card):
        """The card's picture, unless it was planned that another one is sent."""
        if self._planted == "mixed":
            card = self.cards[(self.cards.index(card) + 1) % len(self.cards)]
        return card.picture

    def begin(self, good, bad):
        self._clients = ([clients.Good(number, self) for number in range(good)] +
                         [clients.Bad(good + number, self) for number in range(bad)])
        for client in self._clients:
            client.start()

    def finish(self):
        """Tells them to stop and waits; who does not is stuck."""
        self.stop.set()
        for client in self._clients:
            client.join(GUARD + wire.PATIENCE)
            if client.is_alive():
                self.ledger.complain("%s hangs" % client.name)


class Recod:
    """The server, and what it says of itself."""

    def __init__(self, server):
        self.pid = server.pid
        self.port = server.port
        self.process = server.process

    def metrics(self):
        return metrics.read(wire.get(self.port, "/metrics").body.decode())

    def sample(self, seconds):
        """Also asks whether it is there, which it must say at any time."""
        if wire.get(self.port, "/health").status != 200:
            raise SystemExit("load: the server did not say that it is there")
        _, figures = self.metrics()
        return {"seconds": round(seconds, 1), "heap": int(figures["engine_memory_bytes"]) // KIB,
                **vars(processes.look(self.pid)), "busy": int(figures["busy_workers"]),
                "waiting": int(figures["waiting_requests"]), "connections": int(figures["connections"])}

    def sample_at_rest(self, seconds, descriptors):
        """As soon as so many descriptors are left: the one of the question before may take a moment to go. What is
        held for good is seen at the end of the guard."""
        end = time.monotonic() + GUARD
        while True:
            row = self.sample(seconds)
            if row["descriptors"] == descriptors or time.monotonic() > end:
                return row
            time.sleep(0.05)

    def await_calm(self):
        """Until nothing is under way but this question; false when that does not come."""
        end = time.monotonic() + GUARD
        while time.monotonic() < end:
            _, figures = self.metrics()
            if figures["busy_workers"] == figures["waiting_requests"] == 0 and figures["connections"] == 1:
                return True
            time.sleep(0.05)
        return False


def warm(recod, token, pictures, workers):
    """Every card once for each worker, side by side, so that each worker has what it needs. Returns what went wrong."""
    problems = []

    def post():
        for card in pictures:
            with wire.Line(recod.port) as line:
                line.send(wire.request(token, card.picture))
                answer = line.answer()
                if answer.status != 200 or not card.is_in(answer.body):
                    problems.append("%s is not read even while nothing else is asked" % card.email)

    threads = [threading.Thread(target=post) for _ in range(workers)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return problems


def memory_problems(samples, before, after, requests):
    """Memory in the course of the load, and before and after it, when it varies least."""
    problems = []
    for name, bound in (("heap", HEAP), ("resident", OTHERS), ("proportional", OTHERS)):
        points = [(row["seconds"], row[name]) for row in samples]
        low, high = flatness.halves(points)
        print("  %-12s median of the halves %.0f and %.0f, growth %.0f; allowed: %s" % (
            name, low, high, flatness.growth(points), bound.allowed(points)))
        problems.append(bound.problem(name, points))
    allowed = CALM_HEAP + CALM_HEAP_PER_REQUEST * requests
    print("  heap in calm %d before and %d after, allowed %d more" % (before["heap"], after["heap"], allowed))
    if after["heap"] - before["heap"] > allowed:
        problems.append("in calm the heap grew by %d" % (after["heap"] - before["heap"]))
    return [problem for problem in problems if problem]


def piece_problems(samples, before, after, clients_in_all):
    """Threads never change; each descriptor is somebody's connection, and gone afterwards."""
    problems = []
    threads = {row["threads"] for row in samples} | {before["threads"], after["threads"]}
    most = max(row["descriptors"] for row in samples)
    print("  threads      %s; descriptors %d before, at most %d, %d after" % (
        sorted(threads), before["descriptors"], most, after["descriptors"]))
    if len(threads) != 1:
        problems.append("threads come and go")
    if after["descriptors"] != before["descriptors"]:
        problems.append("descriptors are left over")
    # A connection that its client has closed may still be there when the next one comes.
    if most > before["descriptors"] + 2 * clients_in_all:
        problems.append("more descriptors than clients")
    return problems


def load(recod, options, token, pictures):
    """The counting part. Returns what went wrong."""
    recod.await_calm()
    told_before, _ = recod.metrics()
    before = recod.sample(0)
    scene = Scene(recod.port, token, pictures, options.plant)
    scene.begin(options.good, options.bad)
    samples, start = [], time.monotonic()
    while time.monotonic() - start < options.seconds:
        samples.append(recod.sample(time.monotonic() - start))
        time.sleep(max(0.2, options.seconds / 600))
    scene.finish()
    calm = recod.await_calm()
    after = recod.sample_at_rest(time.monotonic() - start, before["descriptors"])
    told, figures = recod.metrics()
    told.subtract(told_before)
    seen = scene.ledger.counts
    print("\n%d seconds, %d good and %d bad clients, %d workers, %d places (KiB)" % (
        after["seconds"], options.good, options.bad, options.workers, options.places))
    print(tables.text(samples))
    tables.write(os.path.join(options.out, "load.csv"), samples)
    problems = memory_problems(samples, before, after, seen["asked"])
    problems += piece_problems(samples, before, after, options.good + options.bad)
    say_counts(seen, told, figures)
    if not calm:
        problems.append("something was still under way when no client was left")
    if seen["another card"] > figures["cut_short_total"]:
        problems.append("%d answers with another card, or half of one" % seen["another card"])
    if seen["good 200"] == 0 or seen["good 503"] == 0:
        problems.append("no load: %d answers, %d refused" % (seen["good 200"], seen["good 503"]))
    asked = seen["good 200"] + seen["good 503"] + seen["asked again"]
    if asked != seen["asked"]:
        problems.append("%d good requests, %d answers" % (seen["asked"], asked))
    return problems + scene.ledger.problems + ledger.disagreements(seen, told)


def say_counts(seen, told, figures):
    print("\nGood requests: %d, of them %d answered with their card, %d refused with 503, %d asked again, %d with another "
          "card" % (seen["asked"], seen["good 200"] - seen["another card"], seen["good 503"], seen["asked again"],
                    seen["another card"]))
    print("Bad clients: " + ", ".join("%s %d" % (way.__name__.replace("_", " "), seen[way.__name__.replace("_", " ")])
                                      for way in clients.WAYS))
    print("The server counted: " + ", ".join("%s %d" % pair for pair in sorted(told.items()) if pair[1]) +
          "; cut short %d" % figures["cut_short_total"])


def end_in_the_middle(recod, options, token, pictures):
    """SIGTERM while everybody asks. Returns what went wrong."""
    scene = Scene(recod.port, token, pictures)
    scene.begin(options.good, options.bad)
    deadline = time.monotonic() + GUARD
    while scene.ledger.counts["good 200"] < ENOUGH and time.monotonic() < deadline:
        time.sleep(0.01)
    asked_before = scene.ledger.counts["asked"]
    answered_before = scene.ledger.counts["good 200"] + scene.ledger.counts["good 503"]
    scene.ending.set()
    start = time.monotonic()
    recod.process.send_signal(signal.SIGTERM)
    try:
        status = recod.process.wait(timeout=GUARD)
    except subprocess.TimeoutExpired:
        return ["the server did not end within %d seconds" % GUARD]
    took = time.monotonic() - start
    left = processes.session_members(recod.pid)
    scene.finish()
    seen = scene.ledger.counts
    print("\nSIGTERM with %d good requests under way: ended after %.1f s (limit %d s) with status %d; of all %d good "
          "requests %d answered with their card, %d with 503, %d met a closed connection" % (
              asked_before - answered_before, took, STOP_LIMIT, status, seen["asked"],
              seen["good 200"] - seen["another card"], seen["good 503"], seen["closed at the end"]))
    problems = scene.ledger.problems
    if status != 0:
        problems.append("the server ended with status %d" % status)
    if left:
        problems.append("the server left processes behind: %s" % left)
    if seen["good 200"] + seen["good 503"] + seen["closed at the end"] + seen["asked again"] != seen["asked"]:
        problems.append("a good request has no end")
    return problems


def parse(arguments):
    parser = argparse.ArgumentParser(prog="load", description=__doc__)
    parser.add_argument("--seconds", type=float, default=600, metavar="N", help="how long (default 600)")
    parser.add_argument("--good", type=int, default=12, metavar="N", help="clients that behave (default 12)")
    parser.add_argument("--bad", type=int, default=12, metavar="N", help="clients that do not (default 12)")
    parser.add_argument("--workers", type=int, default=2, metavar="N", help="the server's workers (default 2)")
    parser.add_argument("--places", type=int, default=4, metavar="N", help="the server's waiting places (default 4)")
    parser.add_argument("--programs", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--out", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--plant", choices=("lost", "mixed"), help=argparse.SUPPRESS)
    return parser.parse_args(arguments)


def main(arguments=None):
    options = parse(arguments)
    sys.stdout.reconfigure(line_buffering=True)
    os.makedirs(options.out, exist_ok=True)
    token = "load-0123456789abcdef"
    token_file = os.path.join(options.out, "token")
    with open(token_file, "w", encoding="ascii") as file:
        file.write(token + "\n")
    pictures = [cards.Card(number) for number in range(len(cards.PEOPLE))]
    command = [os.path.join(options.programs, "qvcardrecod"), "--workers", str(options.workers), "--queue",
               str(options.places), "--token-file", token_file]
    with open(os.path.join(options.out, "qvcardrecod.log"), "wb") as log, processes.Server(command, log) as server:
        recod = Recod(server)
        problems = warm(recod, token, pictures, options.workers)
        problems += load(recod, options, token, pictures)
        if not options.plant:
            problems += end_in_the_middle(recod, options, token, pictures)
    return verdict.tell(problems, "NOT RIGHT", "Nothing was lost, nothing grew, and the end was clean.")


if __name__ == "__main__":
    sys.exit(main())
