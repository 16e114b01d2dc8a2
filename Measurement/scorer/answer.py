"""What a recognition server answered."""

import xml.sax
from dataclasses import dataclass, field
from typing import List

KINDS = ("name", "title", "company", "department", "address", "phone", "mobile", "fax", "email", "url", "twitter",
         "skype")
OTHER_NAMES = {"web": "url"}


@dataclass
class Item:
    """One field that was read. `weight` is the reader's estimate of the chance that it is right, in per cent."""

    kind: str
    text: str
    weight: int = 0
    orient: int = 0


@dataclass
class Answer:
    """The fields of one picture; `problem` says why there is no answer."""

    items: List[Item] = field(default_factory=list)
    problem: str = ""

    @property
    def orient(self):
        """Degrees clockwise to upright; None when nothing was read."""
        return self.items[-1].orient if self.items else None


def parse(body):
    """The answer in a body of XML (bytes)."""
    reader = _Reader()
    try:
        xml.sax.parseString(body, reader)
    except xml.sax.SAXParseException as problem:
        return Answer(problem="not readable: %s" % problem)
    for item in reader.items:
        item.text = " ".join(item.text.split())
    return Answer(reader.items)


class _Reader(xml.sax.ContentHandler):
    """A field's text is all text from its start tag to that of the next field."""

    def __init__(self):
        super().__init__()
        self.items = []

    def startElement(self, name, attrs):
        if name == "item":
            kind = attrs.get("fldType", "").lower()
            self.items.append(Item(OTHER_NAMES.get(kind, kind), "", 0, _whole(attrs.get("orient", "0"))))
        elif name == "t" and self.items and "w" in attrs:
            self.items[-1].weight = _whole(attrs["w"])

    def characters(self, content):
        if self.items:
            self.items[-1].text += content


def _whole(text):
    try:
        return int(float(text))
    except ValueError:
        return 0
