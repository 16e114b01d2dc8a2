"""From photographs to fields: picking, dropping, watching, looking."""

import unittest

from browser import By, PageTest
from serving import DATA, SOURCE, answer, item, result


class Welcome(PageTest):
    def test_an_empty_page_explains_what_to_do(self):
        self.assertIn("Turn business cards into contacts", self.one(".welcome").text)
        self.assertTrue(self.button("Choose photographs").is_enabled())
        self.assertFalse(self.one(".desk").is_displayed())

    def test_the_sample_card_is_read_like_any_other(self):
        self.press("Try a sample card")
        self.waitForText(".progress-text", "1 card is ready")
        self.assertEqual(self.rows()[0][0], "Ada Example")
        self.assertFalse(self.all(".welcome")[0].is_displayed())

    def test_the_key_is_gone_from_the_address_and_the_page_can_be_loaded_again(self):
        self.assertNotIn("key", self.browser.current_url)
        self.browser.refresh()
        self.wait(lambda: self.one(".welcome").is_displayed(), "the page after a reload")


class Reading(PageTest):
    def test_several_pictures_are_read_one_after_the_other(self):
        self.pick("front.jpg", "card.webp", "card.tiff")
        self.waitForText(".progress-text", "3 cards are ready")
        self.assertEqual([row[0] for row in self.rows()], ["Ada Example"] * 3)
        self.assertEqual(self.fieldText("name"), "Ada Example")
        self.waitForNote("ada@example.com")

    def test_dropped_pictures_are_read(self):
        self.drop(**{"one.jpg": (DATA / "front.jpg").read_bytes()})
        self.waitForText(".progress-text", "1 card is ready")
        self.assertFalse("is-dropping" in self.one("body").get_attribute("class"))

    def test_fields_lie_on_the_picture_in_their_colours(self):
        self.readOne()
        boxes = self.wait(lambda: self.all(".box"), "the boxes")
        self.assertEqual(len(boxes), 5)
        colours = {box.value_of_css_property("stroke") for box in boxes}
        self.assertEqual(len(colours), 5)
        colour = self.one(".box.kind-name").value_of_css_property("stroke")
        self.assertEqual(colour, self.run_script(
            "return getComputedStyle(arguments[0], '::before').backgroundColor", self.field("name")))
        # The box of "1.5 2.25 30 8" in a picture of 120 x 70, with a margin around it.
        box, picture = self.one(".box.kind-name").rect, self.one(".card-picture").rect
        scale = min(picture["width"] / 120, picture["height"] / 70)
        left = picture["x"] + (picture["width"] - 120 * scale) / 2
        self.assertAlmostEqual((box["x"] + box["width"] / 2 - left) / scale, 16.5, delta=0.6)
        self.assertAlmostEqual((box["y"] + box["height"] / 2 - picture["y"]) / scale, 6.25, delta=0.6)

    def test_a_picture_without_text_says_so_and_takes_fields_by_hand(self):
        self.serving.tell(result())
        self.pick("front.jpg")
        self.waitForText(".problem", "Nothing could be read in the picture")
        self.press("Add field")
        self.wait(lambda: self.all(".field.kind-phone"), "the new field")
        self.type("phone", "+1 555 0199")
        self.waitForNote("+1 555 0199")

    def test_a_field_that_is_not_sure_asks_to_be_checked(self):
        self.serving.tell(result(item("name", "Ada Example", weight=40), item("email", "ada@example.com", weight=95)))
        self.readOne()
        self.assertIn("check", self.field("name").text)
        self.assertIn("only 40 % sure", self.field("name").text)
        self.assertNotIn("check", self.field("email").text)


class Turned(PageTest):
    xml = result(item("name", "Ada Example", frame=(100, 300, 20, 400), orient=90), width=768, height=1024)

    def test_a_turned_picture_stands_upright_with_its_boxes(self):
        self.readOne()
        picture, box = self.one(".card-picture").rect, self.one(".box").rect
        self.assertEqual(self.one(".card-picture").get_dom_attribute("viewBox"), "-128 128 1024 768")
        self.assertGreater(box["width"], 5 * box["height"], "the name is a line again")
        self.assertGreater(picture["width"], picture["height"])


