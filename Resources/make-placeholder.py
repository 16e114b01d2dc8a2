#!/usr/bin/env python3
"""Draws contact-note-profile-placeholder.png: a neutral silhouette, 160 x 160 pixels, shown at 80 x 80 points.

Needs Pillow. The picture is opaque, so that it looks the same on light and dark notes and in print.
"""
from pathlib import Path

from PIL import Image, ImageDraw

SIDE = 160
OVERSAMPLING = 8
BACKGROUND = (214, 219, 224)
FIGURE = (150, 159, 169)


def scaled(*box):
    return [value * OVERSAMPLING for value in box]


def main():
    picture = Image.new("RGB", (SIDE * OVERSAMPLING,) * 2, BACKGROUND)
    draw = ImageDraw.Draw(picture)
    draw.ellipse(scaled(20, 104, 140, 236), fill=FIGURE)
    draw.ellipse(scaled(43, 25, 117, 107), fill=BACKGROUND)
    draw.ellipse(scaled(49, 31, 111, 101), fill=FIGURE)
    target = Path(__file__).with_name("contact-note-profile-placeholder.png")
    picture.resize((SIDE, SIDE), Image.LANCZOS).save(target, optimize=True)


if __name__ == "__main__":
    main()
