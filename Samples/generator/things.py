"""What lies around a card: pens, cups, keys, another card, a page of text, and the fingers that hold it. A thing is
drawn on the scene in pixels; `mm` is the number of pixels in a millimetre near the card."""

import numpy
from PIL import Image, ImageDraw, ImageFilter

PAGE_LINES = 26


def lay(scene, names, quad, mm, random):
    """The scene with the named things around the card whose corners are `quad`."""
    for name in names:
        x, y = _place(scene.size, quad, random)
        layer = Image.new("RGBA", scene.size, (0, 0, 0, 0))
        THINGS[name](ImageDraw.Draw(layer), x, y, mm, random)
        shade = layer.getchannel("A").filter(ImageFilter.GaussianBlur(2 * mm)).point(lambda v: v * 2 // 5)
        scene.paste((10, 8, 8), (round(1.5 * mm), round(1.5 * mm)), shade)
        scene.paste(layer.convert("RGB"), (0, 0), layer.getchannel("A").filter(ImageFilter.GaussianBlur(0.6)))
    return scene


def hold(scene, quad, mm, random, free):
    """Two fingertips over an edge of the card, where `free` is the width of the margin in millimetres."""
    a, b = [(quad[0], quad[3]), (quad[1], quad[2]), (quad[3], quad[2])][int(random.integers(3))]
    middle, skin = quad.mean(axis=0), ((232, 190, 166), (190, 140, 110), (112, 78, 60))[int(random.integers(3))]
    layer = Image.new("RGBA", scene.size, (0, 0, 0, 0))
    draw = ImageDraw.Draw(layer)
    for share in (random.uniform(0.2, 0.4), random.uniform(0.6, 0.8)):
        edge = a + (b - a) * share
        away = (edge - middle) / numpy.linalg.norm(edge - middle)
        tip, radius = edge - away * (free - 9) * mm, 8 * mm
        for step in range(14):
            x, y = tip + away * step * radius * 0.7
            draw.ellipse([x - radius, y - radius, x + radius, y + radius], fill=skin + (255,))
    shade = layer.getchannel("A").filter(ImageFilter.GaussianBlur(mm)).point(lambda v: v // 2)
    scene.paste((20, 12, 10), (round(mm), round(mm)), shade)
    scene.paste(layer.convert("RGB"), (0, 0), layer.getchannel("A").filter(ImageFilter.GaussianBlur(0.3 * mm)))
    return scene


def _place(size, quad, random):
    """A point beside the card: on the line from its middle through a point of its outline, a little further out."""
    middle = quad.mean(axis=0)
    side = int(random.integers(4))
    edge = quad[side] + (quad[(side + 1) % 4] - quad[side]) * random.uniform(0, 1)
    point = middle + (edge - middle) * random.uniform(1.06, 1.3)
    return numpy.clip(point, 0, size)


def _colour(random, low=20, high=230):
    return tuple(int(v) for v in random.integers(low, high, 3)) + (255,)


def pen(draw, x, y, mm, random):
    """A pen, 140 by 9 millimetres."""
    angle, colour = random.uniform(0, 2 * numpy.pi), _colour(random)
    along = numpy.array((numpy.cos(angle), numpy.sin(angle))) * mm
    start = numpy.array((x, y))
    draw.line([tuple(start), tuple(start + along * 140)], fill=colour, width=round(9 * mm))
    draw.line([tuple(start), tuple(start - along * 12)], fill=(210, 206, 196, 255), width=round(5 * mm))


def cup(draw, x, y, mm, random):
    """A cup seen from above."""
    colour = _colour(random, 120, 250)
    for radius, fill in ((42, colour), (37, (60, 38, 24, 255)), (30, (74, 48, 32, 255))):
        r = radius * mm
        draw.ellipse([x - r, y - r, x + r, y + r], fill=fill)


def keys(draw, x, y, mm, random):
    """A corner of a keyboard. What is printed on keys is too small to matter and is left out."""
    shade = int(random.integers(20, 200))
    left, top = x - 120 * mm, y - 30 * mm
    draw.rectangle([left, top, left + 240 * mm, top + 90 * mm], fill=(shade, shade, shade, 255))
    cap = (min(255, shade + 24),) * 3 + (255,)
    for row in range(4):
        for column in range(12):
            kx, ky = left + (4 + 19 * column + 5 * row) * mm, top + (5 + 19 * row) * mm
            draw.rounded_rectangle([kx, ky, kx + 16 * mm, ky + 16 * mm], 2 * mm, fill=cap)


def card(draw, x, y, mm, random):
    """The edge of another card, blank but for a stripe."""
    turn, colour = random.uniform(0, numpy.pi), _colour(random, 150, 255)
    along = numpy.array((numpy.cos(turn), numpy.sin(turn))) * mm
    down = numpy.array((-along[1], along[0]))
    corner = numpy.array((x, y))

    def box(u0, v0, u1, v1, fill):
        draw.polygon([tuple(corner + along * u + down * v) for u, v in ((u0, v0), (u1, v0), (u1, v1), (u0, v1))],
                     fill=fill)
    box(0, 0, 85, 54, colour)
    box(0, 40, 85, 54, _colour(random))


def page(draw, x, y, mm, random):
    """A printed page whose lines are strokes: far too small to be read, but as busy as text."""
    left, top = x - 100 * mm, y - 70 * mm
    draw.rectangle([left, top, left + 200 * mm, top + 150 * mm], fill=(232, 230, 224, 255))
    for row in range(PAGE_LINES):
        ty, tx = top + (12 + row * 5) * mm, left + 14 * mm
        while tx < left + 180 * mm:
            wide = random.uniform(3, 14) * mm
            draw.rectangle([tx, ty, tx + wide, ty + 1.4 * mm], fill=(90, 90, 92, 255))
            tx += wide + 1.8 * mm


def phone(draw, x, y, mm, random):
    """A telephone with a dark screen."""
    draw.rounded_rectangle([x - 36 * mm, y - 74 * mm, x + 36 * mm, y + 74 * mm], 9 * mm, fill=(26, 26, 30, 255))
    draw.rounded_rectangle([x - 32 * mm, y - 68 * mm, x + 32 * mm, y + 68 * mm], 6 * mm, fill=(44, 48, 58, 255))


THINGS = {f.__name__: f for f in (pen, cup, keys, card, page, phone)}
