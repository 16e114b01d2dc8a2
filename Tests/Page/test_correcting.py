"""Putting fields right, keeping and handing on what comes of it."""

import os
import pathlib
import tempfile
import zipfile

from browser import By, Keys, PageTest
from serving import DATA, item, result


class Correcting(PageTest):
    def setUp(self):
        super().setUp()
        self.readOne()
        self.waitForNote("Ada Example")

    def test_the_note_follows_what_is_typed(self):
        self.type("name", "Ada Lovelace")
        self.waitForNote("Ada Lovelace")
        self.assertNotIn("Ada Example", self.noteText())
        self.wait(lambda: self.rows()[0][0] == "Ada Lovelace", "the new name in the list")
        self.assertIn("Corrected", self.field("name").text)

    def test_nothing_that_is_typed_while_answers_come_is_lost(self):
        area = self.field("title").find_element(By.TAG_NAME, "textarea")
        area.send_keys(Keys.CONTROL, "a")
        text = "Principal Engineer of Analytical Engines"
        for letter in text:
            area.send_keys(letter)
        self.waitForNote(text)
        self.assertEqual(self.fieldText("title"), text)

    def test_a_field_changes_its_kind(self):
        self.choose(self.field("title"), "company")
        self.wait(lambda: self.all(".field.kind-company"), "the company")
        self.wait(lambda: self.all(".box.kind-company"), "the box in its new colour")
        self.assertFalse(self.all(".field.kind-title"))

    def test_a_corrected_name_counts_more_than_another(self):
        self.choose(self.field("title"), "name")
        self.wait(lambda: self.rows()[0][0] == "Engineer", "the other name")
        self.wait(lambda: self.noteText().startswith("Engineer"), "the other name in the note")

    def test_fields_are_added_and_removed(self):
        self.choose(self.one(".field-new"), "mobile")
        self.press("Add field")
        self.wait(lambda: self.all(".field.kind-mobile"), "the new field")
        self.assertEqual(self.browser.switch_to.active_element.accessible_name, "Mobile")
        self.browser.switch_to.active_element.send_keys("+44 7700 900123")
        self.waitForNote("+44 7700 900123")
        self.press("Remove Phone +1 555 0100")
        self.wait(lambda: "+1 555 0100" not in self.noteText() and self.noteText(), "the note without the number")
        self.assertFalse(self.all(".field.kind-phone"))

    def test_reading_again_brings_back_what_was_read(self):
        self.type("name", "Somebody Else")
        self.waitForNote("Somebody Else")
        self.more("Read again")
        self.waitForNote("Ada Example")

    def choose(self, where, kind):
        where.find_element(By.CSS_SELECTOR, f'select option[value="{kind}"]').click()


class Saving(PageTest):
    def test_a_new_contact_and_then_the_same_one_updated(self):
        self.readOne()
        self.press("Save to address book")
        self.waitForText(".save-outcome", "Saved as a new contact")
        (file,) = self.serving.book.glob("*.vcf")
        self.assertIn(str(file), self.one(".save-outcome").text)
        self.assertIn("FN:Ada Example", file.read_text(encoding="utf-8"))
        self.wait(lambda: self.rows()[0][1] == "Saved", "the mark in the list")
        self.type("phone", "+1 555 0142")
        self.wait(lambda: self.button("Save the changes").is_enabled(), "the button for the changes")
        self.assertIn("changes that are not saved yet", self.one(".save-outcome").text)
        self.press("Save the changes")
        self.waitForText(".save-outcome", 'Updated "Ada Example", found by e-mail address')
        self.assertEqual(list(self.serving.book.glob("*.vcf")), [file])
        self.assertIn("+1 555 0142", file.read_text(encoding="utf-8"))

    def test_a_failure_says_why(self):
        self.readOne()
        self.serving.book.rmdir()
        self.serving.book.write_text("in the way", encoding="utf-8")
        self.press("Save to address book")
        self.waitForText(".save-outcome", "Not saved.")
        self.assertIn("is-problem", self.one(".save-outcome").get_attribute("class"))


class Downloading(PageTest):
    xml = result(
        item("name", "Zo&#235; Fa&#231;ade / Sons"), item("email", "zoe@example.com"), item("title", "Head"),
        item("phone", "+1 555 0100"))

    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory(prefix="qv-downloads-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.browser.execute_cdp_cmd(
            "Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": str(self.folder)})
        self.readOne()

    def download(self, button, pattern):
        self.button(button).click()
        return self.wait(lambda: next(self.folder.glob(pattern), None), pattern)

    def test_the_contact_as_a_vcard(self):
        file = self.download("vCard", "*.vcf")
        self.assertEqual(file.name, "001 Zoë Façade Sons.vcf")
        text = file.read_text(encoding="utf-8")
        self.assertTrue(text.startswith("BEGIN:VCARD"))
        self.assertIn("zoe@example.com", text)

    def test_the_note_in_the_markup_of_the_host(self):
        text = self.download("QVML", "*.qvml").read_text(encoding="utf-8")
        self.assertIn("Zoë Façade", text)
        self.assertIn("qv-media", text)

    def test_everything_as_a_zip_file(self):
        self.type("title", "Chief")
        self.waitForNote("Chief")
        with zipfile.ZipFile(self.download("Download all", "*.zip")) as archive:
            self.assertIsNone(archive.testzip())
            names = archive.namelist()
            folder = "001 Zoë Façade Sons/"
            for name in ["contact.vcf", "contact.json", "card.json", "note.html", "note.qvml"]:
                self.assertIn(folder + name, names)
            self.assertIn("contacts.vcf", names)
            self.assertFalse([name for name in names if name.startswith("/") or ".." in name])
            self.assertIn("Chief", archive.read(folder + "note.html").decode())
            self.assertIn("TITLE:Chief", archive.read("contacts.vcf").decode())
            pictures = [archive.read(name) for name in names if name.startswith(folder + "resources/")]
        self.assertIn((DATA / "front.jpg").read_bytes(), pictures)
        self.assertEqual(
            [entry for entry in os.listdir(next(self.serving.temporary.iterdir())) if "work" in entry], [],
            "what was put together is gone")