class Linking(PageTest):
    def marked(self):
        return (
            [box.get_attribute("class") for box in self.all(".box.is-marked")],
            [field.get_attribute("class") for field in self.all(".field.is-marked")])

    def test_pointing_at_a_box_marks_its_field_and_the_other_way_round(self):
        self.readOne()
        self.point(self.one(".box.kind-title"))
        self.wait(lambda: self.all(".field.kind-title.is-marked"), "the marked field")
        self.point(self.field("email"))
        self.wait(lambda: self.all(".box.kind-email.is-marked"), "the marked box")
        boxes, fields = self.marked()
        self.assertEqual((len(boxes), len(fields)), (1, 1))

    def test_going_into_a_field_marks_its_box_and_a_click_on_a_box_goes_into_its_field(self):
        self.readOne()
        self.one(".box.kind-phone").click()
        area = self.field("phone").find_element(By.TAG_NAME, "textarea")
        self.assertEqual(self.browser.switch_to.active_element, area)
        self.assertTrue(self.all(".box.kind-phone.is-marked"))
        self.assertEqual(len(self.all(".box.is-marked")), 1)

    def point(self, element):
        from selenium.webdriver import ActionChains
        ActionChains(self.browser).move_to_element(element).perform()


class Sides(PageTest):
    xml = answer("front-poor.xml")

    def setUp(self):
        super().setUp()
        self.pictures = {name: (DATA / "front.jpg").read_bytes() for name in ["x-front.jpg", "x-back.jpg"]}

    def sides(self):
        return [segment.text for segment in self.all(".segment") if segment.is_displayed()]

    def ready(self, count):
        self.wait(lambda: len(self.all('.row[data-state="done"]')) == count == len(self.all(".row")), f"{count} cards")

    def test_front_and_back_are_paired_by_their_names(self):
        self.drop(**self.pictures, **{"y.jpg": (DATA / "front.jpg").read_bytes()})
        self.ready(2)
        self.assertEqual(self.sides(), ["Front", "Back"])
        self.assertEqual(len(self.all(".row")[0].find_elements(By.TAG_NAME, "img")), 2)

    def test_two_cards_are_paired_from_the_menu_and_separated_again(self):
        self.pick("front.jpg", "card.webp")
        self.ready(2)
        self.one("summary").click()
        self.run_script(
            "const s = document.querySelector('#pairing'); s.value = s.options[1].value;"
            "s.dispatchEvent(new Event('change', {bubbles: true}))")
        self.press("Pair")
        self.ready(1)
        self.assertEqual(self.sides(), ["Front", "Back"])
        self.more("Make two cards of it")
        self.ready(2)
        self.assertEqual(self.sides(), [])

    def test_a_card_dragged_onto_another_becomes_its_back(self):
        self.pick("front.jpg", "card.webp")
        self.ready(2)
        self.run_script(
            """
            const [one, other] = document.querySelectorAll(".row");
            const transfer = new DataTransfer();
            const send = (row, kind) =>
                row.dispatchEvent(new DragEvent(kind, {dataTransfer: transfer, bubbles: true, cancelable: true}));
            send(other, "dragstart"); send(one, "dragover"); send(one, "drop"); send(other, "dragend");
            """)
        self.ready(1)
        self.assertEqual(self.sides(), ["Front", "Back"])


class Unfit(PageTest):
    def test_a_file_that_is_no_picture_is_named_and_the_others_are_read(self):
        self.drop(**{"notes.txt": b"shopping list", "card.jpg": (DATA / "front.jpg").read_bytes()})
        self.waitForText(".toast-problem", "notes.txt")
        self.assertIn("is not an image that can be read", self.one(".toast-problem").text)
        self.waitForText(".progress-text", "1 card is ready")

    def test_a_damaged_picture_says_what_to_do(self):
        self.pick("header-only.jpg")
        self.waitForText(".toast-problem", "Take the photograph again")
        self.assertTrue(self.one(".welcome").is_displayed())
        self.press("Dismiss")
        self.assertFalse(self.all(".toast-problem"))

    def test_a_picture_that_is_too_large_is_not_sent(self):
        self.run_script(
            """
            const transfer = new DataTransfer();
            transfer.items.add(new File([new Uint8Array(65 * 1024 * 1024)], "huge.jpg"));
            document.body.dispatchEvent(new DragEvent("drop", {dataTransfer: transfer, bubbles: true, cancelable: true}));
            """)
        self.waitForText(".toast-problem", "“huge.jpg” is too large")

    def test_a_recogniser_that_does_not_start_is_reported_and_can_be_tried_again(self):
        self.serving.tell(answer("front.xml"), mode="ends")
        self.pick("front.jpg")
        self.waitForText(".problem", "ended before it was ready")
        self.assertIn("This card could not be read", self.one(".problem").text)
        self.serving.tell(answer("front.xml"))
        self.press("Try again")
        self.waitForText(".progress-text", "1 card is ready")


if __name__ == "__main__":
    unittest.main()
