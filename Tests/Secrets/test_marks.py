"""A search that finds nothing finds leaks: each form is planted once."""

import base64
import io
import json
import unittest
import urllib.parse
import zipfile
from html import escape

from marks import SECRETS, Leaks, found_in
from roads import Road


class Planted(unittest.TestCase):
    def test_every_form_of_every_secret_is_found(self):
        for name, secret in SECRETS.items():
            raw = secret.encode()
            planted = {
                "as it is": raw,
                "its beginning": raw[:14],
                "its end": raw[-14:],
                "in a text": b"<INFO> with " + raw + b" in it",
                "with a user before it": base64.b64encode(b"u:" + raw),
                "in base64": base64.b64encode(raw),
                "shifted": base64.b64encode(b"abcd:" + raw + b"."),
                "for addresses": base64.urlsafe_b64encode(b"x" + raw),
                "in percent": urllib.parse.quote(secret, safe="").encode(),
                "in small percent": urllib.parse.quote(secret, safe="").lower().encode(),
                "as a form": urllib.parse.urlencode({"key": secret}).encode(),
                "in hexadecimal digits": raw.hex().encode(),
                "in large ones": raw.hex().upper().encode(),
                "in JSON": json.dumps({"key": secret}).encode(),
                "in HTML": escape(secret).encode(),
                "in UTF-16": secret.encode("utf-16-le"),
            }
            for form, data in planted.items():
                self.assertIn(name, found_in(data), form)

    def test_what_is_packed_is_unpacked(self):
        packed = io.BytesIO()
        with zipfile.ZipFile(packed, "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr("note.html", "x" * 1000 + SECRETS["page key"])
        self.assertNotIn(SECRETS["page key"].encode(), packed.getvalue())
        self.assertEqual({"page key"}, found_in(packed.getvalue()))

    def test_other_texts_are_no_secrets(self):
        self.assertEqual(set(), found_in("Zephyrine Quillfeather <zq@example.com> " + "A" * 100))

    def test_only_what_is_allowed_is_let_by(self):
        leaks = Leaks()
        leaks.look("here", SECRETS["page key"], allowed={"page key"})
        self.assertEqual([], leaks)
        leaks.look("there", SECRETS["page key"] + SECRETS["search key"], allowed={"page key"})
        self.assertEqual(["search key in there"], leaks)


class PlantedOnTheRoad(Road):
    """Each place that the tests look at is looked at."""

    def expect_leak(self, text):
        with self.assertRaises(AssertionError) as failure:
            self.expect_no_leak()
        self.assertIn(text, str(failure.exception))

    def test_a_file(self):
        (self.folder / "home" / "state.json").write_text(SECRETS["CardDAV password"], encoding="utf-8")
        self.expect_leak("CardDAV password in")

    def test_a_file_name(self):
        (self.folder / "tmp" / SECRETS["page key"]).mkdir()
        self.expect_leak("page key in the name")

    def test_an_argument_and_an_environment(self):
        # The server's own answer runs while the program waits, so that a look is never too early or too late.
        fetch = "import sys, urllib.request; urllib.request.urlopen(sys.argv[2])"
        self.run_other(["-c", fetch, SECRETS["search key"], self.stranger.url()], {})
        self.expect_leak("search key in the arguments")
        self.leaks.clear()
        self.run_other(["-c", fetch, "nothing", self.stranger.url()], {"KEY": SECRETS["search secret"]})
        self.expect_leak("search secret in the environment")

    def test_another_servers_request(self):
        fetch = "import sys, urllib.request as u; u.urlopen(u.Request(sys.argv[1], data=sys.stdin.buffer.read()))"
        self.run_other(["-c", fetch, self.profiles.url()], {}, SECRETS["recognition token"].encode())
        self.expect_leak("recognition token in a request to the profile service")

    def test_an_own_secret_at_another_place(self):
        fetch = "import sys, urllib.request as u; u.urlopen(u.Request(sys.argv[1], data=sys.stdin.buffer.read()))"
        self.run_other(["-c", fetch, self.recogniser.url()], {}, SECRETS["recognition token"].encode())
        self.expect_leak("the address or body of a request to the recognition server")

    def run_other(self, arguments, environment, data=b""):
        import subprocess
        import sys

        clean = self.environment(secrets=False) | environment
        subprocess.run([sys.executable, *arguments], env=clean, input=data, check=True, timeout=60)


if __name__ == "__main__":
    unittest.main()
