"""How a person is laid out on a side of a card. Each layout is `layout(page, person, mark)`; `mark` picks the logo."""

from . import contact, marks, parts, qrcode, rich, style, tall
from .card import mecard
from .page import Page
from .parts import MARGIN


def classic(page, person, mark):
    """Logo and company above, name in the middle, contact lines below on the left, address on the right."""
    width, height, palette = page.style.width, page.style.height, page.style.palette
    marks.logo(page, mark, MARGIN, 5, 6.5, palette.accent, palette.muted)
    parts.company(page, person, MARGIN + 9, 6, 4.0, room=width - 2 * MARGIN - 9)
    parts.head(page, person, MARGIN, 14.5, room=width - 2 * MARGIN)
    entries = contact.lines(person, page.style)
    parts.contacts(page, entries, MARGIN, height - 4.5 - parts.height(page, person, entries, False), room=width * 0.49)
    y = height - 4.5 - len(person.address) * page.style.body_size * parts.ADDRESS_LEADING
    parts.address(page, person, width - MARGIN, y, "right", width * 0.34)


def centred(page, person, mark):
    """Everything on the middle axis."""
    middle, room = page.style.width / 2, page.style.width - 2 * MARGIN
    y = parts.company(page, person, middle, 5, 3.8, "centre", room=room) + 1.5
    y = parts.head(page, person, middle, y, "centre", room=room)
    bottom = page.style.height - 4 - parts.height(page, person)
    page.line([(middle - 14, (y + bottom) / 2 + 0.2), (middle + 14, (y + bottom) / 2 + 0.2)], 0.25,
              page.style.palette.accent)
    y = parts.address(page, person, middle, max(bottom, y + 0.6), "centre", room) + 0.6
    parts.contacts(page, contact.lines(person, page.style), middle, y, "centre", room)


def split(page, person, mark):
    """Logo, company and name on the left, contact lines on the right of a rule."""
    look = page.style
    rule = look.width * 0.47
    marks.logo(page, mark, MARGIN, 7, 10, look.palette.accent, look.palette.muted)
    y = parts.company(page, person, MARGIN, 19.5, 3.6, room=rule - MARGIN - 3)
    parts.tagline(page, person, MARGIN, y, room=rule - MARGIN - 3)
    parts.head(page, person, MARGIN, look.height - 18, room=rule - MARGIN - 3)
    page.line([(rule, 7), (rule, look.height - 7)], 0.25, look.palette.accent)
    y = (look.height - parts.height(page, person)) / 2
    room = look.width - rule - MARGIN - 2
    y = parts.contacts(page, contact.lines(person, look), rule + 4, y, room=room) + 1.2
    parts.address(page, person, rule + 4, y, room=room)


def band(page, person, mark):
    """A coloured band above with the company, everything else under it."""
    look, palette = page.style, page.style.palette
    page.box(0, 0, look.width, 12.5, palette.panel)
    marks.logo(page, mark, look.width - MARGIN - 7, 3, 6.5, palette.on_panel, palette.accent)
    parts.company(page, person, MARGIN, 3.8, 4.2, colour=palette.on_panel, room=look.width - 2 * MARGIN - 10)
    y = parts.head(page, person, MARGIN, 15, room=look.width - 2 * MARGIN)
    entries = contact.lines(person, look)
    y = max(y + 1, look.height - 4 - parts.height(page, person, entries, False))
    parts.contacts(page, entries, MARGIN, y, room=look.width * 0.52)
    parts.address(page, person, look.width - MARGIN, y, "right", look.width * 0.34)


def panel(page, person, mark):
    """A coloured panel on the left with name and title, the rest on the right."""
    look, palette = page.style, page.style.palette
    edge = look.width * 0.42
    page.box(0, 0, edge, look.height, palette.panel)
    marks.logo(page, mark, 5, 6, 9, palette.on_panel, palette.accent)
    parts.head(page, person, 5, look.height * 0.52, colour=palette.on_panel, room=edge - 9)
    y = parts.company(page, person, edge + 5, 6.5, 3.7, room=look.width - edge - 10)
    parts.tagline(page, person, edge + 5, y, room=look.width - edge - 10)
    y = look.height - 5 - parts.height(page, person)
    y = parts.contacts(page, contact.lines(person, look), edge + 5, y, room=look.width - edge - 9) + 1.2
    parts.address(page, person, edge + 5, y, room=look.width - edge - 9)


def right(page, person, mark):
    """Everything flush right, logo on the left."""
    look = page.style
    edge, room = look.width - MARGIN, look.width - 2 * MARGIN - 17
    marks.logo(page, mark, MARGIN, 6, 14, look.palette.accent, look.palette.muted)
    y = parts.head(page, person, edge, 5.5, "right", room=room)
    y = parts.company(page, person, edge, y + 0.6, 3.5, "right", room=room)
    y = max(y + 0.8, look.height - 4 - parts.height(page, person))
    y = parts.contacts(page, contact.lines(person, look), edge, y, "right", room) + 1
    parts.address(page, person, edge, y, "right", room)


