"""The programs with a secret at every place where one can be, and a look at all that they leave behind."""

import os
import pathlib
import subprocess
import tempfile
import unittest

from marks import SECRETS, Leaks
from servers import BOOK, Server, addressbook, always

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BINARIES = pathlib.Path(os.environ.get("QV_BINARY_DIR", SOURCE / "build/release")) / "bin"
DATA = SOURCE / "Tests/Host/Data"
SAMPLES = SOURCE / "Samples"
FRONT, BACK = DATA / "front.jpg", DATA / "back.png"

# Words that are on the card and nowhere else.
CARD_WORDS = ["Zephyrine", "Quillfeather", "zq@example.com", "Chief Umbrella Officer", "Vexillology Works"]
CARD = (
    '<recoIndex lang="en" objWidth="120" objHeight="70">'
    '<item fldType="name" x="1" y="2" w="3" h="4"><t w="90">Zephyrine Quillfeather</t></item>'
    '<item fldType="title"><t w="90">Chief Umbrella Officer</t></item>'
    '<item fldType="company"><t w="90">Vexillology Works</t></item>'
    '<item fldType="email"><t w="90">zq@example.com</t></item>'
    '<item fldType="phone"><t w="90">+1 202 555 0142</t></item></recoIndex>'
)
PROFILE = '{"display_name":"Zephyrine","verified_accounts":[]}'
JRD = '{"subject":"acct:zq@example.com","links":[]}'


class Road(unittest.TestCase):
    """Everything of one test: servers, a folder for what the programs write, and another for the files of secrets."""

    def setUp(self):
        self.leaks = Leaks()
        self.temporary = tempfile.TemporaryDirectory(prefix="qv-secrets-", ignore_cleanup_errors=True)
        root = pathlib.Path(self.temporary.name)
        self.folder, self.private = root / "seen", root / "private"
        for folder in (self.folder, self.private, self.folder / "tmp", self.folder / "home"):
            folder.mkdir()
        self.servers = []
        self.recogniser = self.server("the recognition server", always(200, {}, CARD))
        self.dav = self.server("the CardDAV server", addressbook())
        self.profiles = self.server("the profile service", always(200, {"Content-Type": "application/json"}, PROFILE))
        self.webfinger = self.server("WebFinger", always(200, {"Content-Type": "application/jrd+json"}, JRD))
        self.stranger = self.server("a stranger", always(200, {}, CARD))

    def tearDown(self):
        for server in self.servers:
            server.stop()
        self.temporary.cleanup()

    def server(self, name, answer):
        server = Server(name, answer, self.leaks)
        self.servers.append(server)
        return server

    def secret_file(self, *names):
        file = self.private / names[0].replace(" ", "-").replace("'", "")
        file.write_text("".join(SECRETS[name] + "\n" for name in names), encoding="utf-8")
        return file

    def environment(self, secrets=True):
        clean = {name: value for name, value in os.environ.items() if not name.startswith("QVCARDSCAN_")}
        clean |= {"TMPDIR": str(self.folder / "tmp"), "HOME": str(self.folder / "home")}
        clean.pop("XDG_DATA_HOME", None)
        if not secrets:
            return clean
        return clean | {
            "QVCARDSCAN_TOKEN": SECRETS["recognition token"],
            "QVCARDSCAN_PAGE_KEY": SECRETS["page key"],
            "QVCARDSCAN_CARDDAV_USER": SECRETS["CardDAV user"],
            "QVCARDSCAN_CARDDAV_PASSWORD": SECRETS["CardDAV password"],
            "QVCARDSCAN_PROFILE_SERVICE_KEY": SECRETS["profile service's key"],
            "QVCARDSCAN_SEARCH_KEY": SECRETS["search key"],
            "QVCARDSCAN_SEARCH_SECRET": SECRETS["search secret"],
        }

    def person_options(self, from_files=False):
        """All that is done with the person on a card, with all its services."""
        options = ["--search", "--profile-service", "--profile-service-url", self.profiles.url("")]
        options += ["--webfinger", "--webfinger-url", self.webfinger.url(""), "--save", "--carddav", self.dav.url(BOOK)]
        if from_files:
            options += ["--search-key-file", self.secret_file("search key", "search secret")]
            options += ["--profile-service-key-file", self.secret_file("profile service's key")]
            options += ["--carddav-login-file", self.secret_file("CardDAV user", "CardDAV password")]
        return options

    def server_options(self, from_files=False):
        options = ["--server", self.recogniser.url("/recognise")]
        return options + (["--token-file", self.secret_file("recognition token")] if from_files else [])

    def run_program(self, program, *arguments, environment=None, timeout=300, **more):
        call = [BINARIES / program, *arguments]
        result = subprocess.run(
            [str(word) for word in call], env=environment or self.environment(), capture_output=True, timeout=timeout, **more
        )
        for stream, text in (("output", result.stdout), ("messages", result.stderr)):
            self.leaks.look(f"the {stream} of {program}: {text[-2000:]!r}", text)
        return result

    def expect_no_leak(self):
        """In what was written, and in what each server was sent but for its own secret."""
        self.leaks.look_into_folder(self.folder)
        own = {
            self.recogniser: {"recognition token"},
            self.dav: {"CardDAV user", "CardDAV password"},
            self.profiles: {"profile service's key"},
        }
        for server in self.servers:
            for request in server.requests:
                self.leaks.look(f"a request to {server.name}", request.bytes(), own.get(server, ()))
                # Also its own secret has one place.
                rest = request.path.encode() + b"\n" + request.body
                self.leaks.look(f"the address or body of a request to {server.name}", rest)
        if self.leaks:
            self.fail("\n".join(self.leaks))
