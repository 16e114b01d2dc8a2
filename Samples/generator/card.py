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
    given, _, family = person.name.rpartition(" ")
    entries = ["N:%s,%s" % (_escaped(family), _escaped(given)), "ORG:" + _escaped(person.company)]
    entries += ["TEL:" + _escaped(number) for kind, number in person.phones if kind != "fax"]
    entries += [kind.upper() + ":" + _escaped(getattr(person, kind)) for kind in ("email", "url")
                if getattr(person, kind)]
    return "MECARD:" + ";".join(entries) + ";;"


def _escaped(text):
    return "".join("\\" + c if c in "\\;:," else c for c in text)