def coded(page, person, mark):
    """As `classic`, with a QR code that holds the person on the right."""
    look, palette = page.style, page.style.palette
    side = 19.0
    room = look.width - 2 * MARGIN - side - 5
    page.code = page.code or mecard(person)
    page.modules(look.width - MARGIN - side, look.height - 8 - side, side, qrcode.encode(page.code.encode("utf-8")),
                 (20, 20, 20), (255, 255, 255))
    parts.company(page, person, MARGIN, 5, 4.0, room=look.width - 2 * MARGIN)
    parts.head(page, person, MARGIN, 12, room=room)
    y = look.height - 4 - parts.height(page, person)
    y = parts.contacts(page, contact.lines(person, look), MARGIN, y, room=room) + 1
    parts.address(page, person, MARGIN, y, room=room)


def corner(page, person, mark):
    """Name above on the left, company below on the right, contact lines between on the left."""
    look = page.style
    y = parts.head(page, person, MARGIN, 5.5, room=look.width - 2 * MARGIN - 12)
    marks.logo(page, mark, look.width - MARGIN - 9, 5.5, 9, look.palette.accent, look.palette.muted)
    y = max(y + 1.2, look.height - 10.5 - parts.height(page, person))
    y = parts.contacts(page, contact.lines(person, look), MARGIN, y, room=look.width - 2 * MARGIN) + 0.6
    parts.address(page, person, MARGIN, y, room=look.width - 2 * MARGIN)
    parts.company(page, person, look.width - MARGIN, look.height - 8.5, 3.9, "right", room=look.width - 2 * MARGIN)


def signs(page, person, mark):
    """Drawn signs instead of labels."""
    look = page.style
    y = parts.head(page, person, MARGIN, 6, room=look.width - 2 * MARGIN)
    parts.company(page, person, MARGIN, y + 1, 3.6, room=look.width - 2 * MARGIN)
    entries = contact.lines(person, look)
    y = look.height - 4.5 - parts.height(page, person)
    y = parts.contacts(page, entries, MARGIN, y, room=look.width - 2 * MARGIN, signs=True) + 1
    if person.address:
        size = look.body_size
        marks.sign(page, "address", MARGIN, y + size * 0.22, size * 0.8, look.palette.accent, look.palette.paper)
    parts.address(page, person, MARGIN + look.body_size * 1.5, y, room=look.width - 2 * MARGIN)


def columns(page, person, mark):
    """Company across, name under it, contact lines in two columns at the foot."""
    look = page.style
    parts.company(page, person, MARGIN, 5, 4.4, room=look.width - 2 * MARGIN)
    page.line([(MARGIN, 11.6), (look.width - MARGIN, 11.6)], 0.3, look.palette.accent)
    parts.head(page, person, MARGIN, 14, room=look.width - 2 * MARGIN)
    entries = contact.lines(person, look)
    half = [entry for entry in entries if entry.kind in ("phone", "mobile", "fax")]
    rest = [entry for entry in entries if entry not in half]
    rows = max(len(half), len(rest)) * parts.CONTACT_LEADING
    y = look.height - 5 - (rows + len(person.address) * parts.ADDRESS_LEADING) * look.body_size
    middle = look.width * 0.47
    parts.contacts(page, half, MARGIN, y, room=middle - MARGIN - 2)
    parts.contacts(page, rest, middle, y, room=look.width - middle - MARGIN)
    parts.address(page, person, MARGIN, y + rows * look.body_size + 0.8, room=look.width - 2 * MARGIN)


def title_side(page, person, mark):
    """The front of a two-sided card: logo, company, name and title, no contact lines."""
    look, middle = page.style, page.style.width / 2
    marks.logo(page, mark, middle - 5, 6, 10, look.palette.accent, look.palette.muted)
    y = parts.company(page, person, middle, 18, 4.0, "centre", room=look.width - 2 * MARGIN)
    parts.tagline(page, person, middle, y, "centre", look.width - 2 * MARGIN)
    parts.head(page, person, middle, look.height - 21, "centre", room=look.width - 2 * MARGIN)


def contact_side(page, person, mark):
    """The back of a two-sided card: contact lines and address."""
    look = page.style
    page.box(0, 0, 3, look.height, look.palette.panel)
    left = MARGIN + 4
    y = (look.height - parts.height(page, person)) / 2
    y = parts.contacts(page, contact.lines(person, look), left, y, room=look.width - left - MARGIN) + 1.2
    parts.address(page, person, left, y, room=look.width - left - MARGIN)


FLAT = {f.__name__: f for f in (classic, centred, split, band, panel, right, coded, corner, signs, columns)}
CODED = ("coded",)
LAYOUTS = {**FLAT, **rich.LAYOUTS, **tall.LAYOUTS}
SIDES = {f.__name__: f for f in (title_side, contact_side)}

# Kept out of tuning, like the type faces in `fonts.HELD_OUT`.
HELD_OUT = ("corner", "signs", "columns", "stacked", "pictured", "tall_left")


def names(kind):
    """The layouts of a set: "tuning", "held-out" or "all"."""
    if kind == "tuning":
        return [name for name in LAYOUTS if name not in HELD_OUT]
    return list(HELD_OUT) if kind == "held-out" else list(LAYOUTS)


def fitting(layout, look):
    """The style for a layout: some want a card that stands upright."""
    return style.standing(look) if layout in tall.LAYOUTS else look


def printed(layout, person, look, scale, mark, code=None):
    """A page of the given style with the person on it. `code` is what a layout with a QR code puts into it, otherwise
    what is known of the person."""
    page = Page(look, scale)
    page.code = code
    {**LAYOUTS, **SIDES}[layout](page, person, mark)
    if layout not in CODED:
        page.code = None
    return page
