"""Writes down what was printed, one line of JSON per picture."""

import json

from .card import bare_name


def entry(name, image, kind, lang, page, rotation=0, **more):
    """The truth of one picture. `rotation` is the number of degrees clockwise that it must be turned to stand upright
    once its EXIF orientation is applied."""
    return {"id": name, "image": image, "kind": kind, "lang": lang, "rotation": rotation, "fields": page.fields,
            **more}


def note_code(fields, person, code):
    """Notes what a QR code says of a person and is not printed: right when it is read, not required (a code may be too
    blurred for anybody)."""
    if not code:
        return
    for one in fields:
        if one["type"] == "name" and bare_name(person.name) != person.name:
            one["alt"] = [bare_name(person.name)]
    pairs = [("email", person.email), ("url", person.url), ("title", person.title)] + list(person.phones)
    printed = {one["text"] for one in fields}
    for kind, text in pairs:
        if text and text not in printed and text.replace(",", "\\,") in code:
            other = {"alt_types": ["phone"]} if kind in ("mobile", "fax") else {}
            fields.append({"type": kind, "text": text, "optional": True, "code": True, **other})


def write(path, entries):
    """All entries, in order."""
    with open(path, "w", encoding="utf-8") as file:
        for item in entries:
            file.write(json.dumps(item, ensure_ascii=False) + "\n")
