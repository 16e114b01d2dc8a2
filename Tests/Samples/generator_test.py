"""The generator of card photographs: the same call gives the same files, and labels tell what is printed."""

import json
import os
import subprocess
import tempfile
import unittest

SAMPLES = os.environ.get("QV_SAMPLES", "")


def generate(folder, *arguments):
    return subprocess.run([os.path.join(SAMPLES, "generate"), "--out", folder, *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False, universal_newlines=True)


def labels_in(folder):
    with open(os.path.join(folder, "labels.jsonl"), encoding="utf-8") as file:
        return [json.loads(line) for line in file]


def content(*path):
    with open(os.path.join(*path), "rb") as file:
        return file.read()


class Generator(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.first, self.second = os.path.join(folder.name, "1"), os.path.join(folder.name, "2")

    def test_a_longer_run_begins_with_the_same_cards(self):
        generate(self.first, "--count", "1", "--seed", "9")
        generate(self.second, "--count", "2", "--seed", "9")
        short, long = labels_in(self.first), labels_in(self.second)
        self.assertEqual(long[:len(short)], short)
        for one in short:
            self.assertEqual(content(self.first, one["image"]), content(self.second, one["image"]))

    def test_parts(self):
        for part, held_out in (("tuning", False), ("held-out", True)):
            generate(self.first, "--count", "1", "--seed", "3", "--part", part)
            self.assertEqual([one["held_out"] for one in labels_in(self.first)], [held_out] * len(labels_in(self.first)))

    def test_what_is_printed(self):
        generate(self.first, "--count", "2", "--seed", "4")
        for one in labels_in(self.first):
            text = " ".join(one["printed"]).casefold()
            for field in one["fields"]:
                if not field.get("optional") and field["type"] != "address":
                    self.assertIn(field["text"].casefold(), text)

    def test_pictures_without_a_card(self):
        generate(self.first, "--negatives", "--count", "2")
        self.assertEqual([one["fields"] for one in labels_in(self.first)], [[], []])
        self.assertEqual(len(os.listdir(self.first)), 3)

    def test_a_sample_is_what_the_generator_makes(self):
        os.mkdir(self.first)
        generate(self.first, "--samples", "card.png")
        self.assertEqual(content(self.first, "card.png"), content(SAMPLES, "card.png"))

    def test_wrong_calls(self):
        self.assertEqual(generate(self.first, "--count", "0").returncode, 2)
        self.assertEqual(generate(self.first, "--samples", "no.jpg").returncode, 2)


if __name__ == "__main__":
    unittest.main()
