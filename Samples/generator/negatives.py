"""Pictures that show no card: what a reader has to find nothing on."""

import itertools
import os
import random as chance

import numpy
from PIL import Image, ImageDraw

from . import backgrounds, files, fonts, labels, photograph, scenery, things
from .light import Light
from .photograph import Shot

SIZE = (1600, 1200)
# A page of prose names nobody and nothing: these are the words that it is made of.
PROSE = {
    "en": "the river went on in the quiet of that evening and nobody who stood at the water could have said how long it "
          "had been raining when the lamps were lit again one after the other along the old wall where the path turns "
          "towards the fields and is lost under leaves until somebody walks there once more with a lantern",
    "de": "der Regen hatte am Abend aufgehört und niemand der am Wasser stand hätte sagen können wie lange die Lampen "
          "schon brannten als einer nach dem anderen den Weg nahm der hinter der alten Mauer zu den Feldern führt und "
          "sich unter den Blättern verliert bis wieder jemand mit einem Licht vorübergeht",
    "fr": "la rivière coulait encore dans le calme du soir et personne au bord de l'eau n'aurait su dire depuis combien "
          "de temps il pleuvait quand on ralluma les lampes une à une le long du vieux mur où le chemin tourne vers les "
          "champs puis se perd sous les feuilles",
}


def make(folder, count, seed):
    """`count` pictures, each kind in turn, and labels.jsonl that tells of no field."""
    os.makedirs(folder, exist_ok=True)
    entries = []
    for number in range(count):
        rng = chance.Random("%s/none/%d" % (seed, number))
        kind = list(KINDS)[number % len(KINDS)]
        name = "%s-%04d" % (kind, number)
        lang = rng.choice(sorted(PROSE))
        picture = KINDS[kind](rng, numpy.random.default_rng(rng.getrandbits(63)), lang)
        files.save_jpeg(picture, os.path.join(folder, name + ".jpg"), rng.randint(72, 93))
        entries.append({"id": name, "image": name + ".jpg", "kind": "none-" + kind, "lang": lang, "rotation": 0,
                        "fields": []})
    labels.write(os.path.join(folder, "labels.jsonl"), entries)
    return entries


def _shot(rng, **more):
    light = Light(rng.uniform(0.6, 1.0), rng.uniform(0.05, 0.4), rng.uniform(0, 360), rng.uniform(0.05, 0.2))
    return Shot(*SIZE, light=light, grain=rng.uniform(1, 5), blur=rng.uniform(0.2, 0.5), **more)


def wall(rng, random, lang):
    """Plaster."""
    shot = _shot(rng)
    return photograph.view(photograph.ground(Shot(*SIZE, background="paper"), random), shot, random)


def book(rng, random, lang):
    """A page of prose."""
    face = fonts.face(rng.choice(("Liberation Serif", "EB Garamond", "Libertine")), "regular", 30)
    words = PROSE[lang].split()
    following = itertools.cycle(words[rng.randrange(len(words)):] + words)
    paper = Image.new("RGB", SIZE, (244, 238, 224))
    draw, y, line = ImageDraw.Draw(paper), 90, ""
    while y < SIZE[1] - 120:
        word = next(following)
        if not line or face.getlength(line + " " + word) < SIZE[0] - 320:
            line = line + " " + word if line else word.capitalize()
            continue
        draw.text((160, y), line, font=face, fill=(40, 36, 32))
        y, line = y + 42, word
    draw.text((SIZE[0] / 2, SIZE[1] - 70), str(rng.randint(3, 400)), font=face, fill=(40, 36, 32))
    return photograph.view(paper, _shot(rng), random)


def cat(rng, random, lang):
    """An animal."""
    return photograph.view(scenery.cat(rng.randrange(1000)), _shot(rng), random)


def black(rng, random, lang):
    """The lens cap."""
    return photograph.view(Image.new("RGB", SIZE), _shot(rng), random)


def white(rng, random, lang):
    """A blank sheet on a white table."""
    sheet = Image.new("RGB", SIZE, (252, 252, 251))
    ImageDraw.Draw(sheet).rectangle([220, 180, 1380, 1020], fill=(255, 255, 255))
    return photograph.view(sheet, _shot(rng), random)


def table(rng, random, lang):
    """A table with things on it and no card."""
    shot = _shot(rng, background=rng.choice(sorted(backgrounds.BACKGROUNDS)))
    quad = numpy.array(((500, 400), (1100, 400), (1100, 800), (500, 800)), dtype=float)
    names = rng.sample(sorted(things.THINGS), 3)
    return photograph.view(things.lay(photograph.ground(shot, random), names, quad, 9.0, random), shot, random)


def view(rng, random, lang):
    """A landscape, a town, lights or somebody."""
    scene = rng.choice(scenery.PLACES + (scenery.portrait,))
    return photograph.view(scene(rng.randrange(1000), *SIZE), _shot(rng), random)


KINDS = {f.__name__: f for f in (wall, book, cat, black, white, table, view)}
