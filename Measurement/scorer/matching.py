"""When a text that was read counts as the text that is printed.

E-mail addresses, web addresses and handles: the same but for case (a web address also but for its scheme and a slash at
its end). Telephone numbers: the same digits, where a bracketed trunk zero and an extension may be left out. Everything
else: at most 15 % of the letters differ once case, punctuation and spacing are folded.
"""

import re
import unicodedata

NUMBERS = ("phone", "mobile", "fax")
EXACT = ("email", "twitter", "skype")
ALIKE = 0.85
EXTENSION = re.compile(r"(?i)\bext|\bx\d")
TRUNK = re.compile(r"\(\s*0\s*\)")


def matches(kind, printed, read):
    """Whether a text of some kind was read as it is printed."""
    if kind in NUMBERS:
        return bool(_numbers(printed) & _numbers(read))
    if kind == "url":
        return _address(printed) == _address(read)
    if kind in EXACT:
        return printed.strip().lower() == read.strip().lower()
    return similarity(printed, read) >= ALIKE


def similarity(first, second):
    """1 for the same text, 0 for nothing in common; spaces between words do not count when that is kinder."""
    first, second = _folded(first), _folded(second)
    return max(_likeness(first, second), _likeness(first.replace(" ", ""), second.replace(" ", "")))


def _numbers(text):
    """The digit sequences that a printed number stands for."""
    number = EXTENSION.split(text)[0]
    return {_digits(text), _digits(number), _digits(TRUNK.sub("", number))}


def _digits(text):
    return re.sub(r"\D", "", text)


def _address(text):
    return re.sub(r"^[a-z]+://", "", text.strip().lower()).rstrip("/")


def _folded(text):
    text = unicodedata.normalize("NFC", text).casefold()
    return " ".join(re.sub(r"[^\w\s&+@]", " ", text).split())


def _likeness(first, second):
    longest = max(len(first), len(second))
    return 1 - _distance(first, second) / longest if longest else 0


def _distance(first, second):
    """Letters to insert, remove or replace (Levenshtein)."""
    before = list(range(len(second) + 1))
    for row, a in enumerate(first, 1):
        now = [row]
        for column, b in enumerate(second, 1):
            now.append(min(before[column] + 1, now[-1] + 1, before[column - 1] + (a != b)))
        before = now
    return before[-1]
