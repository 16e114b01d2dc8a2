"""One Chromium without a window for all tests, and what the tests do with the page in it."""

import atexit
import base64
import pathlib
import tempfile
import time
import unittest

from selenium import webdriver
from selenium.common.exceptions import (
    NoSuchElementException, NoSuchFrameException, StaleElementReferenceException, WebDriverException)
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

from serving import DATA, Serving

__all__ = ["By", "Keys", "PageTest"]

FLAGS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
         "--disable-component-update", "--disable-sync", "--hide-scrollbars", "--lang=en"]

_browser = None


def browser():
    global _browser
    if _browser is None:
        profile = tempfile.TemporaryDirectory(prefix="qv-chromium-", ignore_cleanup_errors=True)
        options = webdriver.ChromeOptions()
        for flag in [*FLAGS, f"--user-data-dir={profile.name}"]:
            options.add_argument(flag)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        _browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        atexit.register(profile.cleanup)
        atexit.register(_browser.quit)
    return _browser


class PageTest(unittest.TestCase):
    """A test with a program of its own and an empty window."""

    xml = None

    def setUp(self):
        self.serving = Serving(self.xml)
        self.addCleanup(self.serving.stop)
        self.browser = browser()
        self.addCleanup(self.closeWindows)
        self.size(1280, 900)
        self.open()

    def open(self):
        self.browser.get(self.serving.url)
        self.wait(lambda: self.all(".top"), "the page")

    def openWindow(self):
        """A second window with the same page; the first one's handle."""
        first = self.browser.current_window_handle
        self.browser.switch_to.new_window("tab")
        self.size(1280, 900)
        self.open()
        return first

    def closeWindows(self):
        """A window is left, and nothing in it."""
        first, *others = self.browser.window_handles
        for other in others:
            self.browser.switch_to.window(other)
            self.browser.close()
        self.browser.switch_to.window(first)
        self.browser.get("about:blank")
        self.browser.get_log("browser")

    def size(self, width, height, scheme="light"):
        metrics = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False}
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", metrics)
        media = {"features": [{"name": "prefers-color-scheme", "value": scheme}]}
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", media)

    # What is there.

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def run_script(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

    def wait(self, condition, what, seconds=15):
        """Waits until something holds, and gives it."""
        end = time.monotonic() + seconds
        while True:
            try:
                if found := condition():
                    return found
            except (NoSuchElementException, NoSuchFrameException, StaleElementReferenceException):
                pass
            if time.monotonic() > end:
                log = self.browser.get_log("browser")
                self.fail(f"waited in vain for {what}\n{self.one('body').text}\n{log}\n{self.serving.messages()}")
            time.sleep(0.02)

    def waitForText(self, selector, text):
        return self.wait(lambda: text in self.one(selector).text, f"“{text}” in {selector}")

    def rows(self):
        return [row.text.split("\n") for row in self.all(".row")]

    def field(self, kind, number=0):
        return self.all(f".field.kind-{kind}")[number]

    def fieldText(self, kind, number=0):
        return self.field(kind, number).find_element(By.TAG_NAME, "textarea").get_property("value")

    def noteText(self):
        """What the frame that is shown says."""
        frames = self.all(".note-frame:not(.is-loading)")
        if len(frames) != 1:
            return ""
        self.browser.switch_to.frame(frames[0])
        try:
            return self.one("body").text
        except WebDriverException as gone:
            # A new note took the frame's place meanwhile; the driver has no exception of its own for that.
            if "detached" not in gone.msg:
                raise
            return ""
        finally:
            self.browser.switch_to.default_content()

    def waitForNote(self, text):
        return self.wait(lambda: text in self.noteText(), f"“{text}” in the note")

    def press(self, name):
        """Waits for a button of that name that can be used, and presses it."""
        def find():
            button = self.button(name)
            return button.is_enabled() and button.get_attribute("aria-disabled") != "true" and button
        self.wait(find, f"the button “{name}”").click()

    def button(self, name):
        """The button of that name that can be seen."""
        for button in self.all("button, a.button, summary"):
            if button.is_displayed() and name in (button.text, button.accessible_name):
                return button
        raise NoSuchElementException(name)

    # What is done.

    def pick(self, *names):
        files = [str(name if pathlib.Path(name).is_absolute() else DATA / name) for name in names]
        self.one("input[type=file]").send_keys("\n".join(files))

    def drop(self, **files):
        """Drops files of those names and bytes on the page, as a file manager does."""
        encoded = {name: base64.b64encode(bytes_).decode() for name, bytes_ in files.items()}
        self.run_script(
            """
            const transfer = new DataTransfer();
            for (const [name, bytes] of Object.entries(arguments[0]))
                transfer.items.add(new File([Uint8Array.from(atob(bytes), (c) => c.charCodeAt(0))], name));
            for (const kind of ["dragenter", "dragover", "drop"])
                document.body.dispatchEvent(new DragEvent(kind, {dataTransfer: transfer, bubbles: true, cancelable: true}));
            """,
            encoded)

    def readOne(self, name="front.jpg"):
        """Adds a picture and waits until its card is read and shown."""
        self.pick(name)
        self.wait(lambda: self.all(".field"), "the fields")

    def type(self, kind, text, number=0):
        area = self.field(kind, number).find_element(By.TAG_NAME, "textarea")
        area.send_keys(Keys.CONTROL, "a")
        area.send_keys(text)

    def more(self, action):
        self.one("summary").click()
        self.press(action)
