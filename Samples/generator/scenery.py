"""Invented photographs, for cards that carry one and for pictures that show no card at all. Each function gives an RGB
image; what it shows depends on the seed only, so that it looks the same in every size."""

import numpy
from PIL import Image, ImageDraw, ImageFilter

from . import noise


def _graded(width, height, top, bottom):
    share = numpy.linspace(0, 1, height)[:, None, None]
    field = numpy.array(top) * (1 - share) + numpy.array(bottom) * share
    return Image.fromarray(numpy.broadcast_to(field, (height, width, 3)).astype(numpy.uint8))


def hills(seed, width=640, height=480):
    """Ridges one behind the other under a wide sky."""
    random = numpy.random.default_rng(seed)
    image = _graded(width, height, (96, 150, 206), (236, 220, 196))
    draw = ImageDraw.Draw(image)
    for layer in range(4):
        base = height * (0.45 + 0.14 * layer)
        ridge = noise.smooth(random, width, 2, width / (3 + 2 * layer), 1)[0] * height * 0.12
        colour = tuple(int(c * (1 - 0.2 * layer)) for c in (126, 152, 132))
        draw.polygon([(0, height)] + [(x, base + float(ridge[x])) for x in range(width)] + [(width, height)],
                     fill=colour)
    return image.filter(ImageFilter.GaussianBlur(0.8))


def town(seed, width=640, height=480):
    """Houses with rows of windows."""
    random = numpy.random.default_rng(seed)
    image = _graded(width, height, (70, 84, 110), (214, 170, 140))
    draw, x = ImageDraw.Draw(image), 0
    while x < width:
        wide, top = int(random.integers(50, 110)), int(height * random.uniform(0.25, 0.7))
        shade = int(random.integers(40, 120))
        draw.rectangle([x, top, x + wide, height], fill=(shade, shade, shade + 12))
        for row in range(top + 10, height - 10, 22):
            for column in range(x + 8, x + wide - 12, 18):
                light = (240, 214, 150) if random.random() < 0.35 else (shade - 18, shade - 16, shade)
                draw.rectangle([column, row, column + 9, row + 12], fill=light)
        x += wide + int(random.integers(0, 12))
    return image.filter(ImageFilter.GaussianBlur(0.7))


def lights(seed, width=640, height=480):
    """Lights out of focus."""
    random = numpy.random.default_rng(seed)
    image = _graded(width, height, (24, 28, 50), (60, 40, 56))
    for _ in range(45):
        layer = Image.new("L", (width, height), 0)
        x, y, r = random.uniform(0, width), random.uniform(0, height), random.uniform(8, 46)
        ImageDraw.Draw(layer).ellipse([x - r, y - r, x + r, y + r], fill=int(random.integers(50, 150)))
        colour = tuple(int(v) for v in random.integers(120, 255, 3))
        image.paste(colour, (0, 0), layer.filter(ImageFilter.GaussianBlur(2)))
    return image


def portrait(seed, width=480, height=640):
    """Somebody's head and shoulders, in outlines."""
    random = numpy.random.default_rng(seed)
    image = _graded(width, height, tuple(random.integers(150, 230, 3)), tuple(random.integers(90, 170, 3)))
    draw = ImageDraw.Draw(image)
    skin = ((236, 200, 176), (196, 146, 112), (120, 82, 60), (246, 216, 196))[int(random.integers(4))]
    hair = tuple(int(v) for v in random.integers(20, 130, 3))
    cloth = tuple(int(v) for v in random.integers(20, 200, 3))
    middle = width / 2
    draw.ellipse([width * 0.08, height * 0.68, width * 0.92, height * 1.4], fill=cloth)
    draw.rectangle([middle - width * 0.1, height * 0.5, middle + width * 0.1, height * 0.74], fill=skin)
    draw.ellipse([middle - width * 0.26, height * 0.12, middle + width * 0.26, height * 0.6], fill=hair)
    draw.ellipse([middle - width * 0.21, height * 0.2, middle + width * 0.21, height * 0.63], fill=skin)
    for side in (-1, 1):
        x = middle + side * width * 0.085
        draw.ellipse([x - 11, height * 0.385, x + 11, height * 0.41], fill=(40, 34, 32))
    draw.arc([middle - 40, height * 0.44, middle + 40, height * 0.55], 25, 155, fill=(150, 70, 66), width=5)
    return image.filter(ImageFilter.GaussianBlur(2))


def cat(seed, width=640, height=480):
    """A striped animal that looks into the camera."""
    random = numpy.random.default_rng(seed)
    image = _graded(width, height, (150, 140, 124), (92, 84, 76))
    draw = ImageDraw.Draw(image)
    fur, dark = ((172, 132, 92), (96, 66, 44)) if random.random() < 0.5 else ((150, 150, 154), (74, 74, 80))
    x, y, r = width * random.uniform(0.35, 0.65), height * random.uniform(0.42, 0.52), height * random.uniform(0.22, 0.3)
    draw.ellipse([x - r * 1.5, y + r * 0.3, x + r * 1.5, y + r * 3], fill=fur)
    for side in (-1, 1):
        draw.polygon([(x + side * r * 0.9, y - r * 0.3), (x + side * r * 0.85, y - r * 1.35),
                      (x + side * r * 0.2, y - r * 0.8)], fill=fur)
    draw.ellipse([x - r, y - r, x + r, y + r * 0.95], fill=fur)
    for index in range(-3, 4):
        draw.line([(x + index * r * 0.16, y - r * 0.95), (x + index * r * 0.1, y - r * 0.5)], fill=dark, width=7)
        draw.line([(x + index * r * 0.4, y + r * 1.1), (x + index * r * 0.46, y + r * 1.9)], fill=dark, width=10)
    for side in (-1, 1):
        cx = x + side * r * 0.42
        draw.ellipse([cx - 26, y - 30, cx + 26, y + 10], fill=(190, 200, 90))
        draw.ellipse([cx - 7, y - 28, cx + 7, y + 8], fill=(14, 14, 14))
        for whisker in range(3):
            end = (x + side * r * 1.7, y + r * (0.25 + 0.16 * whisker))
            draw.line([(x + side * r * 0.25, y + r * 0.4), end], fill=(240, 236, 226), width=2)
    draw.polygon([(x - 16, y + r * 0.26), (x + 16, y + r * 0.26), (x, y + r * 0.4)], fill=(190, 110, 110))
    shade = noise.smooth(random, width, height, 3, 9) * 26 + noise.smooth(random, width, height, 60, 60) * 14
    return Image.fromarray(numpy.clip(numpy.asarray(image) + shade[..., None], 0, 255).astype(numpy.uint8))


def veiled(image, colour, share):
    """The picture under a veil of one colour, so that type on it can be read."""
    return Image.blend(image, Image.new("RGB", image.size, colour), share)


PLACES = (hills, town, lights)
