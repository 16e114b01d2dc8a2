"""Marked secrets, and the search for them in whatever form they may have leaked."""

import base64
import io
import json
import secrets
import urllib.parse
import zipfile
from html import escape



def marked(word, special='"<&+/%'):
    """New each time, so that no other run of these tests is found; with the characters that encodings change, and with
    ends of its own, so that a part is found too."""
    return f"{secrets.token_hex(4)}{special}{word}={secrets.token_hex(4)}"


SECRETS = {
    "recognition token": marked("recognition-Token"),
    "page key": marked("PageKeyThatNobodyHas", "_-").replace("=", "_"),
    "CardDAV user": marked("marked@dav.example", "+"),
    "CardDAV password": marked("carddav-Password"),
    "profile service's key": marked("Profile-service-Key", "+/="),
    "search key": marked("search-Key"),
    "search secret": marked("search-Secret"),
    "another server's token": marked("wrong-Token"),
}

PART = 12


def pieces(secret):
    """Both ends: whoever cuts a secret short leaks it as well."""
    text = secret.encode()
    return {text[:PART], text[-PART:]}


def in_base64(piece):
    """However many bytes stood before it: the characters that depend on its neighbours are left out."""
    for before in range(3):
        coded = base64.b64encode(b"\0" * before + piece)
        first = -(-before * 8 // 6)
        last = (before + len(piece)) * 8 // 6
        yield coded[first:last]
        yield coded[first:last].replace(b"+", b"-").replace(b"/", b"_")


def forms(secret):
    """All that gives the secret, or an end of it, away."""
    for piece in pieces(secret):
        text = piece.decode()
        yield piece
        yield from in_base64(piece)
        for safe in ("", "/", "-._~/+@=:"):
            quoted = urllib.parse.quote(text, safe=safe)
            yield quoted.encode()
            yield quoted.lower().encode()
            yield urllib.parse.quote_plus(text, safe=safe).encode()
        yield piece.hex().encode()
        yield piece.hex().upper().encode()
        yield json.dumps(text)[1:-1].encode()
        yield json.dumps(text)[1:-1].replace("/", "\\/").encode()
        for quote in (True, False):
            yield escape(text, quote).encode()
        yield escape(text).replace("&quot;", "&#34;").encode()
        yield text.encode("utf-16-le")


FORMS = {name: set(forms(secret)) for name, secret in SECRETS.items()}


def contents(data):
    """The bytes, and what is packed up in them."""
    yield data
    if data[:2] == b"PK":
        with zipfile.ZipFile(io.BytesIO(data)) as archive:
            for member in archive.namelist():
                yield member.encode()
                yield from contents(archive.read(member))


def found_in(data):
    """The names of the secrets that the bytes give away."""
    if isinstance(data, str):
        data = data.encode()
    texts = list(contents(data))
    return {name for name, known in FORMS.items() if any(form in text for form in known for text in texts)}


class Leaks(list):
    """What was found where, and should not be there."""

    def look(self, where, data, allowed=()):
        for name in sorted(found_in(data) - set(allowed)):
            self.append(f"{name} in {where}")

    def look_into_folder(self, folder, allowed=()):
        """Names and contents of everything below; how many files that was."""
        count = 0
        for path in sorted(folder.rglob("*")):
            self.look(f"the name {path}", str(path.relative_to(folder)), allowed)
            if path.is_file():
                self.look(str(path), path.read_bytes(), allowed)
                count += 1
        return count
