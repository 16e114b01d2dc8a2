"""What a card lies on. Each function gives an RGB float picture (0 to 1) of the wanted size."""

import numpy

from . import noise


def _tinted(shade, dark, light):
    """A grey field (0 to 1) between two colours."""
    shade = numpy.clip(shade, 0, 1)[..., None]
    return (numpy.array(dark) * (1 - shade) + numpy.array(light) * shade).astype(numpy.float32) / 255


def paper(random, width, height):
    """A plain light table or sheet."""
    shade = 0.6 + 0.1 * noise.fractal(random, width, height, width / 2, 3) + 0.02 * random.standard_normal(
        (height, width))
    return _tinted(shade, (196, 192, 184), (236, 233, 226))


def wood(random, width, height):
    """Planks that run across."""
    planks = int(random.integers(3, 6))
    row = numpy.arange(height) * planks / height
    tone = random.standard_normal(planks + 1)[row.astype(int)][:, None] * 0.10
    bend = noise.smooth(random, width, height, width / 3, height / planks)
    grain = numpy.sin((row[:, None] * 34 + bend * 9 + numpy.floor(row)[:, None] * 7)) * 0.09
    fibre = noise.smooth(random, width, height, width / 12, 3) * 0.16
    seam = numpy.where((row % 1) < 0.012, -0.5, 0.0)[:, None]
    colours = (((70, 44, 26), (178, 128, 82)), ((104, 78, 52), (212, 178, 134)), ((44, 32, 26), (116, 86, 66)))
    return _tinted(0.5 + tone + grain + fibre + seam, *colours[int(random.integers(len(colours)))])


def stone(random, width, height):
    """A speckled worktop."""
    shade = 0.5 + 0.10 * noise.fractal(random, width, height, width / 4, 3)
    for cell, amount in ((width / 150, 0.16), (width / 450, 0.26)):
        shade += amount * noise.smooth(random, width, height, cell, cell)
    colours = (((40, 42, 46), (150, 150, 150)), ((120, 112, 104), (226, 220, 212)))
    return _tinted(shade, *colours[int(random.integers(len(colours)))])


def cloth(random, width, height):
    """A woven cloth."""
    pitch = max(4.0, width / 260)
    x, y = numpy.arange(width) * 2 * numpy.pi / pitch, numpy.arange(height) * 2 * numpy.pi / pitch
    weave = numpy.sin(x)[None, :] * numpy.sin(y)[:, None] * 0.12
    threads = noise.smooth(random, width, height, width / 3, pitch) * 0.10 + noise.smooth(
        random, width, height, pitch, height / 3) * 0.10
    shade = 0.5 + weave + threads + 0.10 * noise.fractal(random, width, height, width / 2, 3)
    colours = (((30, 40, 66), (86, 104, 140)), ((92, 40, 40), (166, 96, 88)), ((90, 92, 88), (178, 178, 170)))
    return _tinted(shade, *colours[int(random.integers(len(colours)))])


def leather(random, width, height):
    """A dark desk pad."""
    cells = noise.smooth(random, width, height, width / 160, width / 160)
    shade = 0.45 + 0.20 * numpy.abs(cells) + 0.08 * noise.fractal(random, width, height, width / 2, 3)
    return _tinted(shade, (22, 22, 24), (86, 80, 76))


BACKGROUNDS = {f.__name__: f for f in (paper, wood, stone, cloth, leather)}
