"""Clients of the server: those that behave, and every kind of those that do not."""

import itertools
import threading

import wire

BODY_LIMIT = 8 << 20
HEADER_LIMIT = 16 << 10


class Client(threading.Thread):
    """Asks until it is told to stop."""

    def __init__(self, number, scene):
        super().__init__(name="client %d" % number, daemon=True)
        self.number = number
        self.scene = scene
        self.ledger = scene.ledger

    def run(self):
        for turn in itertools.count():
            if self.scene.stop.is_set():
                return
            try:
                self.ask(turn)
            except OSError as problem:
                # When the server was told to end, nobody need be there any more.
                if not self.scene.ending.is_set():
                    self.ledger.complain("%s: %r" % (self.name, problem))
                return

    def ask(self, turn):
        raise NotImplementedError


class Good(Client):
    """Posts cards and wants its answers; every other one keeps its connection. After a 503 it waits as long as it was
    told to."""

    def __init__(self, number, scene):
        super().__init__(number, scene)
        self._keeps = number % 2 == 1
        self._line = None

    def run(self):
        super().run()
        if self._line:
            self._line.close()

    def ask(self, turn):
        card = self.scene.cards[(self.number + turn) % len(self.scene.cards)]
        picture = self.scene.picture_for(card)
        was_kept = self._line is not None
        if not was_kept:
            self._line = wire.Line(self.scene.port_for(self.number, turn))
        self.ledger.count("asked")
        self._line.send(wire.request(self.scene.token, picture))
        try:
            answer = self._line.answer()
        except wire.Broken as problem:
            self._line.close()
            self._line = None
            return self._broken(problem, was_kept)
        if not self._keeps or answer.headers.get("connection", "").lower() == "close":
            self._line.close()
            self._line = None
        self._judge(card, answer)

    def _broken(self, problem, was_kept):
        """A connection that was kept may be closed before the next request; that is asked again, as the library does.
        Had the server taken it, its counts would tell."""
        if problem.received == 0 and self.scene.ending.is_set():
            self.ledger.count("closed at the end")
        elif problem.received == 0 and was_kept:
            self.ledger.count("asked again")
        else:
            self.ledger.complain("a good request was lost: %s" % problem)

    def _judge(self, card, answer):
        self.ledger.count(answer.status)
        self.ledger.count("good %d" % answer.status)
        if answer.status == 200:
            if not card.is_in(answer.body):
                self.ledger.count("another card")
        elif answer.status == 503 and answer.headers.get("retry-after", "").isdigit() and not answer.body:
            self.scene.stop.wait(int(answer.headers["retry-after"]))
        else:
            self.ledger.complain("a good request got %d with %d bytes" % (answer.status, len(answer.body)))


class Bad(Client):
    """Does one wrong thing after the other; which one it begins with depends on its number."""

    def ask(self, turn):
        way = WAYS[(self.number * 5 + turn) % len(WAYS)]
        self.ledger.count(way.__name__.replace("_", " "))
        with wire.Line(self.scene.port) as line:
            way(self, line)

    def wants(self, line, *statuses, may_miss=None):
        """The answer must come, be one of these and, as an error, be empty. Who sends more than the server takes may
        miss it: the server drops that for some seconds only, and then there is a reset."""
        try:
            answer = line.answer()
        except wire.Broken as problem:
            if may_miss:
                self.ledger.count("missed %s" % may_miss)
            elif not self.scene.ending.is_set():
                self.ledger.complain("%s: no answer: %s" % (statuses, problem))
            return
        self.ledger.count(answer.status)
        if answer.body and answer.status != 200:
            self.ledger.complain("an error with a body: %d" % answer.status)
        if answer.status not in statuses and not self.scene.ending.is_set():
            self.ledger.complain("%d instead of %s" % (answer.status, statuses))
        if answer.status == 503 and "retry-after" not in answer.headers:
            self.ledger.complain("503 without Retry-After")

    def card(self):
        return wire.request(self.scene.token, self.scene.cards[self.number % len(self.scene.cards)].picture)

    def trickle(self, line, start, seconds):
        """Goes on with a byte a second until the server has had enough."""
        line.send(start)
        self.ledger.count("incomplete")
        for _ in range(seconds):
            if self.scene.stop.wait(1) or not line.send(b"x"):
                return
        if not self.scene.ending.is_set():
            self.ledger.complain("a slow client was served for %d seconds" % seconds)


def wrong_token(client, line):
    line.send(wire.request(client.scene.token + "x", client.scene.cards[0].picture))
    client.wants(line, 401)


def no_picture(client, line):
    line.send(wire.request(client.scene.token, b"\xff\xd8\xff\xe0 and then nothing that is one" * 40))
    client.wants(line, 422, 503)


def announces_too_much(client, line):
    line.send(("POST / HTTP/1.1\r\nHost: x\r\nauth: %s\r\nContent-Length: %d\r\n\r\n" % (
        client.scene.token, BODY_LIMIT + 1)).encode() + b"x" * 65536)
    client.wants(line, 413, may_miss=413)


def sends_too_much(client, line):
    """In pieces, without a word of how much it will be."""
    line.send(("POST / HTTP/1.1\r\nHost: x\r\nauth: %s\r\nTransfer-Encoding: chunked\r\n\r\n" %
               client.scene.token).encode())
    for _ in range(BODY_LIMIT // 65536 + 1):
        if not line.send(b"10000\r\n" + b"x" * 65536 + b"\r\n"):
            break
    client.wants(line, 413, may_miss=413)


def endless_headers(client, line):
    line.send(b"POST / HTTP/1.1\r\nHost: x\r\n" + b"X-Header: value\r\n" * (2 * HEADER_LIMIT // 17))
    client.wants(line, 431, may_miss=431)


def other_language(client, line):
    """What a client of TLS begins with."""
    line.send(b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" + bytes(range(128)) + b"\r\n\r\n")
    client.wants(line, 400)


def wrong_path(client, line):
    line.send(wire.request(client.scene.token, path="/cards"))
    client.wants(line, 404)


def wrong_method(client, line):
    line.send(wire.request(client.scene.token, method="DELETE"))
    client.wants(line, 405)


def half_a_header(client, line):
    line.send(b"POST / HTTP/1.1\r\nHost: x\r\ncontent-lang")
    client.ledger.count("incomplete")


def half_a_picture(client, line):
    whole = client.card()
    line.send(whole[:len(whole) // 2])
    client.ledger.count("incomplete")


def slow_header(client, line):
    client.trickle(line, b"POST / HTTP/1.1\r\nHost: x\r\nX-Slow: ", 60)


def slow_picture(client, line):
    client.trickle(line, client.card()[:-1000], 120)


def silent(client, line):
    """Says nothing until the server closes, and is no request."""
    while not line.ends_within(1) and not client.scene.stop.is_set():
        pass


def gone_at_once(client, line):
    line.send(client.card())
    client.ledger.count("unread")


def never_reads(client, line):
    line.send(client.card())
    client.ledger.count("unread")
    line.has_answer()
    client.scene.stop.wait(2)


def resets(client, line):
    line.send(client.card())
    client.ledger.count("unread")
    line.has_answer()
    line.reset()


WAYS = (wrong_token, no_picture, slow_header, announces_too_much, gone_at_once, half_a_picture, sends_too_much, resets,
        endless_headers, silent, never_reads, other_language, slow_picture, half_a_header, wrong_path, wrong_method)
