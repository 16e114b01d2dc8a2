"""The program that shows the page, run by the tests, with a stand-in for the recognition server."""

import http.client
import os
import pathlib
import signal
import subprocess
import tempfile
import urllib.parse

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BINARIES = pathlib.Path(os.environ.get("QV_BINARY_DIR", SOURCE / "build/release")) / "bin"
DATA = SOURCE / "Tests/Host/Data"
KEY = "a-key-that-only-the-tests-know"


def answer(name):
    """A recorded answer of the recognition server."""
    return (DATA / name).read_text(encoding="utf-8")


def item(kind, text, frame=(10, 10, 40, 6), orient=0, weight=90):
    """One field of an answer; the text as markup wants it."""
    x, y, width, height = frame
    return (
        f'<item fldType="{kind}" x="{x}" y="{y}" w="{width}" h="{height}" orient="{orient}">'
        f'<t w="{weight}">{text}</t></item>'
    )


def result(*items, width=120, height=70):
    return f'<recoIndex lang="en" objWidth="{width}" objHeight="{height}">{"".join(items)}</recoIndex>'


class Serving:
    """The program, running until `stop`. `folder` holds its address book and what the stand-in is told."""

    def __init__(self, xml=None, mode="", port=0, folder=None, key=None):
        self._owned = tempfile.TemporaryDirectory(prefix="qv-page-", ignore_cleanup_errors=True) if folder is None else None
        self.folder = pathlib.Path(folder or self._owned.name)
        self.book = self.folder / "contacts"
        self.temporary = self.folder / "temporary"
        self.temporary.mkdir(exist_ok=True)
        self.tell(xml if xml is not None else answer("front.xml"), mode)
        environment = {name: value for name, value in os.environ.items() if not name.startswith("QVCARDSCAN_")}
        environment |= {"FAKE_RECOD": str(self.folder), "TMPDIR": str(self.temporary)}
        if key:
            environment["QVCARDSCAN_PAGE_KEY"] = key
        call = [BINARIES / "qvcardscan", "serve", "--port", str(port), "--address-book", self.book]
        call += ["--recognizer", BINARIES / "FakeRecod"]
        self.log = open(self.folder / "log", "a+", encoding="utf-8")
        self.process = subprocess.Popen(call, stdout=subprocess.PIPE, stderr=self.log, text=True, env=environment)
        self.url = self.process.stdout.readline().strip()
        if not self.url:
            raise RuntimeError("serve did not start: " + (self.folder / "log").read_text(encoding="utf-8"))
        self.port = urllib.parse.urlsplit(self.url).port

    def tell(self, xml, mode=""):
        """What the stand-in answers from now on."""
        (self.folder / "answer.xml").write_text(xml, encoding="utf-8")
        if mode:
            (self.folder / "mode").write_text(mode, encoding="utf-8")
        else:
            (self.folder / "mode").unlink(missing_ok=True)

    def end(self, how=signal.SIGTERM):
        """Ends the program; its exit status."""
        if self.process.poll() is None:
            self.process.send_signal(how)
        status = self.process.wait(20)
        self.process.stdout.close()
        return status

    def stop(self):
        self.end(signal.SIGKILL)
        self.log.close()
        if self._owned:
            self._owned.cleanup()

    def messages(self):
        return (self.folder / "log").read_text(encoding="utf-8")

    def ask(self, path, method="GET", body=None, **headers):
        """A request without a browser: status, headers, body. Underscores in names stand for hyphens."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=20)
        connection.request(method, path, body, {name.replace("_", "-"): value for name, value in headers.items()})
        response = connection.getresponse()
        found = response.status, dict(response.getheaders()), response.read()
        connection.close()
        return found

    def enter(self):
        """The folder and the cookie that the printed address leads to."""
        _, headers, _ = self.ask(self.url.split(str(self.port), 1)[1])
        return headers["Location"], headers["Set-Cookie"].split(";")[0]
