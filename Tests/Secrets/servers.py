"""Servers that remember all they are sent, and look meanwhile at what everybody can see of processes."""

import contextlib
import http.server
import os
import pathlib
import re
import socket
import threading


def processes():
    """What everybody on the machine can read of every process, and the environment of all but the tested program's."""
    for folder in pathlib.Path("/proc").iterdir():
        if not folder.name.isdigit():
            continue
        try:
            yield f"the arguments of process {folder.name}", (folder / "cmdline").read_bytes()
            if os.readlink(folder / "exe").endswith("/qvcardscan"):
                continue
            yield f"the environment of process {folder.name}", (folder / "environ").read_bytes()
        except OSError:
            continue  # it has ended, or belongs to somebody else


class Request:
    def __init__(self, handler, body):
        self.method, self.path = handler.command, handler.path
        self.headers = handler.headers
        self.body = body

    def bytes(self):
        return f"{self.method} {self.path}\n{self.headers}\n".encode() + self.body

    def header(self, name):
        return self.headers.get(name)


class Server:
    """Answers as `answer(request)` says: a status, headers and a body. None ends the connection without an answer."""

    def __init__(self, name, answer, leaks):
        self.name, self.answer, self.leaks = name, answer, leaks
        self.requests, self.connections = [], []
        self.lock = threading.Lock()
        outer = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def handle_one_request(self):
                self.raw_requestline = self.rfile.readline(65537)
                if not self.raw_requestline or not self.parse_request():
                    self.close_connection = True
                    return
                outer.serve(self)

            def setup(self):
                super().setup()
                with outer.lock:
                    outer.connections.append(self.connection)

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.thread = threading.Thread(target=self.server.serve_forever, kwargs={"poll_interval": 0.05})
        self.thread.start()

    def serve(self, handler):
        body = handler.rfile.read(int(handler.headers.get("Content-Length") or 0))
        request = Request(handler, body)
        with self.lock:
            self.requests.append(request)
            for where, data in processes():
                self.leaks.look(where, data)
        answer = self.answer(request)
        if answer is None:
            handler.close_connection = True
            return
        status, headers, text = answer
        data = text if isinstance(text, bytes) else text.encode()
        handler.send_response_only(status)
        for name, value in headers.items():
            handler.send_header(name, value)
        handler.send_header("Content-Length", str(len(data)))
        handler.end_headers()
        try:
            handler.wfile.write(data)
        except ConnectionError:
            handler.close_connection = True  # whoever asked has ended

    def url(self, path="/"):
        return f"http://127.0.0.1:{self.server.server_address[1]}{path}"

    def stop(self):
        self.server.shutdown()
        self.thread.join()
        with self.lock:
            for connection in self.connections:
                with contextlib.suppress(OSError):
                    connection.shutdown(socket.SHUT_RDWR)
        self.server.server_close()


MULTISTATUS = '<?xml version="1.0"?><d:multistatus xmlns:d="DAV:" xmlns:c="urn:ietf:params:xml:ns:carddav">{}</d:multistatus>'
FOUND = (
    "<d:response><d:href>{}</d:href><d:propstat><d:prop>{}</d:prop><d:status>HTTP/1.1 200 OK</d:status>"
    "</d:propstat></d:response>"
)
BOOK = "/dav/books/ada/contacts/"


def addressbook():
    """A small CardDAV server's answers; what is put is kept."""
    cards = {}

    def answer(request):
        if request.header("Authorization") is None:
            return 401, {"WWW-Authenticate": 'Basic realm="cards"'}, "Who is it?"
        if request.method == "PUT":
            known = request.path in cards
            cards[request.path] = request.body.decode()
            return 204 if known else 201, {"ETag": f'"{len(cards[request.path])}"'}, ""
        if request.method == "GET":
            return (200, {"Content-Type": "text/vcard"}, cards[request.path]) if request.path in cards else (404, {}, "")
        if request.method == "PROPFIND":
            found = FOUND.format(BOOK, "<d:resourcetype><d:collection/><c:addressbook/></d:resourcetype>")
        else:
            address = re.search(r"text-match[^>]*>([^<]*)<", request.body.decode())
            matching = [p for p, card in cards.items() if address and address[1].lower() in card.lower()]
            found = "".join(
                FOUND.format(p, f'<d:getetag>"{len(cards[p])}"</d:getetag><c:address-data>{cards[p]}</c:address-data>')
                for p in matching
            )
        return 207, {"Content-Type": "application/xml"}, MULTISTATUS.format(found)

    return answer


def always(status, headers=None, body=""):
    return lambda request: (status, headers or {}, body)
