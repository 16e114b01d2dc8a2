"""What can stand on a card: the person's data, before anything is printed."""

from dataclasses import dataclass, field
from typing import List, Optional, Tuple


@dataclass
class Person:
    """One invented person. `phones` holds (kind, number) pairs in the order in which they are printed."""

    lang: str
    name: str
    title: str
    company: str
    email: Optional[str] = None
    url: Optional[str] = None
    department: Optional[str] = None
    tagline: Optional[str] = None
    address: List[str] = field(default_factory=list)
    phones: List[Tuple[str, str]] = field(default_factory=list)
    twitter: Optional[str] = None
    skype: Optional[str] = None

    def without(self, *names):
        """A copy that lacks the named attributes: the other side of the card carries them."""
        absent = {"address": [], "phones": []}
        kept = {**self.__dict__, **{name: absent.get(name) for name in names}}
        return Person(**kept)


def mecard(person):
    """The person as the text of a QR code (the MECARD form: N, ORG, TEL, EMAIL, URL, each ended by `;`)."""
    given, _, family = bare_name(person.name).rpartition(" ")
    entries = ["N:%s,%s" % (_escaped(family), _escaped(given)), "ORG:" + _escaped(person.company)]
    entries += ["TEL:" + _escaped(number) for kind, number in person.phones if kind != "fax"]
    entries += [kind.upper() + ":" + _escaped(getattr(person, kind)) for kind in ("email", "url")
                if getattr(person, kind)]
    return "MECARD:" + ";".join(entries) + ";;"


TYPES = {"phone": "WORK,VOICE", "mobile": "CELL", "fax": "FAX"}


def vcard(person, limit):
    """The same as a vCard 3.0 (RFC 2426) of at most so many bytes: what finds no room is left out."""
    given, _, family = bare_name(person.name).rpartition(" ")
    lines = ["BEGIN:VCARD", "VERSION:3.0", "N:%s;%s" % (_escaped(family), _escaped(given))]
    more = [("TEL;TYPE=%s:" % TYPES[kind]) + number for kind, number in person.phones]
    more += ["EMAIL:" + person.email] if person.email else []
    more += ["ORG:" + _escaped(person.company)]
    more += ["URL:" + person.url] if person.url else []
    more += ["TITLE:" + _escaped(person.title)]
    for line in more:
        if len("\r\n".join(lines + [line, "END:VCARD"]).encode()) + 2 <= limit:
            lines.append(line)
    return "\r\n".join(lines + ["END:VCARD", ""])


def bare_name(name):
    """A name without degrees."""
    words = [word for word in name.partition(",")[0].split() if not word.endswith(".") and word not in ("dr", "mgr")]
    return " ".join(words)


def _escaped(text):
    return "".join("\\" + c if c in "\\;:," else c for c in text)
