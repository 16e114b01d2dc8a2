"""Many cards by chance, in four groups of pictures, for measuring a reader of cards."""

import os
import random as chance

import numpy

from . import backgrounds, files, labels, layouts, people, photograph, style
from .light import Glare, HardShadow, Light
from .page import Page
from .photograph import Shot

GROUPS = ("flat", "tilted", "badly-lit", "turned")
TWO_SIDED_SHARE = 0.15
DARK_SHARE = 0.2


def make(folder, count, seed, part="all"):
    """`count` cards (a card with two sides is two pictures) and labels.jsonl. A card depends on seed, part and its
    number only, so a longer run begins with the cards of a shorter one."""
    os.makedirs(folder, exist_ok=True)
    entries = []
    for number in range(count):
        entries += _card(folder, number, chance.Random("%s/%s/%d" % (seed, part, number)), part)
        labels.write(os.path.join(folder, "labels.jsonl"), entries)
    return entries


def _card(folder, number, rng, part):
    group = GROUPS[number % len(GROUPS)]
    person, look = people.invent(rng), style.invent(rng, style.families(part), rng.random() < DARK_SHARE)
    if rng.random() < TWO_SIDED_SHARE:
        front = person.without("email", "url", "address", "phones", "twitter", "skype")
        sides = [("-front", front, "title_side"), ("-back", person, "contact_side")]
    else:
        sides = [("", person, rng.choice(layouts.names(part)))]
    mark = rng.randrange(100)
    return [_picture(folder, "%s-%04d%s" % (group, number, suffix), group, rng, side, look, layout, mark)
            for suffix, side, layout in sides]


def _picture(folder, name, group, rng, person, look, layout, mark):
    shot, turn, exif = _shot(group, rng)
    quad = photograph.corners(shot, look.width, look.height)
    page = Page(look, photograph.print_scale(quad, look.width))
    {**layouts.LAYOUTS, **layouts.SIDES}[layout](page, person, mark)
    picture = photograph.take(page, quad, shot, numpy.random.default_rng(rng.getrandbits(63)))
    image = name + ".jpg"
    files.save_jpeg(files.turned(picture, turn), os.path.join(folder, image), rng.randint(72, 93),
                    exif_turn=turn if exif else None)
    held_out = layout in layouts.HELD_OUT or bool({look.heading, look.body} & set(style.families("held-out")))
    more = {"code": page.code} if page.code else {}
    return labels.entry(name, image, group + ("-dark" if look.palette in style.DARK_PALETTES else ""), person.lang, page,
                        0 if exif else turn, layout=layout, fonts=[look.heading, look.body], held_out=held_out,
                        printed=page.printed, **more)


def _shot(group, rng):
    """The shot of a group, the turn of its pixels and whether EXIF tells of it."""
    width, height = rng.choice(((1600, 1200), (2048, 1536), (2000, 1333), (1920, 1080)))
    options = {"background": rng.choice(sorted(backgrounds.BACKGROUNDS)), "fill": rng.uniform(0.76, 0.93),
               "roll": rng.uniform(-2, 2), "blur": rng.uniform(0.15, 0.4), "grain": rng.uniform(0.8, 2.5),
               "light": _soft_light(rng)}
    if group in ("tilted", "turned"):
        reach = 18 if group == "tilted" else 6
        options.update(pitch=rng.uniform(-reach, reach), yaw=rng.uniform(-reach, reach),
                       roll=rng.uniform(-12, 12) if group == "tilted" else rng.uniform(-4, 4))
    if group == "badly-lit":
        options.update(light=_bad_light(rng), grain=rng.uniform(2.5, 7), blur=rng.uniform(0.2, 0.6),
                       motion=rng.choice((0, 0, 0, 0.6)), pitch=rng.uniform(-5, 5), yaw=rng.uniform(-5, 5))
    turn = rng.choice((90, 180, 270)) if group == "turned" else 0
    return Shot(width, height, **options), turn, group == "turned" and rng.random() < 0.3


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
