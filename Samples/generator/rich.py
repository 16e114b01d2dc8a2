"""Layouts that are harder to take apart: labels in columns or above their values, several values on a line,
photographs. Each is `layout(page, person, mark)`, as in `layouts`."""

from . import contact, marks, parts, scenery
from .parts import MARGIN

LABEL_SIZE = 0.78  # of the body's size, for a label that stands above its value


def aligned(page, person, mark):
    """Labels in one column, values in another."""
    style = page.style
    marks.logo(page, mark, style.width - MARGIN - 9, 6, 9, style.palette.accent, style.palette.muted)
    y = parts.head(page, person, MARGIN, 6, room=style.width - 2 * MARGIN - 12) + 0.5
    y = parts.company(page, person, MARGIN, y, 3.5, room=style.width - 2 * MARGIN)
    entries = contact.lines(person, style)
    widest = max([page.text_width(entry.label, style.body_size) for entry in entries] + [4.0])
    y = max(y + 1, style.height - 4.5 - parts.height(page, person, entries))
    y = _in_columns(page, entries, y, MARGIN + widest + 3) + 1
    parts.address(page, person, MARGIN + widest + 3, y, room=style.width - 2 * MARGIN - widest - 3)


def _in_columns(page, entries, y, column):
    style = page.style
    size = parts.fitting(page, [entry.value for entry in entries], style.width - MARGIN - column)
    for entry in entries:
        page.note(entry.kind, entry.value)
        page.text(column, y, entry.value, size)
        if entry.label:
            page.text(MARGIN, y, entry.label, size, colour=style.palette.accent)
        y += style.body_size * parts.CONTACT_LEADING
    return y


def stacked(page, person, mark):
    """Two columns of small labels with their values underneath."""
    style = page.style
    parts.company(page, person, MARGIN, 4.5, 3.6, room=style.width - 2 * MARGIN)
    parts.head(page, person, MARGIN, 10.5, room=style.width - 2 * MARGIN)
    entries = contact.lines(person, style)
    step = style.body_size * 2.25
    numbers = [entry for entry in entries if entry.kind in ("phone", "mobile", "fax")]
    rest = [entry for entry in entries if entry not in numbers]
    middle = style.width * 0.44
    top = style.height - 5 - len(person.address) * style.body_size * parts.ADDRESS_LEADING - step * max(
        len(numbers), len(rest))
    _under_labels(page, numbers, MARGIN, top, middle - MARGIN - 3)
    _under_labels(page, rest, middle, top, style.width - middle - MARGIN)
    y = top + step * max(len(numbers), len(rest)) + 0.6
    parts.address(page, person, MARGIN, y, room=style.width - 2 * MARGIN)


def _under_labels(page, entries, x, y, room):
    size = parts.fitting(page, [entry.value for entry in entries], room)
    for entry in entries:
        page.note(entry.kind, entry.value)
        if entry.label:
            page.text(x, y, entry.label, page.style.body_size * LABEL_SIZE, colour=page.style.palette.muted, apart=False)
        page.text(x, y + page.style.body_size * 0.9, entry.value, size, apart=False)
        y += page.style.body_size * 2.25


def footer(page, person, mark):
    """Several values on a line, with bars or dots between them, under a rule."""
    style, joint = page.style, ("  |  ", "  ·  ", " / ", "   ")[mark % 4]
    middle, room = style.width / 2, style.width - 2 * MARGIN
    marks.logo(page, mark, MARGIN, 6, 8, style.palette.accent, style.palette.muted)
    parts.company(page, person, MARGIN + 11, 7.5, 4.0, room=room - 11)
    parts.head(page, person, MARGIN, 18.5, room=room)
    entries = contact.lines(person, style)
    lines = [entries[i:i + 2] for i in range(0, len(entries), 2)]
    y = style.height - 5 - style.body_size * (parts.CONTACT_LEADING * len(lines) + (1.3 if person.address else 0))
    page.line([(MARGIN, y - 0.8), (style.width - MARGIN, y - 0.8)], 0.25, style.palette.accent)
    for line in lines:
        for entry in line:
            page.note(entry.kind, entry.value)
        page.text(middle, y, joint.join(parts.text_of(page, entry, False) for entry in line), style.body_size,
                  align="centre", room=room)
        y += style.body_size * parts.CONTACT_LEADING
    if person.address:
        page.note("address", " ".join(person.address))
        page.text(middle, y, ", ".join(person.address), style.body_size, align="centre", room=room)


def pictured(page, person, mark):
    """A photograph on the left, of the person or of a place."""
    style = page.style
    edge = style.width * 0.3
    scene = scenery.portrait if mark % 2 else scenery.PLACES[mark // 2 % len(scenery.PLACES)]
    page.picture(0, 0, edge, style.height, scene(mark))
    room = style.width - edge - 4 - MARGIN
    y = parts.head(page, person, edge + 4, 5, room=room) + 0.5
    y = parts.company(page, person, edge + 4, y, 3.5, room=room)
    y = max(y + 0.8, style.height - 4 - parts.height(page, person))
    y = parts.contacts(page, contact.lines(person, style), edge + 4, y, room=room) + 1
    parts.address(page, person, edge + 4, y, room=room)


def over_picture(page, person, mark):
    """Everything on a photograph that is veiled with the paper's colour."""
    style = page.style
    scene = scenery.PLACES[mark % len(scenery.PLACES)](mark)
    page.picture(0, 0, style.width, style.height, scenery.veiled(scene, style.palette.paper, 0.72))
    room = style.width - 2 * MARGIN
    parts.company(page, person, MARGIN, 5, 4.0, room=room)
    parts.head(page, person, MARGIN, 12.5, room=room)
    y = style.height - 4.5 - parts.height(page, person)
    y = parts.contacts(page, contact.lines(person, style), MARGIN, y, room=room) + 1
    parts.address(page, person, MARGIN, y, room=room)


LAYOUTS = {f.__name__: f for f in (aligned, stacked, footer, pictured, over_picture)}
