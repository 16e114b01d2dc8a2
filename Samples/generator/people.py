"""Invents people. Names and companies are made up, host names are those reserved for examples (RFC 2606), and telephone
numbers are nobody's. Most come from a range that their country keeps for fiction: 555-0100 to 0199 in North America,
Ofcom's drama numbers, the Bundesnetzagentur's and ARCEP's numbers for films, PTS's in Sweden. Where there is no such
range, a number within an area begins with zeros, which no exchange gives out, and a mobile number is one of those of
another country."""

import unicodedata

from .card import Person
from .words import PLACES, STREETS, WORDS

CODES = {"de": "49", "fr": "33", "sv": "46", "en": "44", "it": "39", "pt": "351", "nl": "31", "pl": "48", "cs": "420",
         "tr": "90"}


def invent(rng):
    """A person by chance."""
    lang, number, mobile, cities = rng.choice(PLACES)
    given, family, titles, departments, forms, companies, taglines = WORDS[lang]
    first, last, firm = rng.choice(given), rng.choice(family), rng.choice(companies)
    company = firm + " " + rng.choice(forms) if rng.random() < 0.8 else firm
    host = slug(firm.split(" & ")[0], "") + rng.choice((".example", ".example.com", ".example.org", ".example.net"))
    person = Person(lang, _with_degree(rng, lang, first + " " + last), rng.choice(titles), company)
    person.email = _local_part(rng, first, last) + "@" + host
    person.url = rng.choice(("www.", "www.", "")) + host if rng.random() < 0.75 else None
    person.department = rng.choice(departments) if rng.random() < 0.25 else None
    person.tagline = rng.choice(taglines) if rng.random() < 0.2 else None
    person.address = _address(rng, lang, cities) if rng.random() < 0.85 else []
    person.phones = _phones(rng, lang, number, mobile)
    person.twitter = "@" + slug(first + last, "")[:15] if rng.random() < 0.12 else None
    person.skype = slug(first, "") + "." + slug(last, "") if rng.random() < 0.1 else None
    return person


def slug(text, joint):
    """Lower-case ASCII letters and digits; umlauts as two letters, other accents dropped, `joint` between words."""
    for letter, plain in (("ä", "ae"), ("ö", "oe"), ("ü", "ue"), ("ß", "ss"), ("å", "a"), ("ł", "l"), ("ı", "i")):
        text = text.lower().replace(letter, plain)
    plain = unicodedata.normalize("NFKD", text).encode("ascii", "ignore").decode()
    return joint.join("".join(c if c.isalnum() else " " for c in plain.replace("'", "")).split())


def _with_degree(rng, lang, name):
    if rng.random() > 0.12:
        return name
    own = {"de": ("Dr. ", "Dipl.-Ing. "), "it": ("Dott. ", "Ing. "), "pt": ("Eng. ", "Dr. "), "nl": ("drs. ", "ir. "),
           "pl": ("dr ", "mgr "), "cs": ("Ing. ", "Mgr. ")}.get(lang)
    if own:
        return rng.choice(own) + name
    return rng.choice(("Dr. " + name, name + ", PhD")) if lang == "en" else name


def _local_part(rng, first, last):
    first, last = slug(first, "-"), slug(last, "-")
    return rng.choice((first + "." + last, first[0] + "." + last, first, first[0] + slug(last, ""), "info", "office"))


def _address(rng, lang, cities):
    street = rng.choice(STREETS[lang]).format(n=rng.randint(2, 480 if lang in ("en", "es") else 96),
                                              s=rng.randint(1, 40) * 10)
    city = rng.choice(cities)
    return [street + ", " + city] if rng.random() < 0.2 else [street, city]


def _phones(rng, lang, number, mobile):
    phones = [("phone", _digits(rng, number))]
    if rng.random() < 0.6:
        phones.append(("mobile", _digits(rng, mobile)))
    if rng.random() < 0.35:
        phones.append(("fax", _digits(rng, number)))
    shape = rng.choice(("national", "national", "international", "bracketed"))
    dotted = rng.random() < 0.3
    return [(kind, _shaped(lang, value, shape, dotted)) for kind, value in phones]


def _digits(rng, pattern):
    return "".join(str(rng.randint(0, 9)) if c == "#" else c for c in pattern)


def _shaped(lang, number, shape, dotted):
    """The number in one of the shapes that cards print."""
    if number.startswith("+"):
        return number
    if "-555-" in number:
        return _american(number, shape, dotted)
    area, rest = number.replace("-", " ").split(" ", 1)
    if shape == "international":
        return "+%s %s %s" % (CODES[lang], area if lang == "it" else area.removeprefix("0"), rest)
    if shape == "bracketed" and lang in ("de", "en", "nl", "tr"):
        return "+%s (0)%s %s" % (CODES[lang], area[1:], rest) if lang != "tr" else "(%s) %s" % (area, rest)
    return "%s/%s" % (area, rest) if lang == "de" and dotted else number


def _american(number, shape, dotted):
    area, rest = number.split("-", 1)
    shapes = {"national": number.replace("-", "." if dotted else "-"), "international": "+1 " +
              number.replace("-", " "), "bracketed": "(%s) %s" % (area, rest)}
    return shapes[shape]
