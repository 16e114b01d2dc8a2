"""How a card looks: paper, ink, type and the way its lines are labelled."""

from dataclasses import dataclass, replace
from typing import Tuple

from . import fonts

Colour = Tuple[int, int, int]


@dataclass(frozen=True)
class Palette:
    """Colours of a card: `panel` lies under parts of some layouts and carries `on_panel`."""

    paper: Colour
    ink: Colour
    accent: Colour
    muted: Colour
    panel: Colour
    on_panel: Colour


LIGHT_PALETTES = (
    Palette((252, 252, 250), (28, 30, 34), (20, 84, 140), (90, 94, 100), (20, 84, 140), (250, 250, 250)),
    Palette((250, 247, 238), (46, 38, 32), (150, 60, 40), (110, 98, 88), (150, 60, 40), (252, 246, 236)),
    Palette((255, 255, 255), (20, 20, 20), (30, 110, 70), (84, 90, 86), (30, 96, 64), (248, 252, 248)),
    Palette((244, 246, 248), (34, 42, 56), (96, 50, 120), (92, 98, 110), (72, 40, 96), (250, 246, 252)),
    Palette((254, 254, 252), (40, 40, 40), (176, 104, 16), (96, 92, 86), (44, 48, 54), (250, 232, 196)),
    Palette((236, 240, 234), (32, 44, 38), (18, 106, 110), (84, 96, 90), (18, 92, 98), (240, 250, 248)),
)

DARK_PALETTES = (
    Palette((32, 36, 44), (240, 240, 236), (222, 180, 104), (196, 198, 200), (52, 58, 70), (240, 240, 236)),
    Palette((18, 52, 86), (246, 248, 250), (150, 206, 240), (206, 220, 232), (240, 244, 248), (18, 52, 86)),
    Palette((58, 26, 40), (250, 240, 236), (240, 170, 150), (226, 206, 202), (250, 236, 230), (80, 30, 48)),
    Palette((24, 62, 50), (240, 246, 238), (196, 216, 140), (206, 220, 210), (230, 238, 220), (24, 62, 50)),
)


@dataclass(frozen=True)
class Style:
    """One card's style. `labels`: "word" (Phone), "letter" (T) or "bare" (only where a number needs telling apart);
    `name_tracking` is the space between a name's letters in em."""

    palette: Palette
    heading: str
    body: str
    labels: str = "word"
    separator: str = ": "
    upper_name: bool = False
    upper_company: bool = False
    body_size: float = 2.9
    name_size: float = 5.0
    width: float = 89.0
    height: float = 51.0
    rounded: bool = False
    name_tracking: float = 0.0


def invent(rng, families, dark):
    """A style by chance from the given type faces."""
    heading = rng.choice(families)
    body = heading if rng.random() < 0.6 else rng.choice(families)
    width, height = rng.choice(((89.0, 51.0), (85.0, 55.0), (85.6, 54.0)))
    return Style(
        palette=rng.choice(DARK_PALETTES if dark else LIGHT_PALETTES), heading=heading, body=body,
        labels=rng.choice(("word", "word", "letter", "bare")), separator=rng.choice((": ", " ", "  ")),
        upper_name=rng.random() < 0.25, upper_company=rng.random() < 0.3,
        body_size=rng.uniform(2.55, 3.0), name_size=rng.uniform(4.2, 5.6),
        width=width, height=height, rounded=rng.random() < 0.15,
        name_tracking=rng.uniform(0.1, 0.3) if rng.random() < 0.12 else 0.0)


def standing(look):
    """The same for a card that stands upright; there is less room across."""
    if look.height > look.width:
        return look
    return replace(look, width=look.height, height=look.width, body_size=min(look.body_size, 2.75),
                   name_size=min(look.name_size, 4.8), name_tracking=0.0)


def families(kind):
    """The type faces of a set: "tuning", "held-out" or "all"."""
    names = sorted(fonts.FAMILIES)
    if kind == "tuning":
        return [name for name in names if name not in fonts.HELD_OUT]
    return list(fonts.HELD_OUT) if kind == "held-out" else names
