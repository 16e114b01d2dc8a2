"""The samples that lie in this folder: fixed people in fixed scenes."""

import os
import zlib
from dataclasses import dataclass
from typing import Optional

import numpy

from . import files, labels, layouts, photograph
from .card import Person
from .light import Glare, HardShadow, Light
from .photograph import Shot
from .style import DARK_PALETTES, LIGHT_PALETTES, Style

LIMIT = 3_400_000  # bytes of one file


@dataclass(frozen=True)
class Sample:
    """One picture: `turn` degrees clockwise bring its pixels upright; with `exif` its orientation tag says so."""

    image: str
    kind: str
    person: Person
    style: Style
    layout: str
    shot: Shot
    mark: int = 0
    turn: int = 0
    exif: bool = False
    quality: int = 88
    seed: Optional[int] = None


CLARA = Person("en", "Clara Whitcombe", "Marketing Manager", "Larkspur Trading Inc.",
               email="clara.whitcombe@larkspur.example.com", url="www.larkspur.example.com",
               address=["418 Larkspur Terrace", "Chicago, IL 60607"],
               phones=[("phone", "(312) 555-0142"), ("mobile", "(773) 555-0118")])
EDMUND = Person("en", "Edmund Hallworth", "Head of Engineering", "Tarn & Vale Instruments Ltd",
                email="edmund.hallworth@tarnvale.example", url="www.tarnvale.example",
                address=["27 Old Foundry Road", "London SE1 9ZZ"],
                phones=[("phone", "+44 20 7946 0318"), ("mobile", "+44 7700 900462"), ("fax", "+44 20 7946 0319")])
BEATRIX = Person("en", "Beatrix Marchbank", "Managing Partner", "Fairwater Consulting LLC",
                 email="b.marchbank@fairwater.example", url="www.fairwater.example",
                 address=["96 Heron Quay, Suite 210", "Seattle, WA 98109"],
                 phones=[("phone", "206-555-0163"), ("fax", "206-555-0164")])
NOOR = Person("en", "Noor Castellane", "Creative Director", "Blue Heron Studio",
              email="noor@blueheron.example.net", url="blueheron.example.net",
              address=["12 Cooper's Lane", "Manchester M4 5ZZ"],
              phones=[("phone", "0161 496 0725"), ("mobile", "07700 900135")])
JUERGEN = Person("de", "Jürgen Größmann", "Geschäftsführer", "Möbelhaus Lüders & Söhne GmbH",
                 email="j.groessmann@lueders.example", url="www.lueders.example",
                 address=["Mühlengasse 17", "50667 Köln"],
                 phones=[("phone", "0221 4710238"), ("fax", "0221 4710239"), ("mobile", "0171 3920046")])
MAEVE = Person("en", "Maeve O'Dellary", "Senior Consultant", "Saltmarsh Energy Ltd",
               email="maeve.odellary@saltmarsh.example", url="www.saltmarsh.example",
               address=["8 Tannery Street", "Leeds LS2 7ZZ"],
               phones=[("phone", "0113 496 0571"), ("mobile", "07700 900814")])
ANNE = Person("en", "Anne-Marie Stavely", "Financial Analyst", "Copperfield Analytics Inc.",
              email="am.stavely@copperfield.example.org", url="www.copperfield.example.org",
              address=["350 West Juniper Avenue", "Boston, MA 02118"],
              phones=[("phone", "617.555.0127"), ("mobile", "857.555.0193")])
HAMISH = Person("en", "Hamish Tolliver", "Product Designer", "Kestrel Point Software",
                email="hamish@kestrelpoint.example.com", url="www.kestrelpoint.example.com",
                address=["40 Old Foundry Road", "Austin, TX 78704"],
                phones=[("phone", "+1 512 555 0176"), ("mobile", "+1 737 555 0109")])
IMOGEN = Person("en", "Imogen Fennimore", "Press Officer", "Juniper Lane Books Ltd", department="Public Affairs",
                email="imogen@juniperlane.example", url="www.juniperlane.example",
                phones=[("phone", "0131 496 0248")], twitter="@imogenfennimore", skype="imogen.fennimore",
                address=["5 Cooper's Lane", "Edinburgh EH3 9ZZ"])

SIDES = Style(LIGHT_PALETTES[0], "Lato", "Lato", body_size=3.4, name_size=5.6, width=85, height=55)

