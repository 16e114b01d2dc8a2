"""Writes down what was printed, one line of JSON per picture."""

import json


def entry(name, image, kind, lang, page, rotation=0, **more):
    """The truth of one picture. `rotation` is the number of degrees clockwise that it must be turned to stand upright
    once its EXIF orientation is applied."""
    return {"id": name, "image": image, "kind": kind, "lang": lang, "rotation": rotation, "fields": page.fields,
            **more}


def write(path, entries):
    """All entries, in order."""
    with open(path, "w", encoding="utf-8") as file:
        for item in entries:
            file.write(json.dumps(item, ensure_ascii=False) + "\n")
