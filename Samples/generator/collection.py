"""Many cards by chance, in four groups of pictures, for measuring a reader of cards."""

import os
import random as chance
from dataclasses import dataclass, replace

import numpy

from . import backgrounds, files, fonts, labels, layouts, people, photograph, qrcode, style, things
from .card import Person, mecard, vcard
from .light import Glare, HardShadow, Light
from .photograph import Shot

GROUPS = ("flat", "tilted", "badly-lit", "turned")
TWO_SIDED_SHARE = 0.15
DARK_SHARE = 0.2
HIDDEN_SHARE = 0.5  # of the QR codes: those that say more than the print
TRIAL_SCALE = 10.0  # pixels per millimetre, enough to see whether a card is crowded


def make(folder, count, seed, part="all"):
    """`count` cards (a card with two sides is two pictures) and labels.jsonl. A card depends on seed, part and its
    number only, so a longer run begins with the cards of a shorter one."""
    os.makedirs(folder, exist_ok=True)
    entries = []
    for number in range(count):
        entries += _card(folder, number, chance.Random("%s/%s/%d" % (seed, part, number)), part)
    labels.write(os.path.join(folder, "labels.jsonl"), entries)
    return entries


@dataclass(frozen=True)
class _Side:
    """One side of a card, ready to be printed."""

    suffix: str
    person: Person
    layout: str
    look: style.Style
    mark: int
    whole: Person = None  # everything that is known, when a code says more than the print
    code: str = None

    def printed(self, scale):
        return layouts.printed(self.layout, self.person, self.look, scale, self.mark, self.code)


def _card(folder, number, rng, part):
    group = GROUPS[number % len(GROUPS)]
    return [_picture(folder, "%s-%04d%s" % (group, number, side.suffix), group, rng, side)
            for side in _sides(rng, part)]


def _sides(rng, part):
    """Sides by chance, again until everything finds room."""
    two_sided, dark = rng.random() < TWO_SIDED_SHARE, rng.random() < DARK_SHARE
    while True:
        sides = _any_sides(rng, part, two_sided, dark)
        if not any(side.printed(TRIAL_SCALE).crowded() for side in sides):
            return sides


def _any_sides(rng, part, two_sided, dark):
    person, look = people.invent(rng), style.invent(rng, style.families(part), dark)
    mark = rng.randrange(100)
    if not two_sided:
        layout = rng.choice(layouts.names(part))
        if layout in layouts.CODED:
            return [_coded(rng, person, layout, look, mark)]
        return [_Side("", person, layout, layouts.fitting(layout, look), mark)]
    front = person.without("email", "url", "address", "phones", "twitter", "skype")
    return [_Side("-front", front, "title_side", look, mark), _Side("-back", person, "contact_side", look, mark)]


def _coded(rng, person, layout, look, mark):
    """A side with a QR code, which may hold what is not printed."""
    hidden = rng.choice(("url", "email", "phones")) if rng.random() < HIDDEN_SHARE else None
    code = mecard(person)
    if rng.random() < 0.5 or len(code.encode()) > qrcode.MOST_BYTES:
        code = vcard(person, qrcode.MOST_BYTES)
    printed = person.without(hidden) if hidden else person
    return _Side("", printed, layout, look, mark, person, code)


def _picture(folder, name, group, rng, side):
    (shot, turn, exif), look = _shot(group, rng), side.look
    if look.height > look.width:  # whoever photographs such a card holds the camera upright
        shot = replace(shot, width=shot.height, height=shot.width)
    quad = photograph.corners(shot, look.width, look.height)
    page = side.printed(photograph.print_scale(quad, look.width))
    picture = photograph.take(page, quad, shot, numpy.random.default_rng(rng.getrandbits(63)))
    files.save_jpeg(files.turned(picture, turn), os.path.join(folder, name + ".jpg"), rng.randint(72, 93),
                    exif_turn=turn if exif else None)
    labels.note_code(page.fields, side.whole, page.code)
    kind = group + ("-dark" if look.palette in style.DARK_PALETTES else "")
    return labels.entry(name, name + ".jpg", kind, side.person.lang, page, 0 if exif else turn, **_origin(side, page))


def _origin(side, page):
    """What else is worth knowing about a picture when results are looked at."""
    faces = [side.look.heading, side.look.body]
    held_out = side.layout in layouts.HELD_OUT or any(face in fonts.HELD_OUT for face in faces)
    more = {"code": page.code} if page.code else {}
    return {"layout": side.layout, "fonts": faces, "held_out": held_out, "printed": page.printed, **more}


def _shot(group, rng):
    """The shot of a group, the turn of its pixels and whether EXIF tells of it."""
    width, height = rng.choice(((1600, 1200), (2048, 1536), (2000, 1333), (1920, 1080)))
    options = {"background": rng.choice(sorted(backgrounds.BACKGROUNDS)), "fill": _fill(rng),
               "roll": rng.uniform(-2, 2), "blur": rng.uniform(0.15, 0.4), "grain": rng.uniform(0.8, 2.5),
               "light": _soft_light(rng), "things": _things(rng), "held": rng.random() < 0.08}
    if group in ("tilted", "turned"):
        reach = 18 if group == "tilted" else 6
        options.update(pitch=rng.uniform(-reach, reach), yaw=rng.uniform(-reach, reach),
                       roll=rng.uniform(-12, 12) if group == "tilted" else rng.uniform(-4, 4))
    if group == "badly-lit":
        options.update(light=_bad_light(rng), grain=rng.uniform(2.5, 7), blur=rng.uniform(0.2, 0.6),
                       motion=rng.choice((0, 0, 0, 0.6)), pitch=rng.uniform(-5, 5), yaw=rng.uniform(-5, 5))
    turn = rng.choice((90, 180, 270)) if group == "turned" else 0
    return Shot(width, height, **options), turn, group == "turned" and rng.random() < 0.3


def _fill(rng):
    """How much of the picture a card takes: most of it, now and then less."""
    return rng.uniform(0.62, 0.76) if rng.random() < 0.2 else rng.uniform(0.76, 0.93)


def _things(rng):
    return tuple(rng.sample(sorted(things.THINGS), rng.choice((1, 1, 2)))) if rng.random() < 0.3 else ()


def _soft_light(rng):
    return Light(rng.uniform(0.85, 1.0), rng.uniform(0.03, 0.25), rng.uniform(0, 360), rng.uniform(0.02, 0.15),
                 (1.0, rng.uniform(0.95, 1.0), rng.uniform(0.86, 1.0)))


def _bad_light(rng):
    shadow = glare = None
    kind = rng.choice(("shadow", "glare", "gradient", "both"))
    if kind in ("shadow", "both"):
        shadow = HardShadow((rng.uniform(0.3, 0.7), rng.uniform(0.3, 0.7)), rng.uniform(0, 360),
                            rng.uniform(0.35, 0.65), rng.uniform(0.002, 0.02))
    if kind in ("glare", "both"):
        glare = Glare((rng.uniform(0.2, 0.8), rng.uniform(0.2, 0.8)), (rng.uniform(0.06, 0.2), rng.uniform(0.04, 0.1)),
                      rng.uniform(0, 180), rng.uniform(0.15, 0.45))
    return Light(rng.uniform(0.35, 0.9), rng.uniform(0.3, 0.7), rng.uniform(0, 360), rng.uniform(0.1, 0.35),
                 (1.0, rng.uniform(0.88, 1.0), rng.uniform(0.7, 1.0)), shadow, glare)