SAMPLES = (
    Sample("plain.jpg", "photo", CLARA, Style(LIGHT_PALETTES[0], "Carlito", "Carlito", name_size=5.4, body_size=3.2),
           "classic", Shot(2048, 1365, 0.88, roll=0.6, background="paper",
                           light=Light(0.97, 0.10, 25, 0.06, (1.0, 0.99, 0.97)), grain=1.3), mark=1),
    Sample("two-sided-front.jpg", "photo", EDMUND.without("email", "url", "address", "phones"), SIDES, "title_side",
           Shot(4000, 3000, 0.82, pitch=5, yaw=-4, roll=-1.5, background="wood",
                light=Light(0.97, 0.22, 200, 0.15, (1.0, 0.98, 0.94)), grain=2.2), mark=3),
    Sample("two-sided-back.jpg", "photo", EDMUND, SIDES, "contact_side",
           Shot(4000, 3000, 0.82, pitch=4, yaw=3, roll=1.2, background="wood",
                light=Light(0.97, 0.22, 200, 0.15, (1.0, 0.98, 0.94)), grain=2.2), seed=77),
    Sample("rotated.jpg", "photo-turned", BEATRIX,
           Style(LIGHT_PALETTES[2], "Liberation Serif", "Liberation Sans", name_size=5.4, body_size=2.9), "split",
           Shot(2000, 1400, 0.88, roll=-1.0, background="cloth", light=Light(0.95, 0.16, 120, 0.10), grain=1.6),
           mark=4, turn=90),
    Sample("dark.jpg", "photo-dark", NOOR,
           Style(DARK_PALETTES[0], "Lato", "Lato", labels="letter", separator="  ", name_size=5.2, body_size=2.9,
                 upper_name=True, width=85, height=55),
           "right", Shot(2000, 1333, 0.88, pitch=3, roll=1.2, background="paper",
                         light=Light(0.98, 0.16, 40, 0.10), grain=2.0), mark=0),
    Sample("german.jpg", "photo", JUERGEN, Style(LIGHT_PALETTES[1], "Open Sans", "Open Sans", body_size=2.75),
           "band", Shot(2048, 1365, 0.90, pitch=2, yaw=2, roll=-0.8, background="leather",
                        light=Light(0.98, 0.15, 330, 0.10, (1.0, 0.98, 0.93)), grain=1.8), mark=2),
    Sample("phone-exif.jpg", "photo-tilted", MAEVE,
           Style(LIGHT_PALETTES[5], "Roboto", "Roboto", body_size=3.2, name_size=5.2, rounded=True), "corner",
           Shot(3264, 2448, 0.84, pitch=10, yaw=-6, roll=2, shift=(0.01, 0.0), background="wood",
                light=Light(0.96, 0.40, 150, 0.25, (1.0, 0.95, 0.86),
                            shadow=HardShadow((0.95, 0.15), 62, 0.35, 0.015)), blur=0.3, grain=2.6),
           mark=1, turn=90, exif=True),
    Sample("card.png", "flat", ANNE, Style(LIGHT_PALETTES[3], "EB Garamond", "Open Sans", name_size=5.6),
           "columns", Shot(1280, 800, 0.93, roll=-0.4, background="paper", light=Light(0.98, 0.06, 70, 0.03),
                           grain=0.7)),
    Sample("card.webp", "photo", HAMISH, Style(LIGHT_PALETTES[4], "DejaVu Sans", "DejaVu Sans", body_size=2.6,
                                               name_size=4.6),
           "coded", Shot(2048, 1365, 0.90, pitch=-4, yaw=4, roll=1.5, background="cloth",
                         light=Light(0.97, 0.20, 300, 0.12), grain=1.6), mark=3),
    Sample("social.jpg", "photo", IMOGEN, Style(LIGHT_PALETTES[3], "Lato", "Lato", body_size=2.9, name_size=4.8),
           "panel", Shot(2048, 1365, 0.90, pitch=3, yaw=-5, roll=-1.4, background="wood",
                         light=Light(0.94, 0.22, 20, 0.14, glare=Glare((0.93, 0.12), (0.10, 0.06), 35, 0.16)),
                         grain=1.8), mark=4),
)


def make(folder, only=()):
    """Writes the samples (or only those whose names are given) and, when all are made, truth.jsonl."""
    entries = []
    for sample in SAMPLES:
        if not only or sample.image in only:
            entries.append(_make(sample, folder))
    if not only:
        labels.write(os.path.join(folder, "truth.jsonl"), entries)


def _make(sample, folder):
    shot, style = sample.shot, sample.style
    quad = photograph.corners(shot, style.width, style.height)
    page = layouts.printed(sample.layout, sample.person, style, photograph.print_scale(quad, style.width), sample.mark)
    random = numpy.random.default_rng(sample.seed or zlib.crc32(sample.image.encode()))
    picture = files.turned(photograph.take(page, quad, shot, random), sample.turn)
    _save(picture, sample, os.path.join(folder, sample.image))
    name = sample.image.rsplit(".", 1)[0] if sample.image.endswith(".jpg") else sample.image.replace(".", "-")
    return labels.entry(name, sample.image, sample.kind, sample.person.lang, page, 0 if sample.exif else sample.turn)


def _save(picture, sample, path):
    if path.endswith(".png"):
        picture.save(path, optimize=True)
    elif path.endswith(".webp"):
        picture.save(path, quality=sample.quality, method=6)
    else:
        files.save_jpeg(picture, path, sample.quality, LIMIT, sample.turn if sample.exif else None)
