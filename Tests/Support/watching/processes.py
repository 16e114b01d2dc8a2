"""What the system says of a process (proc(5)), and programs that are started to be watched."""

import dataclasses
import os
import subprocess


@dataclasses.dataclass(frozen=True)
class Look:
    """One look at a process: memory in KiB, and how many threads and open descriptors it has."""

    resident: int
    proportional: int
    threads: int
    descriptors: int


def look(pid):
    """How the process is now."""
    return Look(resident=_kibibytes("/proc/%d/status" % pid, "VmRSS:"),
                proportional=_kibibytes("/proc/%d/smaps_rollup" % pid, "Pss:"),
                threads=len(os.listdir("/proc/%d/task" % pid)),
                descriptors=len(os.listdir("/proc/%d/fd" % pid)))


def _kibibytes(path, key):
    with open(path, encoding="ascii", errors="replace") as file:
        return next(int(line.split()[1]) for line in file if line.startswith(key))


def session_members(session):
    """The processes of a session, those that have ended and were not waited for too."""
    members = []
    for name in os.listdir("/proc"):
        if not name.isdigit():
            continue
        try:
            with open("/proc/%s/stat" % name, encoding="ascii", errors="replace") as file:
                fields = file.read().rpartition(")")[2].split()
        except OSError:
            continue
        if int(fields[3]) == session:
            members.append(int(name))
    return members


class Server:
    """A server that prints "port N" when it listens. Leads a session of its own, so that its children can be told.
    Ends with the `with` block it is opened in."""

    def __init__(self, command, log=None):
        self._command = command
        self._log = log

    def __enter__(self):
        self.process = subprocess.Popen(self._command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self._log,
                                        start_new_session=True)
        line = self.process.stdout.readline().decode()
        if not line.startswith("port "):
            self.process.kill()
            self.process.wait()
            raise SystemExit("%s did not start" % self._command[0])
        self.port = int(line.split()[1])
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(timeout=60)
            except subprocess.TimeoutExpired:
                self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    @property
    def pid(self):
        return self.process.pid
