"""How a person is laid out on a side of a card. Each layout is `layout(page, person, mark)`; `mark` picks the logo."""

from . import contact, marks, qrcode
from .card import mecard
from .page import Page

MARGIN = 6.0
CONTACT_LEADING = 1.34  # line to line, in em
ADDRESS_LEADING = 1.22
SIGNED = ("phone", "mobile", "email", "url")  # the kinds of line that a drawn sign can stand for


def _company(page, person, x, y, size, align="left", colour=None, room=None):
    text = person.company.upper() if page.style.upper_company else person.company
    page.note("company", text)
    return page.text(x, y, text, size, page.style.heading, "bold", colour or page.style.palette.accent, align,
                     0.06 if page.style.upper_company else 0.0, room)


def _tagline(page, person, x, y, align="left", room=None):
    """A line that is no field."""
    if not person.tagline:
        return y
    return page.text(x, y, person.tagline, page.style.body_size * 0.9, None, "italic", page.style.palette.muted, align,
                     room=room)


def _name(page, person, x, y, align="left", colour=None, room=None):
    text = person.name.upper() if page.style.upper_name else person.name
    page.note("name", text)
    return page.text(x, y, text, page.style.name_size, page.style.heading, "bold", colour, align,
                     0.05 if page.style.upper_name else 0.0, room)


def _role(page, person, x, y, align="left", colour=None, room=None):
    """Title and, under it, department."""
    size = page.style.body_size * 1.08
    for kind, text in (("title", person.title), ("department", person.department)):
        if text:
            page.note(kind, text)
            y = page.text(x, y, text, size, None, "italic" if kind == "title" else "regular",
                          colour or page.style.palette.muted, align, room=room)
    return y


def _head(page, person, x, y, align="left", colour=None, room=None):
    y = _name(page, person, x, y, align, colour, room) + 0.3
    return _role(page, person, x, y, align, colour and page.style.palette.on_panel, room)


def _contacts(page, entries, x, y, align="left", room=None, signs=False, colour=None):
    """Contact lines under each other, all in one size; with `signs` a drawn sign stands where the label would."""
    palette = page.style.palette
    lead = page.style.body_size * 1.5 if signs else 0
    size = _fitting(page, [_text_of(page, entry, signs) for entry in entries], room and room - lead)
    for entry in entries:
        signed = signs and entry.kind in SIGNED
        if signed:
            marks.sign(page, entry.kind, x, y + size * 0.22, size * 0.8, palette.accent, palette.paper)
        page.note(entry.kind, entry.value, **({"alt_types": ["phone"]} if signed and entry.kind == "mobile" else {}))
        page.text(x + (lead if signed else 0), y, _text_of(page, entry, signs), size, colour=colour, align=align)
        y += page.style.body_size * CONTACT_LEADING
    return y


def _text_of(page, entry, signs):
    if not entry.label or (signs and entry.kind in SIGNED):
        return entry.value
    return entry.label + page.style.separator + entry.value


def _fitting(page, texts, room):
    """The body size, or a smaller one with which the longest text fits."""
    size = page.style.body_size
    longest = max((page.text_width(text, size) for text in texts), default=0)
    return size * room / longest if room and longest > room else size


def _address(page, person, x, y, align="left", room=None, colour=None):
    if not person.address:
        return y
    page.note("address", " ".join(person.address))
    size = _fitting(page, person.address, room)
    for text in person.address:
        page.text(x, y, text, size, colour=colour, align=align)
        y += page.style.body_size * ADDRESS_LEADING
    return y


def _height(page, person, entries=None, address=True):
    """The height that contact lines and address take."""
    count = len(contact.lines(person, page.style) if entries is None else entries)
    size = page.style.body_size
    return count * size * CONTACT_LEADING + (len(person.address) * size * ADDRESS_LEADING + 1.2 if address else 0)


def classic(page, person, mark):
    """Logo and company above, name in the middle, contact lines below on the left, address on the right."""
    width, height, palette = page.style.width, page.style.height, page.style.palette
    marks.logo(page, mark, MARGIN, 5, 6.5, palette.accent, palette.muted)
    _company(page, person, MARGIN + 9, 6, 4.0, room=width - 2 * MARGIN - 9)
    _head(page, person, MARGIN, 14.5, room=width - 2 * MARGIN)
    entries = contact.lines(person, page.style)
    _contacts(page, entries, MARGIN, height - 4.5 - _height(page, person, entries, False), room=width * 0.49)
    y = height - 4.5 - len(person.address) * page.style.body_size * ADDRESS_LEADING
    _address(page, person, width - MARGIN, y, "right", width * 0.34)


