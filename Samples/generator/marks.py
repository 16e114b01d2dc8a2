"""Drawn marks without words: company logos and the small signs before contact lines."""

import math


def logo(page, kind, x, y, size, colour, second):
    """A logo in the square with upper left corner (x, y)."""
    LOGOS[kind % len(LOGOS)](page, x, y, size, colour, second)


def _rings(page, x, y, size, colour, second):
    half = size / 2
    page.disc(x + half, y + half, half, colour)
    page.disc(x + half * 1.25, y + half * 0.8, half * 0.55, second)


def _peaks(page, x, y, size, colour, second):
    page.polygon([(x, y + size), (x + size * 0.4, y + size * 0.1), (x + size * 0.8, y + size)], colour)
    page.polygon([(x + size * 0.45, y + size), (x + size * 0.72, y + size * 0.4), (x + size, y + size)], second)


def _bars(page, x, y, size, colour, second):
    for index, height in enumerate((0.5, 0.75, 1.0)):
        left = x + index * size * 0.36
        page.box(left, y + size * (1 - height), left + size * 0.26, y + size, second if index == 1 else colour)


def _hexagon(page, x, y, size, colour, second):
    def ring(radius):
        return [(x + size / 2 + radius * math.cos(math.radians(60 * i + 30)),
                 y + size / 2 + radius * math.sin(math.radians(60 * i + 30))) for i in range(6)]
    page.polygon(ring(size / 2), colour)
    page.polygon(ring(size / 4), second)


def _leaf(page, x, y, size, colour, second):
    points = [(x + size * t, y + size * (1 - t) - size * 0.42 * math.sin(math.pi * t)) for t in _steps(0, 1)]
    points += [(x + size * t, y + size * (1 - t) + size * 0.30 * math.sin(math.pi * t)) for t in _steps(1, 0)]
    page.polygon(points, colour)
    page.line([(x + size * 0.05, y + size * 0.95), (x + size * 0.9, y + size * 0.1)], size * 0.05, second)


def _steps(first, last, count=24):
    return [first + (last - first) * i / count for i in range(count + 1)]


LOGOS = (_rings, _peaks, _bars, _hexagon, _leaf)


def sign(page, kind, x, y, size, colour, paper):
    """The sign for a kind of field, in the square with upper left corner (x, y)."""
    SIGNS.get(kind, _globe)(page, x, y, size, colour, paper)


def _handset(page, x, y, size, colour, paper):
    arc = [(x + size * (0.5 + 0.42 * math.cos(a)), y + size * (0.5 + 0.42 * math.sin(a)))
           for a in _steps(math.radians(75), math.radians(195))]
    page.line(arc, size * 0.18, colour)
    page.disc(arc[0][0], arc[0][1] - size * 0.05, size * 0.15, colour)
    page.disc(arc[-1][0] + size * 0.05, arc[-1][1], size * 0.15, colour)


def _mobile(page, x, y, size, colour, paper):
    page.box(x + size * 0.25, y, x + size * 0.75, y + size, colour)
    page.box(x + size * 0.32, y + size * 0.14, x + size * 0.68, y + size * 0.78, paper)


def _envelope(page, x, y, size, colour, paper):
    page.box(x, y + size * 0.18, x + size, y + size * 0.82, colour)
    page.line([(x, y + size * 0.2), (x + size / 2, y + size * 0.55), (x + size, y + size * 0.2)], size * 0.08, paper)


def _globe(page, x, y, size, colour, paper):
    page.disc(x + size / 2, y + size / 2, size / 2, colour)
    page.line([(x, y + size / 2), (x + size, y + size / 2)], size * 0.07, paper)
    page.line([(x + size / 2, y), (x + size / 2, y + size)], size * 0.07, paper)


def _pin(page, x, y, size, colour, paper):
    page.disc(x + size / 2, y + size * 0.36, size * 0.34, colour)
    page.polygon([(x + size * 0.2, y + size * 0.5), (x + size * 0.8, y + size * 0.5), (x + size / 2, y + size)],
                 colour)
    page.disc(x + size / 2, y + size * 0.36, size * 0.13, paper)


SIGNS = {"phone": _handset, "mobile": _mobile, "email": _envelope, "address": _pin}
