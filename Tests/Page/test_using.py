"""The page with the keyboard alone, in two windows, in all sizes, and when the program goes away."""

import re
import signal
import unittest

from browser import By, Keys, PageTest
from serving import KEY, SOURCE, Serving, answer


class Keyboard(PageTest):
    def type_here(self, *keys):
        self.browser.switch_to.active_element.send_keys(*keys)

    def focused(self):
        return self.browser.switch_to.active_element

    def test_everything_without_a_pointer(self):
        self.pick("front.jpg", "card.webp", "card.tiff")
        self.waitForText(".progress-text", "3 cards are ready")
        self.run_script("document.querySelector('.top .skip').focus()")
        for _ in range(4):
            self.type_here(Keys.TAB)
            if self.focused().get_attribute("role") == "option":
                break
        first = self.focused()
        self.assertEqual(first.get_attribute("aria-selected"), "true")
        self.type_here(Keys.ARROW_DOWN)
        self.assertNotEqual(self.focused(), first)
        self.assertEqual(self.focused().get_attribute("aria-selected"), "true")
        self.type_here(Keys.END)
        self.assertEqual(self.focused(), self.all(".row")[2])
        self.type_here(Keys.HOME)
        self.assertEqual(self.focused(), first)
        # Into the fields, and a correction.
        self.type_here(Keys.ENTER)
        self.assertEqual(self.focused().accessible_name, "Name")
        self.type_here(Keys.CONTROL, "a")
        self.type_here("Grace Hopper")
        self.waitForNote("Grace Hopper")
        # Away with it, and back again.
        self.run_script("arguments[0].focus()", first)
        self.type_here(Keys.DELETE)
        self.wait(lambda: len(self.all(".row")) == 2, "the card to go")
        self.assertEqual(self.focused().get_attribute("role"), "option", "the focus stays in the list")
        self.button("Undo").send_keys(Keys.ENTER)
        self.wait(lambda: len(self.all(".row")) == 3, "the card to come back")
        self.assertEqual(self.rows()[0][0], "Grace Hopper", "with what was corrected")

    def test_the_list_is_one_stop_and_every_control_has_a_name(self):
        self.pick("front.jpg", "card.webp")
        self.waitForText(".progress-text", "2 cards are ready")
        self.wait(lambda: self.all(".field"), "the fields")
        self.assertEqual(len(self.all('.row[tabindex="0"]')), 1)
        for control in self.all("button, a[href], select, textarea, iframe, [role=option], svg[role=img]"):
            hidden = self.run_script("return arguments[0].closest('details:not([open]) .more-list') !== null", control)
            if control.is_displayed() and not hidden:
                self.assertTrue(control.accessible_name, control.get_attribute("outerHTML")[:120])
        self.assertEqual(self.one(".progress-text").get_attribute("aria-live"), "polite")
        self.assertEqual(self.one("html").get_attribute("lang"), "en")
        self.assertEqual(len([heading for heading in self.all("h1") if heading.is_displayed()]), 1)


class TwoWindows(PageTest):
    def test_both_show_the_same_cards_and_corrections(self):
        first = self.openWindow()
        second = self.browser.current_window_handle
        self.readOne()
        self.browser.switch_to.window(first)
        self.wait(lambda: self.all(".field"), "the card in the first window")
        self.type("name", "Ada Lovelace")
        self.waitForNote("Ada Lovelace")
        self.browser.switch_to.window(second)
        self.wait(lambda: self.fieldText("name") == "Ada Lovelace", "the correction in the second window")
        self.waitForNote("Ada Lovelace")
        self.type("title", "Countess")
        self.browser.switch_to.window(first)
        self.waitForNote("Countess")
        self.assertIn("Ada Lovelace", self.noteText())
        self.browser.close()
        self.browser.switch_to.window(second)
        self.more("Remove card")
        self.wait(lambda: self.one(".welcome").is_displayed(), "the empty page")

    def test_what_was_removed_in_the_other_window_is_said(self):
        self.readOne()
        folder, cookie = self.serving.enter()
        # The page has not heard of it yet when it asks.
        self.browser.execute_async_script(
            "import('./pile.js').then((m) => { m.Pile.prototype.dispatchEvent = () => true; arguments[0](); })")
        status, _, _ = self.serving.ask(folder + "api/cards/1", "DELETE", Cookie=cookie)
        self.assertEqual(status, 204)
        self.press("Save to address book")
        self.waitForText(".toast-problem", "It may have been removed in another window")


