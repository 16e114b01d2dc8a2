"""The recognition server: alone with a token of its own, and as the command line starts it."""

import http.client
import os
import signal
import stat
import subprocess
import unittest

import servers
from marks import FORMS, SECRETS, forms
from roads import BINARIES, DATA, FRONT, SAMPLES, Road
from servers import processes

# The program that is started in the place of the server: it notes the token that it is told on its standard input, and
# what everybody can see of it and of who started it, and is the server then.
BETWEEN = """#!/bin/sh
IFS= read -r token
printf '%s' "$token" > "{private}/told"
tr '\\0' '\\n' < /proc/$$/environ > "{private}/environment"
for process in $$ $PPID; do tr '\\0' '\\n' < /proc/$process/cmdline >> "{private}/arguments"; done
{{ printf '%s\\n' "$token"; cat; }} | "{server}" "$@" {more}
"""


class Recod(Road):
    def start(self):
        token_file = self.secret_file("recognition token")
        call = [BINARIES / "qvcardrecod", "--token-file", token_file, "--debug-dir", self.folder / "debug", "--verbose"]
        (self.folder / "debug").mkdir()
        self.messages = open(self.folder / "messages", "wb")
        self.program = subprocess.Popen(
            [str(word) for word in call], stdout=subprocess.PIPE, stderr=self.messages, env=self.environment(secrets=False)
        )
        self.addCleanup(self.stop)
        self.port = int(self.program.stdout.readline().split()[1])

    def stop(self):
        if self.program.poll() is None:
            self.program.send_signal(signal.SIGTERM)
            self.program.wait(60)
        self.program.stdout.close()
        self.messages.close()

    def ask(self, method, path, body=None, **headers):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=120)
        connection.request(method, path, body, headers)
        response = connection.getresponse()
        found = response.status, response.read()
        self.leaks.look(f"the answer to {method} {path}: {response.status}", str(response.headers).encode() + found[1])
        connection.close()
        return found

    def test_log_metrics_answers_and_debug_folder_hold_none(self):
        self.start()
        picture = (SAMPLES / "german.jpg").read_bytes()
        token, other = SECRETS["recognition token"], SECRETS["another server's token"]
        self.assertEqual(200, self.ask("POST", "/", picture, auth=token)[0])
        for wrong in (other, token[:-1], token + "x", "Bearer " + token, ""):
            self.assertEqual(401, self.ask("POST", "/", picture, auth=wrong)[0])
        self.ask("POST", "/", b"no picture", auth=token)
        self.ask("POST", "/", b"", auth=token)
        self.ask("DELETE", "/", auth=token)
        self.ask("GET", "/" + other.replace('"', "").replace("<", "")[:20], auth=token)
        self.ask("POST", "/", picture, **{"auth": token, "content-language": other})
        self.ask("POST", "/", picture, **{"auth": token, "x-long": other * 2000})
        self.assertIn(b"qvcardrecod", self.ask("GET", "/metrics")[1])
        self.ask("GET", "/metrics", auth=token)
        for where, data in processes():
            self.leaks.look(where, data)
        self.stop()
        self.assertGreater(len(list((self.folder / "debug").rglob("*"))), 1)
        self.assertIn(b"qvcardrecod: ", (self.folder / "messages").read_bytes())
        self.expect_no_leak()

    def test_wrong_calls_do_not_repeat_what_they_were_given(self):
        token = SECRETS["recognition token"]
        (self.private / "long").write_text(token * 400, encoding="utf-8")
        (self.private / "empty").write_text("\n" + token, encoding="utf-8")
        for call in (
            [f"--token={token}"],
            [f"--toke={token}"],
            ["--token-file", self.private / "long"],
            ["--token-file", self.private / "empty"],
        ):
            result = self.run_program("qvcardrecod", *call, environment=self.environment(secrets=False))
            self.assertIn(result.returncode, (1, 2))
        result = self.run_program("qvcardrecod", "--embedded", input=b"\n" + token.encode())
        self.assertEqual(1, result.returncode)
        self.expect_no_leak()


class Embedded(Road):
    """The token between the two programs is a new one each time, known to nobody else."""

    def run_embedded(self, server, *more, environment=None):
        between = self.private / "between"
        (self.folder / "debug").mkdir(exist_ok=True)
        debug = f'--debug-dir "{self.folder}/debug"' if server.name == "qvcardrecod" else ""
        between.write_text(BETWEEN.format(private=self.private, server=server, more=debug), encoding="utf-8")
        between.chmod(between.stat().st_mode | stat.S_IXUSR)
        call = ["scan", *more, "--recognizer", between, "--verbose", "-o", self.folder / "out"]
        result = self.run_program("qvcardscan", *call, environment=environment)
        token = (self.private / "told").read_text(encoding="utf-8")
        self.assertGreaterEqual(len(token), 16)
        # The token is a secret like the others from now on, and what was said is looked through once more.
        FORMS["embedded token"] = set(forms(token))
        self.addCleanup(FORMS.pop, "embedded token", None)
        for text in (result.stdout, result.stderr):
            self.leaks.look("what was said", text)
        for name in ("environment", "arguments"):
            self.leaks.look(f"the {name} of the server", (self.private / name).read_bytes())
        self.expect_no_leak()
        return result

    def test_the_token_stays_between_the_two(self):
        result = self.run_embedded(BINARIES / "qvcardrecod", SAMPLES / "german.jpg", "--language", "de")
        self.assertEqual(0, result.returncode, result.stderr)
        self.assertIn(b"<Debug> Card reco result", result.stderr)

    def test_it_stays_there_when_the_server_ends_in_the_middle(self):
        fake = self.folder / "tmp"
        (fake / "answer.xml").write_text((DATA / "front.xml").read_text(encoding="utf-8"), encoding="utf-8")
        for mode in ("dies", "garbage", "ends"):
            with self.subTest(mode):
                (fake / "mode").write_text(mode, encoding="utf-8")
                self.run_embedded(
                    BINARIES / "FakeRecod", FRONT, environment=self.environment() | {"FAKE_RECOD": str(fake)}
                )


if __name__ == "__main__":
    unittest.main()
