"""The whole measure on three pictures: one that the server reads, one that is no card, one that is no picture."""

import json
import os
import subprocess
import sys
import tempfile
import unittest

PROGRAMS = os.environ.get("QV_PROGRAMS", "")
SAMPLES = os.environ.get("QV_SAMPLES", "")
MEASURE = os.environ.get("QV_MEASURE", "")


def measure(*arguments):
    return subprocess.run([sys.executable, MEASURE, "--programs", PROGRAMS, *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False, universal_newlines=True)


class Command(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write_labels(self, *labels):
        path = os.path.join(self.folder, "labels.jsonl")
        with open(path, "w", encoding="utf-8") as file:
            file.writelines(json.dumps(label) + "\n" for label in labels)
        return path

    def test_reads_and_reports(self):
        with open(os.path.join(SAMPLES, "truth.jsonl"), encoding="utf-8") as file:
            card = next(label for label in map(json.loads, file) if label["id"] == "phone-exif")
        with open(os.path.join(self.folder, "broken.jpg"), "w", encoding="ascii") as file:
            file.write("no picture")
        os.symlink(os.path.join(SAMPLES, card["image"]), os.path.join(self.folder, card["image"]))
        labels = self.write_labels(card, {"image": "broken.jpg", "kind": "none", "lang": "en", "rotation": 0,
                                          "fields": []})
        out = os.path.join(self.folder, "out")
        done = measure(self.folder, labels, "--turns", "--json", out + ".json", "--predictions", out + ".jsonl",
                       "--answers", out)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("broken.jpg: the picture cannot be read", done.stdout)
        with open(out + ".json", encoding="utf-8") as file:
            figures = json.load(file)
        self.assertEqual((figures["pictures"], figures["cards"], figures["upright"]), (8, 4, 4))
        self.assertEqual(figures["all"]["printed"], 4 * len(card["fields"]))
        self.assertGreater(figures["all"]["f1"], 0.8)
        self.assertGreater(figures["memory_mib"], 0)
        with open(out + ".jsonl", encoding="utf-8") as file:
            predictions = [json.loads(line) for line in file]
        self.assertEqual([one["orient"] for one in predictions[:4]], [0, 270, 180, 90])
        self.assertIn("phone-exif.jpg.90.xml", os.listdir(out))

    def test_wrong_calls(self):
        labels = self.write_labels()
        for arguments in ((self.folder,), (self.folder, "/no/such/file"), ("/no/such/folder", labels),
                          (self.folder, labels), (self.folder, labels, "--workers", "0")):
            with self.subTest(arguments=arguments):
                done = measure(*arguments)
                self.assertEqual(done.returncode, 2)
                self.assertIn("measure", done.stderr)
                self.assertNotIn("Traceback", done.stderr)


if __name__ == "__main__":
    unittest.main()