def centred(page, person, mark):
    """Everything on the middle axis."""
    middle, room = page.style.width / 2, page.style.width - 2 * MARGIN
    y = _company(page, person, middle, 5, 3.8, "centre", room=room) + 1.5
    y = _head(page, person, middle, y, "centre", room=room)
    bottom = page.style.height - 4 - _height(page, person)
    page.line([(middle - 14, (y + bottom) / 2 + 0.2), (middle + 14, (y + bottom) / 2 + 0.2)], 0.25,
              page.style.palette.accent)
    y = _address(page, person, middle, max(bottom, y + 0.6), "centre", room) + 0.6
    _contacts(page, contact.lines(person, page.style), middle, y, "centre", room)


def split(page, person, mark):
    """Logo, company and name on the left, contact lines on the right of a rule."""
    style = page.style
    rule = style.width * 0.47
    marks.logo(page, mark, MARGIN, 7, 10, style.palette.accent, style.palette.muted)
    y = _company(page, person, MARGIN, 19.5, 3.6, room=rule - MARGIN - 3)
    _tagline(page, person, MARGIN, y, room=rule - MARGIN - 3)
    _head(page, person, MARGIN, style.height - 18, room=rule - MARGIN - 3)
    page.line([(rule, 7), (rule, style.height - 7)], 0.25, style.palette.accent)
    y = (style.height - _height(page, person)) / 2
    room = style.width - rule - MARGIN - 2
    y = _contacts(page, contact.lines(person, style), rule + 4, y, room=room) + 1.2
    _address(page, person, rule + 4, y, room=room)


def band(page, person, mark):
    """A coloured band above with the company, everything else under it."""
    style, palette = page.style, page.style.palette
    page.box(0, 0, style.width, 12.5, palette.panel)
    marks.logo(page, mark, style.width - MARGIN - 7, 3, 6.5, palette.on_panel, palette.accent)
    _company(page, person, MARGIN, 3.8, 4.2, colour=palette.on_panel, room=style.width - 2 * MARGIN - 10)
    y = _head(page, person, MARGIN, 15, room=style.width - 2 * MARGIN)
    entries = contact.lines(person, style)
    y = max(y + 1, style.height - 4 - _height(page, person, entries, False))
    _contacts(page, entries, MARGIN, y, room=style.width * 0.52)
    _address(page, person, style.width - MARGIN, y, "right", style.width * 0.34)


def panel(page, person, mark):
    """A coloured panel on the left with name and title, the rest on the right."""
    style, palette = page.style, page.style.palette
    edge = style.width * 0.42
    page.box(0, 0, edge, style.height, palette.panel)
    marks.logo(page, mark, 5, 6, 9, palette.on_panel, palette.accent)
    _head(page, person, 5, style.height * 0.52, colour=palette.on_panel, room=edge - 9)
    y = _company(page, person, edge + 5, 6.5, 3.7, room=style.width - edge - 10)
    _tagline(page, person, edge + 5, y, room=style.width - edge - 10)
    y = style.height - 5 - _height(page, person)
    y = _contacts(page, contact.lines(person, style), edge + 5, y, room=style.width - edge - 9) + 1.2
    _address(page, person, edge + 5, y, room=style.width - edge - 9)


def right(page, person, mark):
    """Everything flush right, logo on the left."""
    style = page.style
    edge, room = style.width - MARGIN, style.width - 2 * MARGIN - 17
    marks.logo(page, mark, MARGIN, 6, 14, style.palette.accent, style.palette.muted)
    y = _head(page, person, edge, 5.5, "right", room=room)
    y = _company(page, person, edge, y + 0.6, 3.5, "right", room=room)
    y = max(y + 0.8, style.height - 4 - _height(page, person))
    y = _contacts(page, contact.lines(person, style), edge, y, "right", room) + 1
    _address(page, person, edge, y, "right", room)


def coded(page, person, mark):
    """As `classic`, with a QR code that holds the person on the right."""
    style, palette = page.style, page.style.palette
    side = 19.0
    room = style.width - 2 * MARGIN - side - 5
    text = mecard(person)
    page.modules(style.width - MARGIN - side, style.height - 8 - side, side, qrcode.encode(text.encode("utf-8")),
                 (20, 20, 20), (255, 255, 255))
    page.code = text
    _company(page, person, MARGIN, 5, 4.0, room=style.width - 2 * MARGIN)
    _head(page, person, MARGIN, 12, room=room)
    y = style.height - 4 - _height(page, person)
    y = _contacts(page, contact.lines(person, style), MARGIN, y, room=room) + 1
    _address(page, person, MARGIN, y, room=room)


