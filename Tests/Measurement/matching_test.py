"""When a text that was read counts as the text that is printed."""

import unittest

from scorer.matching import matches

# kind, printed, read, whether it counts
ROWS = (
    ("email", "Jane@Example.com", " jane@example.COM ", True),
    ("email", "jane@example.com", "jane@example.co", False),
    ("email", "jane.doe@example.com", "janedoe@example.com", False),
    ("url", "www.example.com", "https://www.example.com/", True),
    ("url", "www.example.com", "example.com", False),
    ("url", "www.example.com/a", "WWW.example.com/A", True),
    ("twitter", "@jane", "@JANE", True),
    ("twitter", "@jane", "jane", False),
    ("skype", "jane.doe", "jane.doe", True),
    ("phone", "(312) 555-0142", "312.555.0142", True),
    ("phone", "312 555 0142", "312 555 0143", False),
    ("phone", "+44 (0)20 7946 0318", "+44 20 7946 0318", True),
    ("phone", "+44 20 7946 0318", "+44 (0)20 7946 0318", True),
    ("phone", "020 7946 0318", "+44 20 7946 0318", False),
    ("phone", "312 555 0142 ext. 7", "312 555 0142", True),
    ("phone", "312 555 0142 x7", "312 555 0142", True),
    ("phone", "312 555 0142 ext. 7", "312 555 0142 7", True),
    ("fax", "0221 4710239", "0221/4710239", True),
    ("name", "Jane Doe", "JANE DOE", True),
    ("name", "J A N E D O E", "Jane Doe", True),
    ("name", "Jane Doe", "Jone Doe", True),
    ("name", "Jane Doe", "Jone Die", False),
    ("name", "Jane Doe", "", False),
    ("name", "Jürgen Größmann", "Ju\u0308rgen Gro\u0308ßmann", True),
    ("company", "Tarn & Vale", "Tarn Vale", True),
    ("address", "1 Main St. Springfield, IL 60607", "1 Main St, Springfield IL 60607", True),
    ("address", "1 Main St. Springfield, IL 60607", "Springfield IL 60607", False),
    ("title", "Head of Engineering", "Head of Engineenng", True),
)


class Matching(unittest.TestCase):
    def test_rows(self):
        for kind, printed, read, counts in ROWS:
            with self.subTest(kind=kind, printed=printed, read=read):
                self.assertIs(matches(kind, printed, read), counts)


if __name__ == "__main__":
    unittest.main()
