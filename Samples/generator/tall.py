"""Layouts of cards that stand upright: narrow and high. Each is `layout(page, person, mark)`, as in `layouts`."""

from . import contact, marks, parts

MARGIN = 4.5


def tall(page, person, mark):
    """Everything on the middle axis, the logo above."""
    style = page.style
    middle, room = style.width / 2, style.width - 2 * MARGIN
    marks.logo(page, mark, middle - 6, 7, 12, style.palette.accent, style.palette.muted)
    y = parts.company(page, person, middle, 22, 3.6, "centre", room=room)
    parts.tagline(page, person, middle, y, "centre", room)
    parts.head(page, person, middle, 34, "centre", room=room)
    y = style.height - 6 - parts.height(page, person)
    y = parts.contacts(page, contact.lines(person, style), middle, y, "centre", room) + 1.2
    parts.address(page, person, middle, y, "centre", room)


def tall_left(page, person, mark):
    """Flush left under a coloured head that carries name and title."""
    style, palette = page.style, page.style.palette
    room = style.width - 2 * MARGIN
    page.box(0, 0, style.width, style.height * 0.34, palette.panel)
    parts.head(page, person, MARGIN, style.height * 0.12, colour=palette.on_panel, room=room)
    y = parts.company(page, person, MARGIN, style.height * 0.38, 3.6, room=room)
    parts.tagline(page, person, MARGIN, y, room=room)
    y = style.height - 6 - parts.height(page, person)
    y = parts.contacts(page, contact.lines(person, style), MARGIN, y, room=room) + 1.2
    parts.address(page, person, MARGIN, y, room=room)
    marks.logo(page, mark, style.width - MARGIN - 7, style.height * 0.03, 7, palette.on_panel, palette.accent)


LAYOUTS = {f.__name__: f for f in (tall, tall_left)}