def corner(page, person, mark):
    """Name above on the left, company below on the right, contact lines between on the left."""
    style = page.style
    y = _head(page, person, MARGIN, 5.5, room=style.width - 2 * MARGIN - 12)
    marks.logo(page, mark, style.width - MARGIN - 9, 5.5, 9, style.palette.accent, style.palette.muted)
    y = max(y + 1.2, style.height - 10.5 - _height(page, person))
    y = _contacts(page, contact.lines(person, style), MARGIN, y, room=style.width - 2 * MARGIN) + 0.6
    _address(page, person, MARGIN, y, room=style.width - 2 * MARGIN)
    _company(page, person, style.width - MARGIN, style.height - 8.5, 3.9, "right", room=style.width - 2 * MARGIN)


def signs(page, person, mark):
    """Drawn signs instead of labels."""
    style = page.style
    y = _head(page, person, MARGIN, 6, room=style.width - 2 * MARGIN)
    _company(page, person, MARGIN, y + 1, 3.6, room=style.width - 2 * MARGIN)
    entries = contact.lines(person, style)
    y = style.height - 4.5 - _height(page, person)
    y = _contacts(page, entries, MARGIN, y, room=style.width - 2 * MARGIN, signs=True) + 1
    if person.address:
        size = style.body_size
        marks.sign(page, "address", MARGIN, y + size * 0.22, size * 0.8, style.palette.accent, style.palette.paper)
    _address(page, person, MARGIN + style.body_size * 1.5, y, room=style.width - 2 * MARGIN)


def columns(page, person, mark):
    """Company across, name under it, contact lines in two columns at the foot."""
    style = page.style
    _company(page, person, MARGIN, 5, 4.4, room=style.width - 2 * MARGIN)
    page.line([(MARGIN, 11.6), (style.width - MARGIN, 11.6)], 0.3, style.palette.accent)
    _head(page, person, MARGIN, 14, room=style.width - 2 * MARGIN)
    entries = contact.lines(person, style)
    half = [entry for entry in entries if entry.kind in ("phone", "mobile", "fax")]
    rest = [entry for entry in entries if entry not in half]
    rows = max(len(half), len(rest)) * CONTACT_LEADING
    y = style.height - 5 - (rows + len(person.address) * ADDRESS_LEADING) * style.body_size
    middle = style.width * 0.47
    _contacts(page, half, MARGIN, y, room=middle - MARGIN - 2)
    _contacts(page, rest, middle, y, room=style.width - middle - MARGIN)
    _address(page, person, MARGIN, y + rows * style.body_size + 0.8, room=style.width - 2 * MARGIN)


def title_side(page, person, mark):
    """The front of a two-sided card: logo, company, name and title, no contact lines."""
    style, middle = page.style, page.style.width / 2
    marks.logo(page, mark, middle - 5, 6, 10, style.palette.accent, style.palette.muted)
    y = _company(page, person, middle, 18, 4.0, "centre", room=style.width - 2 * MARGIN)
    _tagline(page, person, middle, y, "centre", style.width - 2 * MARGIN)
    _head(page, person, middle, style.height - 21, "centre", room=style.width - 2 * MARGIN)


def contact_side(page, person, mark):
    """The back of a two-sided card: contact lines and address."""
    style = page.style
    page.box(0, 0, 3, style.height, style.palette.panel)
    left = MARGIN + 4
    y = (style.height - _height(page, person)) / 2
    y = _contacts(page, contact.lines(person, style), left, y, room=style.width - left - MARGIN) + 1.2
    _address(page, person, left, y, room=style.width - left - MARGIN)


LAYOUTS = {f.__name__: f for f in (classic, centred, split, band, panel, right, coded, corner, signs, columns)}
SIDES = {f.__name__: f for f in (title_side, contact_side)}

# Kept out of tuning, like the type faces in `fonts.HELD_OUT`.
HELD_OUT = ("corner", "signs", "columns")


def names(kind):
    """The layouts of a set: "tuning", "held-out" or "all"."""
    if kind == "tuning":
        return [name for name in LAYOUTS if name not in HELD_OUT]
    return list(HELD_OUT) if kind == "held-out" else list(LAYOUTS)


def printed(layout, person, look, scale, mark):
    """A page of the given style with the person on it."""
    page = Page(look, scale)
    {**LAYOUTS, **SIDES}[layout](page, person, mark)
    return page
