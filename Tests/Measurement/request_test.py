"""What is measured is what the library sends."""

import hashlib
import http.server
import os
import subprocess
import tempfile
import threading
import unittest

PROGRAMS = os.environ.get("QV_PROGRAMS", "")
SAMPLES = os.environ.get("QV_SAMPLES", "")


class _Recorder(http.server.BaseHTTPRequestHandler):
    """Keeps what is posted and answers that nothing was found."""

    def do_POST(self):
        self.server.bodies.append(self.rfile.read(int(self.headers["Content-Length"])))
        answer = b'<recoIndex lang="en" objWidth="1" objHeight="1"></recoIndex>'
        self.send_response(200)
        self.send_header("Content-Length", str(len(answer)))
        self.end_headers()
        self.wfile.write(answer)

    def log_message(self, *_):
        pass


def request(turn, picture):
    return subprocess.run([os.path.join(PROGRAMS, "cardrequest"), str(turn), picture], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)


def sent_by_the_library(picture):
    with http.server.HTTPServer(("127.0.0.1", 0), _Recorder) as server:
        server.bodies = []
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        subprocess.run([os.path.join(PROGRAMS, "qvcardscan"), "scan", picture, "--json", "--server",
                        "http://127.0.0.1:%d/" % server.server_port], stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False, env={**os.environ, "QVCARDSCAN_TOKEN": "any"})
        server.shutdown()
        thread.join()
        return server.bodies


def digest(data):
    return hashlib.sha256(data).hexdigest()


def size(jpeg):
    """Width and height out of a baseline JPEG's frame header (ITU T.81, B.2.2)."""
    at = jpeg.index(b"\xff\xc0")
    return int.from_bytes(jpeg[at + 7:at + 9], "big"), int.from_bytes(jpeg[at + 5:at + 7], "big")


class Requests(unittest.TestCase):
    def test_same_as_the_library(self):
        for name in ("german.jpg", "phone-exif.jpg", "card.png", "card.webp"):
            with self.subTest(name=name):
                path = os.path.join(SAMPLES, name)
                self.assertEqual([digest(request(0, path).stdout)], list(map(digest, sent_by_the_library(path))))

    def test_turns(self):
        path = os.path.join(SAMPLES, "card.png")
        self.assertEqual([size(request(turn, path).stdout) for turn in (0, 90, 180, 270)],
                         [(1024, 640), (640, 1024), (1024, 640), (640, 1024)])

    def test_no_picture(self):
        with tempfile.NamedTemporaryFile() as empty:
            self.assertEqual(request(0, empty.name).returncode, 1)
        self.assertEqual(request(0, "/no/such/file").returncode, 1)
        self.assertEqual(request(45, os.path.join(SAMPLES, "card.png")).returncode, 2)


if __name__ == "__main__":
    unittest.main()
