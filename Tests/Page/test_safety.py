"""What a card, another web site, or a wrong name cannot do."""

import http.server
import threading

from browser import PageTest
from serving import answer, item, result

MARKUP = "&lt;img src=x onerror='window.top.struck=1'&gt;&lt;script&gt;window.top.struck=1&lt;/script&gt;"


class HostileCard(PageTest):
    xml = result(
        item("name", MARKUP), item("company", "&lt;/textarea&gt;&lt;b&gt;Firm&lt;/b&gt;"),
        item("email", "a@example.com&quot; onmouseover=&quot;window.top.struck=1"),
        item("url", "javascript:window.top.struck=1"),
        item("address", "&lt;iframe src=javascript:window.top.struck=1&gt;"), item("title", "T"))

    def test_its_text_is_text_everywhere(self):
        self.drop(**{"<img src=x onerror=window.struck=1>.jpg": open(self.picture, "rb").read()})
        self.wait(lambda: self.all(".field"), "the fields")
        self.wait(lambda: "<script>" in self.fieldText("name").lower(), "the name as it stands on the card")
        self.wait(lambda: self.all(".note-frame:not(.is-loading)"), "the note")
        self.assertIn("onerror", self.rows()[0][0].lower())
        self.assertFalse(self.all(".row b, .row img[src='x'], h1 img, h1 script, .fields b"))
        for frame in self.all(".note-frame"):
            self.browser.switch_to.frame(frame)
            self.assertFalse(self.all("script, iframe, [onerror], [onmouseover], a[href^='javascript']"))
            self.browser.switch_to.default_content()
        self.assertIsNone(self.run_script("return window.struck ?? null"))

    def test_a_note_runs_nothing_even_if_it_held_a_script(self):
        self.drop(**{"card.jpg": open(self.picture, "rb").read()})
        self.wait(lambda: self.all(".note-frame:not(.is-loading)"), "the note")
        frame = self.one(".note-frame")
        self.assertNotIn("allow-scripts", frame.get_attribute("sandbox"))
        self.assertNotIn("allow-same-origin", frame.get_attribute("sandbox"))
        folder, cookie = self.serving.enter()
        status, headers, body = self.serving.ask(folder + "api/cards/1/note", Cookie=cookie)
        self.assertEqual(status, 200)
        policy = headers["Content-Security-Policy"]
        self.assertTrue(policy.startswith("sandbox "))
        self.assertNotIn("script", policy.replace("allow-scripts", "ALLOWED"))
        self.assertNotIn(b"<script", body)

    def test_nothing_broke_the_policy(self):
        self.drop(**{"card.jpg": open(self.picture, "rb").read()})
        self.wait(lambda: self.all(".note-frame:not(.is-loading)"), "the note")
        self.assertEqual([line for line in self.browser.get_log("browser") if line["level"] == "SEVERE"], [])

    @property
    def picture(self):
        from serving import DATA
        return DATA / "front.jpg"


ATTACK = """<!doctype html><title>elsewhere</title><script>
const target = "%s";
const outcome = {};
const attempt = async (name, what) => { try { outcome[name] = await what(); } catch (e) { outcome[name] = "nothing"; } };
const load = (tag, address) => new Promise((done) => {
  const element = document.createElement(tag);
  element.onload = () => done("loaded"); element.onerror = () => done("nothing");
  element.src = address; document.body.append(element);
});
(async () => {
  await attempt("read", async () => (await fetch(target + "api/cards", {credentials: "include"})).status);
  await attempt("blind", async () => (await fetch(target + "api/cards", {mode: "no-cors", credentials: "include"})).type);
  await attempt("write", async () => (await fetch(target + "api/cards/1/save", {method: "POST", credentials: "include"})).status);
  await attempt("image", () => load("img", target + "icon.svg"));
  window.outcome = outcome;
})();
</script><body></body>"""


class OtherSite(PageTest):
    def elsewhere(self):
        page = (ATTACK % (f"http://127.0.0.1:{self.serving.port}" + self.folder)).encode()

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                self.send_response(200)
                self.send_header("Content-Type", "text/html")
                self.end_headers()
                self.wfile.write(page)

            def log_message(self, *_):
                pass

        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_port}/"

    def test_a_page_elsewhere_that_even_knows_the_folder_gets_nothing(self):
        self.readOne()
        self.folder, _ = self.serving.enter()
        self.browser.switch_to.new_window("tab")
        self.browser.get(self.elsewhere())
        outcome = self.wait(lambda: self.run_script("return window.outcome"), "the attempts")
        self.assertEqual(outcome["read"], "nothing")
        self.assertEqual(outcome["write"], "nothing")
        self.assertEqual(outcome["blind"], "nothing", "not even an answer that cannot be read")
        self.assertEqual(outcome["image"], "nothing")
        self.assertEqual(list(self.serving.book.glob("*.vcf")), [])

    def test_nobody_shows_the_page_in_a_frame(self):
        folder, _ = self.serving.enter()
        _, headers, _ = self.serving.ask(folder)
        self.assertIn("frame-ancestors 'none'", headers["Content-Security-Policy"])
        self.assertEqual(headers["X-Frame-Options"], "DENY")

    def test_names_and_sites_that_are_not_ours_are_refused(self):
        folder, cookie = self.serving.enter()
        port = self.serving.port
        asked = {
            "a name made to mean this machine": {"Host": f"rebound.example:{port}"},
            "another port": {"Host": "127.0.0.1:1"},
            "no port": {"Host": "127.0.0.1"},
            "another site": {"Origin": "http://elsewhere.example"},
            "another port's site": {"Origin": "http://127.0.0.1:1"},
            "a frame without a site": {"Origin": "null"},
            "what a browser calls another site": {"Sec-Fetch-Site": "cross-site"},
            "what a browser calls the same site": {"Sec-Fetch-Site": "same-site"},
        }
        for what, headers in asked.items():
            with self.subTest(what):
                status, _, body = self.serving.ask(folder + "api/cards?seen=0", Cookie=cookie, **headers)
                self.assertEqual((status, body), (403, b""))
        status, _, _ = self.serving.ask(folder + "api/cards?seen=0", Cookie=cookie, Host=f"localhost:{port}")
        self.assertEqual(status, 200)

    def test_the_key_stands_in_no_log(self):
        self.readOne()
        key = self.serving.url.split("key=")[1]
        self.assertNotIn(key, self.serving.messages())