class Gone(PageTest):
    def setUp(self):
        super().setUp()
        self.serving.stop()
        self.serving = Serving(key=KEY)
        self.addCleanup(lambda: self.serving.stop())
        self.open()

    def restart(self, key):
        self.serving.end(signal.SIGKILL)
        self.waitForText(".banner", "The program cannot be reached")
        self.assertEqual(self.one(".banner").get_attribute("role"), "alert")
        self.assertIn("qvcardscan serve", self.one(".banner").text)
        old = self.serving
        self.addCleanup(old.stop)
        self.serving = Serving(port=old.port, folder=old.folder, key=key)

    def test_the_page_goes_on_by_itself_when_the_key_still_fits(self):
        self.readOne()
        self.restart(KEY)
        self.wait(lambda: not self.one(".banner").is_displayed(), "the banner to go")
        self.waitForText(".toasts", "The program was started anew")
        self.assertTrue(self.one(".welcome").is_displayed())
        self.readOne()

    def test_what_is_typed_while_the_program_is_away_is_not_lost(self):
        self.readOne()
        # As behind a cut line: requests fail, and the program lives on.
        self.run_script("window.line = fetch; window.fetch = () => Promise.reject(new TypeError('cut'))")
        self.type("name", "Ada Lovelace")
        self.run_script("setTimeout(() => document.body.dataset.tried = 1, 600)")
        self.wait(lambda: self.one("body").get_attribute("data-tried"), "the first attempts")
        self.assertNotIn("Ada Lovelace", self.noteText())
        self.run_script("window.fetch = window.line")
        self.waitForNote("Ada Lovelace")

    def test_another_key_is_explained(self):
        self.restart("another-key-that-nobody-knows")
        self.waitForText(".banner", "Open the address that it printed last")

    def test_the_program_ends_clean_when_it_is_asked_to(self):
        self.readOne()
        self.assertEqual(len(list(self.serving.temporary.glob("qvcardscan-page-*"))), 1)
        self.assertEqual(self.serving.end(signal.SIGINT), 0)
        self.assertEqual(list(self.serving.temporary.iterdir()), [], "no picture is left")
        self.waitForText(".banner", "The program cannot be reached")


class Sizes(PageTest):
    def test_nothing_sticks_out_at_any_width(self):
        self.pick("front.jpg", "card.webp", "card.tiff")
        self.waitForText(".progress-text", "3 cards are ready")
        self.waitForNote("Ada Example")
        columns = {}
        for width in [320, 390, 800, 1180, 1440]:
            self.size(width, 900)
            wide = self.run_script("return document.documentElement.scrollWidth")
            self.assertLessEqual(wide, width)
            lefts = {self.one(part).rect["x"] // 100 for part in [".side", ".picture-panel", ".fields-panel"]}
            columns[width] = len(lefts)
        self.assertEqual(columns, {320: 1, 390: 1, 800: 2, 1180: 3, 1440: 3})


class Colours(unittest.TestCase):
    """Text against what it stands on, by the formula of WCAG 2.1: at least 4.5 to 1."""

    PAIRS = [("text", "panel"), ("text", "back"), ("text", "raised"), ("soft", "panel"), ("soft", "back"),
             ("soft", "raised"), ("on-accent", "accent"), ("on-accent", "accent-strong"), ("good", "good-soft"),
             ("good", "back"), ("good", "panel"), ("warn", "warn-soft"), ("bad", "bad-soft"), ("bad", "panel"),
             ("bad", "back"), ("panel", "text")]

    def test_light_and_dark(self):
        style = (SOURCE / "Host/Page/Web/style.css").read_text(encoding="utf-8")
        light, dark = style.split("@media (prefers-color-scheme: dark)", 1)
        dark = dark.split("\n}\n", 1)[0]
        self.check(self.variables(light), self.kinds(light))
        self.check(self.variables(light) | self.variables(dark), self.kinds(dark))

    def check(self, colours, kinds):
        for front, back in self.PAIRS:
            self.assertGreaterEqual(self.contrast(colours[front], colours[back]), 4.5, (front, back))
        self.assertGreaterEqual(len(kinds), 11)
        for kind, colour in kinds.items():
            self.assertGreaterEqual(self.contrast(colour, colours["panel"]), 4.5, kind)

    @staticmethod
    def variables(style):
        return dict(re.findall(r"--([\w-]+): (#[0-9a-f]{6});", style.split(".kind-name")[0]))

    @staticmethod
    def kinds(style):
        return {kind: colour for kinds, colour in re.findall(r"([^{}]*)\{ --kind: (#\w{6})", style)
                for kind in re.findall(r"\.kind-(\w+)", kinds)}

    @staticmethod
    def contrast(one, other):
        def luminance(colour):
            parts = [int(colour[i:i + 2], 16) / 255 for i in (1, 3, 5)]
            red, green, blue = [part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
            return 0.2126 * red + 0.7152 * green + 0.0722 * blue
        dark, light = sorted([luminance(one), luminance(other)])
        return (light + 0.05) / (dark + 0.05)
