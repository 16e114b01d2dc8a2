"""HTTP by hand, because half of the clients do it wrong on purpose."""

import select
import socket
import struct

PATIENCE = 180  # seconds after which a client says that it hangs; the server's own limits are far below


class Broken(Exception):
    """The connection ended, or the server said nothing, before the answer was whole; `received` is how much came."""

    def __init__(self, why, received):
        super().__init__("%s after %d bytes of the answer" % (why, received))
        self.received = received


class Answer:
    """A whole answer."""

    def __init__(self, head, body):
        lines = head.decode("latin-1").split("\r\n")
        self.status = int(lines[0].split()[1])
        self.headers = {name.strip().lower(): value.strip()
                        for name, _, value in (line.partition(":") for line in lines[1:] if line)}
        self.body = body


class Line:
    """A connection to the server."""

    def __init__(self, port):
        self._socket = socket.create_connection(("127.0.0.1", port), timeout=PATIENCE)
        self._received = b""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def send(self, data):
        """False when the server does not listen any more."""
        try:
            self._socket.sendall(data)
        except OSError:
            return False
        return True

    def _fill(self, enough):
        while not enough(self._received):
            try:
                data = self._socket.recv(65536)
            except OSError as problem:
                raise Broken(type(problem).__name__, len(self._received)) from None
            if not data:
                raise Broken("the connection ended", len(self._received))
            self._received += data

    def answer(self):
        """The next whole answer; raises `Broken`."""
        self._fill(lambda data: b"\r\n\r\n" in data)
        head, _, rest = self._received.partition(b"\r\n\r\n")
        answer = Answer(head, b"")
        length = int(answer.headers.get("content-length", "0"))
        self._fill(lambda data: len(data) >= len(head) + 4 + length)
        answer.body, self._received = self._received[len(head) + 4:][:length], self._received[len(head) + 4 + length:]
        return answer

    def has_answer(self):
        """Waits until something can be read, without reading it."""
        try:
            return bool(self._socket.recv(1, socket.MSG_PEEK))
        except OSError:
            return False

    def ends_within(self, seconds):
        """Whether the server has closed, or closes within that time."""
        ready, _, _ = select.select([self._socket], [], [], seconds)
        return bool(ready) and not self.has_answer()

    def reset(self):
        """Ends it so that the server's next byte meets a reset."""
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self._socket.close()

    def close(self):
        self._socket.close()


def request(token, body=b"", method="POST", path="/", headers=""):
    """A request as the library makes it."""
    return ("%s %s HTTP/1.1\r\nHost: localhost\r\ncontent-language: en\r\nContent-Type: image/jpeg\r\nauth: %s\r\n%s"
            "Content-Length: %d\r\n\r\n" % (method, path, token, headers, len(body))).encode() + body


def get(port, path):
    """The answer to one question of its own connection."""
    with Line(port) as line:
        line.send(("GET %s HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n" % path).encode())
        return line.answer()
