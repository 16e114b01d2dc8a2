"""The recognition server as a child process."""

import http.client
import os
import secrets
import subprocess
import time

TICKS = os.sysconf("SC_CLK_TCK")


class Server:
    """One server with one worker, so that what it costs can be told. Ends with the `with` block it is opened in, or
    with this process, however that ends."""

    def __init__(self, program, arguments=()):
        self.command = [program, "--embedded", "--workers", "1", "--quiet", *arguments]
        self.token = secrets.token_hex(16)

    def __enter__(self):
        self.process = subprocess.Popen(self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.process.stdin.write(self.token.encode() + b"\n")
        self.process.stdin.flush()
        line = self.process.stdout.readline().decode()
        if not line.startswith("port "):
            self.process.wait()
            raise SystemExit("measure: the recognition server did not start")
        self.port = int(line.split()[1])
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait()

    def read(self, picture, language):
        """Posts a picture as the library does: (status, body, seconds, the processor's seconds)."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=120)
        busy, start = self._processor_seconds(), time.monotonic()
        connection.request("POST", "/", picture, {"content-language": language, "Content-Type": "image/jpeg",
                                                  "auth": self.token})
        response = connection.getresponse()
        body = response.read()
        connection.close()
        return response.status, body, time.monotonic() - start, self._processor_seconds() - busy

    def peak_memory(self):
        """The most memory that the process ever held, in MiB; None when it has ended by itself."""
        with open("/proc/%d/status" % self.process.pid, encoding="ascii", errors="replace") as file:
            return next((int(line.split()[1]) / 1024 for line in file if line.startswith("VmHWM:")), None)

    def _processor_seconds(self):
        """What all its threads have used: time on one core, whatever else the machine does (proc(5), stat)."""
        with open("/proc/%d/stat" % self.process.pid, encoding="ascii", errors="replace") as file:
            user, system = file.read().rpartition(")")[2].split()[11:13]
        return (int(user) + int(system)) / TICKS
