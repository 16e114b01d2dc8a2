"""Takes the picture: a printed page on a background, seen by a camera from some angle under some light."""

from dataclasses import dataclass, field
from typing import Tuple

import numpy
from PIL import Image, ImageDraw, ImageFilter

from . import backgrounds, light as lights, things

DISTANCE = 320.0  # millimetres from the camera to the card
BAND = 256  # rows that are developed at a time: a 12-megapixel picture never stands in floats as a whole


@dataclass(frozen=True)
class Shot:
    """One photograph. Angles in degrees (`roll` turns clockwise), `fill` is the card's share of the picture's width or
    height, `blur` and `motion` are pixels at 1000 pixels of width, `grain` is the noise's deviation (0 to 255). `things`
    lie around the card, and a hand may hold it."""

    width: int = 2000
    height: int = 1500
    fill: float = 0.86
    pitch: float = 0.0
    yaw: float = 0.0
    roll: float = 0.0
    shift: Tuple[float, float] = (0.0, 0.0)
    background: str = "wood"
    light: lights.Light = field(default_factory=lights.Light)
    blur: float = 0.25
    motion: float = 0.0
    grain: float = 1.5
    things: Tuple[str, ...] = ()
    held: bool = False


def corners(shot, width, height):
    """Where the card's corners (clockwise from the upper left) lie in the picture; its size is in millimetres."""
    points = numpy.array([(-width, -height, 0), (width, -height, 0), (width, height, 0), (-width, height, 0)]) / 2
    p, q, r = numpy.radians((shot.pitch, shot.yaw, shot.roll))
    turn_x = numpy.array([(1, 0, 0), (0, numpy.cos(p), -numpy.sin(p)), (0, numpy.sin(p), numpy.cos(p))])
    turn_y = numpy.array([(numpy.cos(q), 0, numpy.sin(q)), (0, 1, 0), (-numpy.sin(q), 0, numpy.cos(q))])
    turn_z = numpy.array([(numpy.cos(r), -numpy.sin(r), 0), (numpy.sin(r), numpy.cos(r), 0), (0, 0, 1)])
    seen = points @ (turn_y @ turn_x @ turn_z).T
    flat = seen[:, :2] / (DISTANCE + seen[:, 2:3])
    low, high = flat.min(axis=0), flat.max(axis=0)
    scale = shot.fill * min(shot.width / (high[0] - low[0]), shot.height / (high[1] - low[1]))
    middle = numpy.array([shot.width * (0.5 + shot.shift[0]), shot.height * (0.5 + shot.shift[1])])
    return (flat - (low + high) / 2) * scale + middle


def print_scale(quad, width):
    """Pixels per millimetre at which a page must be printed so that no detail of the picture is lost."""
    edges = [numpy.linalg.norm(quad[1] - quad[0]), numpy.linalg.norm(quad[2] - quad[3])]
    return max(edges) / width * 1.1


def take(page, quad, shot, random):
    """The picture of a page as an RGB image, upright."""
    mm = print_scale(quad, page.style.width) / 1.1
    scene = things.lay(_background(shot, random), shot.things, quad, mm, random)
    card = _placed(page, quad, shot)
    scene = _with_card_shadow(scene, card.getchannel("A"), shot)
    scene.paste(card.convert("RGB"), (0, 0), card.getchannel("A"))
    if shot.held:
        scene = things.hold(scene, quad, mm, random, page.margin())
    return _exposed(scene, shot, random)


def view(picture, shot, random):
    """The picture of something that fills the whole view."""
    return _exposed(picture.convert("RGB").resize((shot.width, shot.height), Image.BICUBIC), shot, random)


def ground(shot, random):
    """What a card would lie on, without one."""
    return _background(shot, random)


def _exposed(scene, shot, random):
    """What the lens and the sensor make of a scene."""
    if shot.blur:
        scene = scene.filter(ImageFilter.GaussianBlur(shot.blur * shot.width / 1000))
    if shot.motion:
        scene = _moved(scene, shot)
    return _developed(scene, shot, random)


