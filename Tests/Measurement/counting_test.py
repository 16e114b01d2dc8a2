"""What is counted for a card and an answer, and what the tables make of it."""

import unittest

from scorer import tables
from scorer.answer import Answer, Item, parse
from scorer.counting import ANY_NUMBER, compare, total

BODY = b"""<recoIndex lang="en" objWidth="10" objHeight="10"><item fldType="name" x="1" y="1" w="3" h="3" orient="90"><t
w="93">Jane  Doe</t></item><item fldType="web" orient="90.0"><t w="70.4">example.com</t></item></recoIndex>"""


def field(kind, text, **more):
    return {"type": kind, "text": text, **more}


def label(*fields, rotation=0, **more):
    return {"image": "card.jpg", "kind": "flat", "lang": "en", "rotation": rotation, "fields": list(fields), **more}


def answer(*pairs, orient=0):
    return Answer([Item(kind, text, 80, orient) for kind, text in pairs])


class Counting(unittest.TestCase):
    def counts(self, outcome, kind):
        count = outcome.counts[kind]
        return count.printed, count.right, count.extra, count.missed

    def test_right_extra_and_missed(self):
        outcome = compare(label(field("name", "Jane Doe"), field("phone", "312 555 0142")),
                          answer(("name", "Jane Doe"), ("mobile", "312 555 0142")))
        self.assertEqual(self.counts(outcome, "name"), (1, 1, 0, 0))
        self.assertEqual(self.counts(outcome, "phone"), (1, 0, 0, 1))
        self.assertEqual(self.counts(outcome, "mobile"), (0, 0, 1, 0))
        self.assertEqual(self.counts(outcome, ANY_NUMBER), (1, 1, 0, 0))
        self.assertEqual(outcome.counts["phone"].anywhere, 1)
        self.assertEqual(outcome.mistakes, [("missed", "phone", "312 555 0142"), ("extra", "mobile", "312 555 0142")])
        self.assertFalse(outcome.complete)

    def test_an_item_counts_once(self):
        outcome = compare(label(field("email", "a@b.example"), field("email", "a@b.example")),
                          answer(("email", "a@b.example")))
        self.assertEqual(self.counts(outcome, "email"), (2, 1, 0, 1))
        twice = compare(label(field("email", "a@b.example")), answer(("email", "a@b.example"), ("email", "a@b.example")))
        self.assertEqual(self.counts(twice, "email"), (1, 1, 1, 0))

    def test_optional_fields_are_neither_required_nor_wrong(self):
        card = label(field("url", "example.com", optional=True))
        self.assertEqual(self.counts(compare(card, answer()), "url"), (0, 0, 0, 0))
        self.assertEqual(self.counts(compare(card, answer(("url", "example.com"))), "url"), (0, 0, 0, 0))
        self.assertEqual(compare(card, answer(("url", "example.com"))).weights, [("url", 80, True)])

    def test_other_texts_and_kinds(self):
        card = label(field("mobile", "07700 900462", alt_types=["phone"], alt=["+44 7700 900462"]))
        self.assertEqual(self.counts(compare(card, answer(("phone", "+44 7700 900462"))), "mobile"), (1, 1, 0, 0))

    def test_orientation_allows_for_the_turn(self):
        card = label(field("name", "Jane Doe"), rotation=90)
        self.assertTrue(compare(card, answer(("name", "x"), orient=90)).upright)
        self.assertTrue(compare(card, answer(("name", "x"), orient=0), 90).upright)
        self.assertTrue(compare(card, answer(("name", "x"), orient=270), 180).upright)
        self.assertFalse(compare(card, answer(("name", "x"), orient=270)).upright)
        self.assertFalse(compare(card, answer()).upright)

    def test_totals_leave_handles_out(self):
        outcome = compare(label(field("name", "Jane Doe"), field("twitter", "@jane")), answer(("name", "Jane Doe")))
        self.assertEqual(total([outcome]).missed, 0)
        self.assertEqual(total([outcome], ("twitter",)).missed, 1)
        self.assertAlmostEqual(total([outcome]).f1, 1.0)

    def test_figures_of_precision_and_recall(self):
        outcome = compare(label(*[field("email", "%d@b.example" % i) for i in range(4)]),
                          answer(*[("email", "%d@b.example" % i) for i in (0, 1, 2, 8, 9)]))
        count = total([outcome])
        self.assertEqual((count.precision, count.recall), (0.6, 0.75))
        self.assertAlmostEqual(count.f1, 2 / 3)


class Answers(unittest.TestCase):
    def test_items(self):
        read = parse(BODY)
        self.assertEqual(read.items, [Item("name", "Jane Doe", 93, 90), Item("url", "example.com", 70, 90)])
        self.assertEqual(read.orient, 90)

    def test_nothing_found(self):
        self.assertEqual(parse(b'<recoIndex lang="en"/>').items, [])
        self.assertIsNone(parse(b'<recoIndex lang="en"/>').orient)

    def test_no_answer(self):
        for body in (b"", b"<recoIndex>", b"\xff\xfe"):
            self.assertTrue(parse(body).problem)


class Tables(unittest.TestCase):
    def test_report(self):
        card = compare(label(field("name", "Jane Doe"), held_out=True), answer(("name", "Jane Doe")))
        other = compare(label(field("name", "Jane Doe"), held_out=False), answer())
        wall = compare(label(), answer(("company", "SSS")))
        text = tables.report([card, other, wall], [120.4])
        self.assertIn("| name         |       2 |     1 |     0 |      1 |     1.000 |  0.500 | 0.667 |    0.500 |", text)
        self.assertIn("| held out |        1 |     1.000 |  1.000 | 1.000 |   1.000 |", text)
        self.assertIn("Orientation right on 1 of 2 pictures (50.0 %).", text)
        self.assertIn("| 71–80  |      1 |        80.0 |    100.0 |", text)
        self.assertIn("Pictures without a card: 1, on 1 of them fields were found, 1 in all.", text)
        self.assertIn("Peak memory of a server with one worker: 120 MiB.", text)

    def test_figures(self):
        card = compare(label(field("name", "Jane Doe")), answer(("name", "Jane Doe"), ("fax", "1")))
        figures = tables.figures([card], [99])
        self.assertEqual((figures["all"]["right"], figures["all"]["extra"], figures["upright"]), (1, 1, 1))
        self.assertEqual(figures["kinds"]["fax"]["extra"], 1)
        self.assertEqual(figures["memory_mib"], 99)


if __name__ == "__main__":
    unittest.main()
