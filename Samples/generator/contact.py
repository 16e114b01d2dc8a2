"""The lines of a card that say how to reach somebody, with their labels."""

from dataclasses import dataclass
from typing import List

# language: kind: (word, letter)
LABELS = {
    "en": {"phone": ("Phone", "T"), "mobile": ("Mobile", "M"), "fax": ("Fax", "F"), "email": ("Email", "E"),
           "url": ("Web", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "de": {"phone": ("Tel.", "T"), "mobile": ("Mobil", "M"), "fax": ("Fax", "F"), "email": ("E-Mail", "E"),
           "url": ("Web", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "fr": {"phone": ("Tél.", "T"), "mobile": ("Mobile", "M"), "fax": ("Fax", "F"), "email": ("Courriel", "E"),
           "url": ("Site", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "es": {"phone": ("Tel.", "T"), "mobile": ("Móvil", "M"), "fax": ("Fax", "F"), "email": ("Correo", "E"),
           "url": ("Web", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "sv": {"phone": ("Telefon", "T"), "mobile": ("Mobil", "M"), "fax": ("Fax", "F"), "email": ("E-post", "E"),
           "url": ("Webb", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "it": {"phone": ("Tel.", "T"), "mobile": ("Cell.", "C"), "fax": ("Fax", "F"), "email": ("E-mail", "E"),
           "url": ("Sito", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "pt": {"phone": ("Tel.", "T"), "mobile": ("Telemóvel", "Tlm"), "fax": ("Fax", "F"), "email": ("E-mail", "E"),
           "url": ("Site", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "nl": {"phone": ("Tel.", "T"), "mobile": ("Mobiel", "M"), "fax": ("Fax", "F"), "email": ("E-mail", "E"),
           "url": ("Web", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "pl": {"phone": ("tel.", "T"), "mobile": ("kom.", "K"), "fax": ("faks", "F"), "email": ("e-mail", "E"),
           "url": ("www", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "cs": {"phone": ("Tel.", "T"), "mobile": ("Mobil", "M"), "fax": ("Fax", "F"), "email": ("E-mail", "E"),
           "url": ("Web", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
    "tr": {"phone": ("Tel", "T"), "mobile": ("Cep", "C"), "fax": ("Faks", "F"), "email": ("E-posta", "E"),
           "url": ("Web", "W"), "twitter": ("Twitter", "Twitter"), "skype": ("Skype", "Skype")},
}

# Handles mean nothing without a label, and a number other than the first telephone must say what it is.
ALWAYS_LABELLED = ("mobile", "fax", "twitter", "skype")


@dataclass(frozen=True)
class Contact:
    """One contact line: its kind, the label before it (may be empty) and the value."""

    kind: str
    label: str
    value: str


def lines(person, style) -> List[Contact]:
    """The contact lines of a person without the address, in printing order."""
    pairs = list(person.phones)
    pairs += [(kind, getattr(person, kind)) for kind in ("email", "url", "twitter", "skype") if getattr(person, kind)]
    return [Contact(kind, _label(kind, person, style), value) for kind, value in pairs]


def _label(kind, person, style):
    words = LABELS[person.lang][kind]
    if style.labels == "bare":
        return words[0] if kind in ALWAYS_LABELLED else ""
    return words[1] if style.labels == "letter" else words[0]
