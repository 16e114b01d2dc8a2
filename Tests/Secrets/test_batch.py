"""`batch`: its state, its lists and its cards, finished, failed and interrupted."""

import contextlib
import os
import pty
import shutil
import signal
import subprocess
import threading
import unittest

from marks import SECRETS
from roads import BINARIES, CARD, CARD_WORDS, FRONT, Road
from servers import always


class Batch(Road):
    def setUp(self):
        super().setUp()
        self.pictures = self.private / "pictures"
        self.pictures.mkdir()
        for number in range(4):
            # Bytes behind a JPEG's end are not looked at, and make each picture another file.
            (self.pictures / f"card{number}.jpg").write_bytes(FRONT.read_bytes() + bytes([number]))

    def call(self, *more, from_files=False):
        call = ["batch", self.pictures, "-o", self.folder / "out", *self.server_options(from_files)]
        return [*call, *self.person_options(from_files), *more]

    def test_state_lists_and_cards_hold_none(self):
        failing = always(500, {}, "out of order")
        self.recogniser.answer = lambda request: failing(request) if len(self.recogniser.requests) == 2 else (200, {}, CARD)
        for more in ([], ["--resume"], ["--resume", "--json", "--verbose"]):
            self.run_program("qvcardscan", *self.call(*more))
        files = {path.name for path in (self.folder / "out").rglob("*")}
        self.assertLessEqual({"batch.json", "contacts.csv", "contacts.vcf", "index.html", "note.html"}, files)
        self.expect_no_leak()

    def test_secrets_may_come_from_files(self):
        call = self.call("--verbose", from_files=True)
        result = self.run_program("qvcardscan", *call, environment=self.environment(secrets=False))
        self.assertEqual(0, result.returncode, result.stderr)
        self.assertEqual(SECRETS["recognition token"], self.recogniser.requests[0].header("auth"))
        self.expect_no_leak()

    def test_an_interruption_leaves_none(self):
        for how in (signal.SIGINT, signal.SIGTERM, signal.SIGKILL):
            with self.subTest(how.name):
                shutil.rmtree(self.folder / "out", ignore_errors=True)
                held, may_go = threading.Event(), threading.Event()

                def hold(request):
                    held.set()
                    may_go.wait(60)
                    return None

                self.recogniser.requests.clear()
                self.recogniser.answer = lambda request: (
                    (200, {}, CARD) if len(self.recogniser.requests) == 1 else hold(request)
                )
                call = [str(word) for word in [BINARIES / "qvcardscan", *self.call("--verbose")]]
                pipes = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE}
                program = subprocess.Popen(call, env=self.environment(), **pipes)
                self.assertTrue(held.wait(60))
                program.send_signal(how)
                may_go.set()
                for text in program.communicate(timeout=60):
                    self.leaks.look(f"what was said after {how.name}", text)
                self.expect_no_leak()

    def test_messages_are_without_card_text_unless_the_log_is_asked_for(self):
        quiet = self.run_program("qvcardscan", *self.call())
        self.assertEqual(0, quiet.returncode, quiet.stderr)
        said = quiet.stdout + quiet.stderr
        self.assertEqual([], [word for word in CARD_WORDS if word.encode() in said])
        contacts = (self.folder / "out/contacts.csv").read_text(encoding="utf-8")
        self.assertEqual(CARD_WORDS, [word for word in CARD_WORDS if word in contacts])
        shutil.rmtree(self.folder / "out")
        loud = self.run_program("qvcardscan", *self.call("--verbose"))
        self.assertEqual(CARD_WORDS, [word for word in CARD_WORDS if word.encode() in loud.stderr])

    def test_a_terminal_sees_no_card(self):
        terminal, end = pty.openpty()
        call = [str(word) for word in [BINARIES / "qvcardscan", *self.call()]]
        program = subprocess.Popen(call, env=self.environment(), stdout=end, stderr=end)
        os.close(end)
        said = b""
        # The terminal's other end fails once nobody is left to write to it.
        with contextlib.suppress(OSError):
            while piece := os.read(terminal, 4096):
                said += piece
        os.close(terminal)
        self.assertEqual(0, program.wait(60))
        self.assertIn(b"4 cards read.", said)
        self.assertEqual([], [word for word in CARD_WORDS if word.encode() in said])


if __name__ == "__main__":
    unittest.main()
