"""The parts that every layout is made of: each prints something of a person and gives the y after it."""

from . import contact, marks

MARGIN = 6.0
CONTACT_LEADING = 1.34  # line to line, in em
ADDRESS_LEADING = 1.22
SIGNED = ("phone", "mobile", "email", "url")  # the kinds of line that a drawn sign can stand for


def company(page, person, x, y, size, align="left", colour=None, room=None):
    text = upper(person.company, person.lang) if page.style.upper_company else person.company
    page.note("company", text)
    return page.text(x, y, text, size, page.style.heading, "bold", colour or page.style.palette.accent, align,
                     0.06 if page.style.upper_company else 0.0, room)


def tagline(page, person, x, y, align="left", room=None):
    """A line that is no field."""
    if not person.tagline:
        return y
    return page.text(x, y, person.tagline, page.style.body_size * 0.9, None, "italic", page.style.palette.muted, align,
                     room=room)


def name(page, person, x, y, align="left", colour=None, room=None):
    text = upper(person.name, person.lang) if page.style.upper_name else person.name
    page.note("name", text)
    return page.text(x, y, text, page.style.name_size, page.style.heading, "bold", colour, align,
                     page.style.name_tracking or (0.05 if page.style.upper_name else 0.0), room)


def upper(text, lang):
    """Capital letters; Turkish keeps the dot on its capital i."""
    return (text.replace("i", "İ") if lang == "tr" else text).upper()


def role(page, person, x, y, align="left", colour=None, room=None):
    """Title and, under it, department."""
    size = page.style.body_size * 1.08
    for kind, text in (("title", person.title), ("department", person.department)):
        if text:
            page.note(kind, text)
            y = page.text(x, y, text, size, None, "italic" if kind == "title" else "regular",
                          colour or page.style.palette.muted, align, room=room)
    return y


def head(page, person, x, y, align="left", colour=None, room=None):
    y = name(page, person, x, y, align, colour, room) + 0.3
    return role(page, person, x, y, align, colour and page.style.palette.on_panel, room)


def contacts(page, entries, x, y, align="left", room=None, signs=False, colour=None):
    """Contact lines under each other, all in one size; with `signs` a drawn sign stands where the label would."""
    palette = page.style.palette
    lead = page.style.body_size * 1.5 if signs else 0
    size = fitting(page, [text_of(page, entry, signs) for entry in entries], room and room - lead)
    for entry in entries:
        signed = signs and entry.kind in SIGNED
        if signed:
            marks.sign(page, entry.kind, x, y + size * 0.22, size * 0.8, palette.accent, palette.paper)
        page.note(entry.kind, entry.value, **({"alt_types": ["phone"]} if signed and entry.kind == "mobile" else {}))
        page.text(x + (lead if signed else 0), y, text_of(page, entry, signs), size, colour=colour, align=align)
        y += page.style.body_size * CONTACT_LEADING
    return y


def text_of(page, entry, signs):
    if not entry.label or (signs and entry.kind in SIGNED):
        return entry.value
    return entry.label + page.style.separator + entry.value


def fitting(page, texts, room):
    """The body size, or a smaller one with which the longest text fits."""
    size = page.style.body_size
    longest = max((page.text_width(text, size) for text in texts), default=0)
    return size * room / longest if room and longest > room else size


def address(page, person, x, y, align="left", room=None, colour=None):
    if not person.address:
        return y
    page.note("address", " ".join(person.address))
    size = fitting(page, person.address, room)
    for text in person.address:
        page.text(x, y, text, size, colour=colour, align=align)
        y += page.style.body_size * ADDRESS_LEADING
    return y


def height(page, person, entries=None, address=True):
    """The height that contact lines and address take."""
    count = len(contact.lines(person, page.style) if entries is None else entries)
    size = page.style.body_size
    return count * size * CONTACT_LEADING + (len(person.address) * size * ADDRESS_LEADING + 1.2 if address else 0)
