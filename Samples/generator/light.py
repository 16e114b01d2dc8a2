"""How the scene is lit: factors and additions per pixel, worked out small and stretched to the picture."""

from dataclasses import dataclass
from typing import Optional, Tuple

import numpy
from PIL import Image, ImageDraw, ImageFilter

from . import noise

DETAIL = 400  # pixels along the longer side of a light field; light changes slowly


@dataclass(frozen=True)
class HardShadow:
    """A shadow with an edge through `point` (share of the picture), thrown from `angle` (degrees)."""

    point: Tuple[float, float]
    angle: float
    darkness: float
    edge: float = 0.01


@dataclass(frozen=True)
class Glare:
    """A reflection: its centre and its radii as shares of the picture, its angle and its strength (1 is white)."""

    centre: Tuple[float, float]
    radii: Tuple[float, float]
    angle: float
    strength: float


@dataclass(frozen=True)
class Light:
    """`gradient` is the loss of light from the bright to the dark side (0 to 1), `vignette` that in the corners."""

    exposure: float = 1.0
    gradient: float = 0.1
    angle: float = 30.0
    vignette: float = 0.05
    tint: Tuple[float, float, float] = (1.0, 1.0, 1.0)
    shadow: Optional[HardShadow] = None
    glare: Optional[Glare] = None


def _grid(width, height):
    scale = DETAIL / max(width, height)
    across, down = max(2, round(width * scale)), max(2, round(height * scale))
    return numpy.meshgrid(numpy.linspace(0, 1, across), numpy.linspace(0, 1, down))


def factor(light, width, height):
    """The factor on linear light, one per pixel."""
    x, y = _grid(width, height)
    along = (x - 0.5) * numpy.cos(numpy.radians(light.angle)) + (y - 0.5) * numpy.sin(numpy.radians(light.angle))
    field = light.exposure * (1 - light.gradient * (along + 0.5))
    field = field * (1 - light.vignette * ((x - 0.5) ** 2 + (y - 0.5) ** 2) * 2)
    if light.shadow:
        field = field * (1 - light.shadow.darkness * _shadow_mask(light.shadow, x.shape[1], x.shape[0]))
    return noise.resized(numpy.maximum(field, 0.01), width, height, smooth=False)


def _shadow_mask(shadow, width, height):
    reach = 3.0 * max(width, height)
    a = numpy.radians(shadow.angle)
    px, py = shadow.point[0] * width, shadow.point[1] * height
    along, away = (numpy.cos(a) * reach, numpy.sin(a) * reach), (-numpy.sin(a) * reach, numpy.cos(a) * reach)
    mask = Image.new("L", (width, height), 0)
    corners = [(px - along[0], py - along[1]), (px + along[0], py + along[1]),
               (px + along[0] + away[0], py + along[1] + away[1]), (px - along[0] + away[0], py - along[1] + away[1])]
    ImageDraw.Draw(mask).polygon(corners, fill=255)
    return numpy.asarray(mask.filter(ImageFilter.GaussianBlur(shadow.edge * width)), dtype=numpy.float32) / 255


def addition(light, width, height):
    """What a reflection adds to linear light, or None."""
    if not light.glare:
        return None
    x, y = _grid(width, height)
    glare, a = light.glare, numpy.radians(light.glare.angle)
    dx, dy = x - glare.centre[0], y - glare.centre[1]
    u = (dx * numpy.cos(a) + dy * numpy.sin(a)) / glare.radii[0]
    v = (dy * numpy.cos(a) - dx * numpy.sin(a)) / glare.radii[1]
    return noise.resized(glare.strength * numpy.exp(-(u * u + v * v)), width, height, smooth=False)
