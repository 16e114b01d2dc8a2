"""The library in a host of its own: what its log and its errors say."""

import ctypes
import os
import unittest

from marks import SECRETS
from roads import BINARIES, CARD_WORDS, FRONT, Road
from servers import always

# All messages that may hold what stands on a card.
MAY_TELL_OF_CARDS = (
    "<Debug> Card reco result: ",
    "===> Parser found characters: ",
    "<INFO> Merged Contact:\n",
    "<INFO> Social Search Response: ",
    "WARNING: Exception ",
    "Exception when performing name / email normalization: ",
)

SINK = ctypes.CFUNCTYPE(None, ctypes.c_char_p, ctypes.c_size_t, ctypes.c_void_p)
COMPLETION = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_void_p)
DONE = ctypes.CFUNCTYPE(ctypes.c_int32, ctypes.c_void_p)


def load():
    library = ctypes.CDLL(str(BINARIES.parent / "lib/libqvcardscan-c.so"))
    for name in ("qv_request_create", "qv_response_error", "qv_error_underlying"):
        getattr(library, name).restype = ctypes.c_void_p
    for name in ("qv_error_message", "qv_error_domain", "qv_response_raw_result", "qv_response_note"):
        getattr(library, name).restype = ctypes.c_char_p
    library.qv_response_error_count.restype = ctypes.c_size_t
    return library


@unittest.skipIf(os.environ.get("QV_SANITIZED"), "Python does not bring the sanitizer that the library needs")
class Log(Road):
    def setUp(self):
        super().setUp()
        self.library = load()
        self.lines, self.responses, self.results = [], [], []
        # Kept, because the library calls them.
        self.sink = SINK(lambda text, length, _: self.lines.append(ctypes.string_at(text, length).decode()))
        self.completion = COMPLETION(lambda response, _: self.responses.append(response))
        self.search_completion = COMPLETION(lambda result, _: self.results.append(result))
        self.library.qv_set_log_sink(self.sink, None, None)
        key, secret = SECRETS["search key"].encode(), SECRETS["search secret"].encode()
        self.library.qv_set_search_credentials(key, secret, None)
        self.library.qv_set_search_time_out(ctypes.c_double(0.0))

    def tearDown(self):
        self.library.qv_set_log_sink(ctypes.cast(None, SINK), None, None)
        self.library.qv_set_search_credentials(None, None, None)
        self.library.qv_use_system_log()
        super().tearDown()

    def pump_until(self, condition):
        self.library.qv_pump_until(DONE(lambda _: condition()), None, ctypes.c_double(60))
        self.assertTrue(condition())

    def run_card(self, url):
        self.library.qv_set_server_url(url.encode(), None)
        request = self.library.qv_request_create(b"a note")
        handle = ctypes.c_void_p(request)
        self.library.qv_request_add_picture_file(handle, str(FRONT).encode(), None, None)
        self.library.qv_request_set_token(handle, SECRETS["recognition token"].encode(), None)
        self.library.qv_request_set_completes_on_main_thread(handle, 1)
        known = len(self.responses)
        self.assertEqual(0, self.library.qv_request_run(handle, self.completion, None, None, None))
        self.pump_until(lambda: len(self.responses) > known)
        self.library.qv_request_release(handle)
        return ctypes.c_void_p(self.responses[-1])

    def look_at_errors(self, response):
        count = self.library.qv_response_error_count(response)
        for index in range(count):
            error = self.library.qv_response_error(response, ctypes.c_size_t(index))
            while error:
                for read in (self.library.qv_error_message, self.library.qv_error_domain):
                    self.leaks.look("an error's text", read(ctypes.c_void_p(error)) or b"")
                error = self.library.qv_error_underlying(ctypes.c_void_p(error))
        return count

    def test_the_log_and_the_errors_hold_no_secret(self):
        answers = [
            self.recogniser.answer,
            always(401),
            always(200, {}, b"\xff"),
            always(307, {"Location": self.stranger.url("/x")}),
            lambda request: None,
        ]
        errors = 0
        for answer in answers:
            self.recogniser.answer = answer
            response = self.run_card(self.recogniser.url("/recognise"))
            errors += self.look_at_errors(response)
            known = len(self.results)
            if self.library.qv_search_start(response, self.search_completion, None, None, None) == 0:
                self.pump_until(lambda: len(self.results) > known)
        self.assertGreaterEqual(errors, 3)
        self.assertGreater(len(self.lines), 10)
        self.leaks.look("the log", "\n".join(self.lines))
        self.expect_no_leak()

    def test_card_text_is_in_the_messages_that_tell_of_cards_only(self):
        response = self.run_card(self.recogniser.url("/recognise"))
        self.library.qv_search_start(response, self.search_completion, None, None, None)
        self.pump_until(lambda: len(self.results) > 0)
        telling = [line for line in self.lines if any(word in line for word in CARD_WORDS)]
        self.assertTrue(any(line.startswith(MAY_TELL_OF_CARDS[0]) for line in telling))
        self.assertEqual([], [line for line in telling if not line.startswith(MAY_TELL_OF_CARDS)])


if __name__ == "__main__":
    unittest.main()
