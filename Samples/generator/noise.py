"""Smooth random fields, the stuff of which textures and light are made."""

import numpy
from PIL import Image


def resized(field, width, height, smooth=True):
    """A float field stretched to a size."""
    image = Image.fromarray(numpy.asarray(field, dtype=numpy.float32), "F")
    return numpy.asarray(image.resize((width, height), Image.BICUBIC if smooth else Image.BILINEAR))


def smooth(random, width, height, cell_x, cell_y):
    """Values around 0 (deviation about 0.5) that change over cells of the given size in pixels."""
    across, down = max(2, int(width / cell_x) + 2), max(2, int(height / cell_y) + 2)
    return resized(random.standard_normal((down, across)) * 0.6, width, height)


def fractal(random, width, height, cell, octaves=4):
    """Smooth noise summed over octaves: clouds, stone, stains."""
    total = numpy.zeros((height, width), dtype=numpy.float32)
    for octave in range(octaves):
        total += smooth(random, width, height, max(2, cell / 2 ** octave), max(2, cell / 2 ** octave)) / 2 ** octave
    return total