def _background(shot, random):
    small = min(shot.width, 2000)
    picture = backgrounds.BACKGROUNDS[shot.background](random, small, round(small * shot.height / shot.width))
    return Image.fromarray((picture * 255).astype(numpy.uint8)).resize((shot.width, shot.height), Image.BICUBIC)


def _with_card_shadow(scene, mask, shot):
    """A card is thin: a narrow dark rim, and a wide faint one away from the light."""
    small = mask.resize((shot.width // 4, shot.height // 4), Image.BILINEAR)
    angle, unit = numpy.radians(shot.light.angle), shot.width / 4000
    shade = Image.new("L", small.size, 0)
    for reach, spread, amount in ((2, 2, 120), (9, 9, 70)):
        moved = Image.new("L", small.size, 0)
        moved.paste(small, (round(reach * unit * numpy.cos(angle)), round(reach * unit * numpy.sin(angle))))
        moved = moved.filter(ImageFilter.GaussianBlur(spread * unit)).point(lambda v, a=amount: v * a // 255)
        shade = Image.fromarray(numpy.maximum(numpy.asarray(shade), numpy.asarray(moved)))
    black = Image.new("RGB", scene.size, (12, 10, 8))
    return Image.composite(black, scene, shade.resize(scene.size, Image.BILINEAR))


def _placed(page, quad, shot):
    """The page in perspective, transparent around it."""
    card = page.image.convert("RGBA")
    if page.style.rounded:
        card.putalpha(_rounded(card.size, round(3 * page.scale)))
    source = [(0, 0), (card.width, 0), (card.width, card.height), (0, card.height)]
    return card.transform((shot.width, shot.height), Image.PERSPECTIVE, _coefficients(quad, source), Image.BICUBIC)


def _rounded(size, radius):
    mask = Image.new("L", size, 0)
    ImageDraw.Draw(mask).rounded_rectangle([0, 0, size[0] - 1, size[1] - 1], radius, fill=255)
    return mask


def _coefficients(quad, source):
    """The eight numbers that carry picture points to page points."""
    rows, values = [], []
    for (x, y), (u, v) in zip(quad, source):
        rows += [(x, y, 1, 0, 0, 0, -u * x, -u * y), (0, 0, 0, x, y, 1, -v * x, -v * y)]
        values += [u, v]
    return numpy.linalg.solve(numpy.array(rows), numpy.array(values))


def _moved(scene, shot):
    """The hand moved while the shutter was open: the mean of shifted pictures."""
    reach = max(1, round(shot.motion * shot.width / 1000))
    total = numpy.zeros((shot.height, shot.width, 3), dtype=numpy.float32)
    pixels = numpy.asarray(scene)
    for step in range(-reach, reach + 1):
        total += numpy.roll(pixels, (step // 2, step), axis=(0, 1))
    return Image.fromarray((total / (2 * reach + 1)).astype(numpy.uint8))


def _developed(scene, shot, random):
    """Light and sensor noise, band by band, in linear light."""
    curve = ((numpy.arange(256) / 255.0) ** 2.2).astype(numpy.float32)
    factor = lights.factor(shot.light, shot.width, shot.height)
    glare = lights.addition(shot.light, shot.width, shot.height)
    pixels, tint = numpy.array(scene), numpy.array(shot.light.tint, dtype=numpy.float32)
    for top in range(0, shot.height, BAND):
        rows = slice(top, top + BAND)
        linear = curve[pixels[rows]] * factor[rows, :, None] * tint
        if glare is not None:
            linear += glare[rows, :, None]
        values = numpy.clip(linear, 0, 1) ** numpy.float32(1 / 2.2) * 255
        values += _grain(shot, random, values.shape)
        pixels[rows] = numpy.clip(values + 0.5, 0, 255).astype(numpy.uint8)
    return Image.fromarray(pixels)


def _grain(shot, random, shape):
    """Sensor noise: mostly brightness, a little colour."""
    grey = random.standard_normal(shape[:2], dtype=numpy.float32)[..., None]
    return (grey + 0.3 * random.standard_normal(shape, dtype=numpy.float32)) * shot.grain
