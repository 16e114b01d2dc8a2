"""`serve`: the page's answers, downloads, messages and folders."""

import http.client
import json
import signal
import subprocess
import unittest
import urllib.parse

from marks import SECRETS
from roads import BINARIES, CARD_WORDS, FRONT, Road
from servers import BOOK, always

KEY = SECRETS["page key"]


class Serve(Road):
    def start(self, from_files=False):
        call = [BINARIES / "qvcardscan", "serve", *self.server_options(from_files), "--carddav", self.dav.url(BOOK)]
        if from_files:
            call += ["--key-file", self.secret_file("page key")]
            call += ["--carddav-login-file", self.secret_file("CardDAV user", "CardDAV password")]
        environment = self.environment(secrets=not from_files) | {"QVCARDSCAN_LOG": "1" if from_files else "0"}
        self.messages = open(self.folder / "messages", "wb")
        pipes = {"stdout": subprocess.PIPE, "stderr": self.messages}
        self.program = subprocess.Popen([str(word) for word in call], env=environment, **pipes)
        self.addCleanup(self.stop)
        url = self.program.stdout.readline().decode().strip()
        # The one place where the key is told: to whoever started the program.
        self.leaks.look("the printed address", url, allowed={"page key"})
        self.port = urllib.parse.urlsplit(url).port
        status, headers, _ = self.ask("GET", "/?key=" + KEY, allowed={"page key"})
        self.assertEqual(303, status)
        self.inside, self.cookie = headers["Location"], headers["Set-Cookie"].split(";")[0]
        self.leaks.look("where the door leads", self.inside)

    def stop(self):
        if self.program.poll() is None:
            self.program.send_signal(signal.SIGTERM)
            self.leaks.look("the rest of the output", self.program.communicate(timeout=60)[0])
        self.program.stdout.close()
        self.messages.close()

    def ask(self, method, path, body=None, allowed=(), **headers):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        connection.request(method, path, body, headers)
        response = connection.getresponse()
        found = response.status, dict(response.getheaders()), response.read()
        connection.close()
        self.leaks.look(f"the headers for {method} {path[-40:]}", json.dumps(found[1]), allowed)
        self.leaks.look(f"the answer to {method} {path[-40:]}", found[2])
        return found

    def inside_ask(self, method, path, body=None):
        headers = {"Cookie": self.cookie, "Content-Type": "application/json"}
        return self.ask(method, self.inside + "api/" + path, body, **headers)

    def wait_for(self, condition):
        """Asks for the list until it is so; the page answers when something is new."""
        run, seen = "", 0
        for _ in range(100):
            cards = json.loads(self.inside_ask("GET", f"cards?run={run}&seen={seen}")[2])
            run, seen = cards["run"], cards["version"]
            if condition(cards):
                return cards
        self.fail(f"it never came: {cards}")

    def read_a_card(self):
        picture = json.loads(self.inside_ask("POST", "pictures?name=card.jpg", FRONT.read_bytes())[2])["id"]
        card = json.loads(self.inside_ask("POST", "cards", json.dumps({"pictures": [picture]}))[2])["id"]
        self.wait_for(lambda cards: cards["done"] == cards["total"])
        return picture, card

    def visit_everything(self):
        picture, card = self.read_a_card()
        _, _, shown = self.inside_ask("GET", f"cards/{card}")
        self.assertIn(CARD_WORDS[0].encode(), shown)
        for path in ("", "/note", "/note.qvml", "/contact.vcf"):
            self.assertEqual(200, self.inside_ask("GET", f"cards/{card}{path}")[0], path)
        for form in ("thumbnail", "view"):
            self.assertEqual(200, self.inside_ask("GET", f"pictures/{picture}/{form}")[0])
        self.inside_ask("POST", f"cards/{card}/save")
        status, _, everything = self.inside_ask("GET", "everything.zip")
        self.assertEqual((200, b"PK"), (status, everything[:2]))
        for path in ("", "page.js", "nothing"):
            self.ask("GET", self.inside + path)
        return card

    def test_answers_downloads_and_messages_hold_none(self):
        for from_files in (False, True):
            with self.subTest(from_files=from_files):
                self.start(from_files)
                self.visit_everything()
                self.wait_for(lambda cards: len(self.dav.requests) > 0)
                self.leaks.look_into_folder(self.folder)
                self.stop()
        self.assertEqual(SECRETS["recognition token"], self.recogniser.requests[0].header("auth"))
        self.expect_no_leak()

    def test_strangers_learn_nothing(self):
        self.start()
        other = SECRETS["another server's token"]
        quoted = urllib.parse.quote(other, safe="")
        rows = [
            ("GET", "/?key=" + quoted, {}),
            ("GET", "/", {}),
            ("GET", "/nothing", {}),
            ("GET", self.inside + "api/cards", {}),
            ("GET", self.inside + "api/cards", {"Cookie": "qvcardscan=" + quoted}),
            ("GET", "/?key=" + KEY, {"Host": "other.example"}),
            ("POST", "/?key=" + KEY, {}),
            ("GET", "/" + "x" * 9000, {}),
            ("BREW", "/?key=" + KEY, {}),
        ]
        for method, path, headers in rows:
            with self.subTest(f"{method} {path[:30]}"):
                status, _, body = self.ask(method, path, **headers)
                self.assertGreaterEqual(status, 400)
                self.assertNotIn(self.inside.encode(), body)
        self.stop()
        self.expect_no_leak()

    def test_failures_tell_none(self):
        self.start()
        for answer in (always(401), always(500), always(302, {"Location": self.stranger.url()}), lambda request: None):
            self.recogniser.answer = answer
            self.dav.answer = answer
            _, card = self.read_a_card()
            self.inside_ask("GET", f"cards/{card}")
            self.inside_ask("POST", f"cards/{card}/save")
        self.stop()
        self.expect_no_leak()

    def test_the_terminal_sees_no_card(self):
        self.start()
        self.visit_everything()
        self.stop()
        said = (self.folder / "messages").read_bytes()
        self.assertIn(b"Open this address", said)
        self.assertEqual([], [word for word in CARD_WORDS if word.encode() in said])


if __name__ == "__main__":
    unittest.main()
