"""Has a recognition server read pictures."""

import json
import os
import queue
import subprocess
import sys
import threading
from dataclasses import dataclass, field
from typing import List

from . import answer
from .counting import compare
from .server import Server


@dataclass
class Reading:
    """One picture in one turn and what the server answered."""

    label: dict
    turn: int
    body: bytes = b""
    problem: str = ""
    seconds: float = 0.0
    processor_seconds: float = 0.0

    def answer(self):
        return answer.Answer(problem=self.problem) if self.problem else answer.parse(self.body)

    def outcome(self):
        """How the answer compares with what is printed."""
        outcome = compare(self.label, self.answer(), self.turn)
        outcome.seconds, outcome.processor_seconds = self.seconds, self.processor_seconds
        return outcome


@dataclass
class Run:
    """Everything that was read; `memory` is the peak of each worker in MiB."""

    readings: List[Reading]
    memory: List[float] = field(default_factory=list)


def load(path):
    """The labels, one JSON object a line."""
    with open(path, encoding="utf-8") as file:
        return [json.loads(line) for line in file if line.strip()]


class Reader:
    """Sends pictures as the library sends them. `programs` is the folder of the built programs."""

    def __init__(self, folder, programs, language=None, arguments=()):
        self.folder, self.programs = folder, programs
        self.language, self.arguments = language, arguments

    def read(self, labels, turns, workers):
        """Every picture in every turn, by several servers of one worker each."""
        readings = [Reading(label, turn) for label in labels for turn in turns]
        waiting, memory, left = queue.Queue(), [], [len(readings)]
        for reading in readings:
            waiting.put(reading)
        threads = [threading.Thread(target=self._work, args=(waiting, memory, left)) for _ in range(workers)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        return Run(readings, memory)

    def _work(self, waiting, memory, left):
        with Server(os.path.join(self.programs, "qvcardrecod"), self.arguments) as server:
            while True:
                try:
                    reading = waiting.get_nowait()
                except queue.Empty:
                    break
                self._one(server, reading)
                left[0] -= 1
                if sys.stderr.isatty():
                    print("\r%d left " % left[0], end="" if left[0] else "\r\033[K", file=sys.stderr, flush=True)
            memory.append(server.peak_memory())

    def _one(self, server, reading):
        path = os.path.join(self.folder, reading.label["image"])
        sent = subprocess.run([os.path.join(self.programs, "cardrequest"), str(reading.turn), path],
                              stdout=subprocess.PIPE, check=False)
        if sent.returncode:
            reading.problem = "the picture cannot be read"
            return
        try:
            status, reading.body, reading.seconds, reading.processor_seconds = server.read(
                sent.stdout, self.language or reading.label.get("lang", "en"))
            if status != 200:
                reading.problem = "status %d" % status
        except OSError as problem:
            reading.problem = str(problem)
