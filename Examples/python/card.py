#!/usr/bin/env python3
"""A host in Python, through the C interface: reads a card, prints what it says as JSON, and looks the person up.

usage: QVCARDSCAN_TOKEN=… card.py SERVER_URL PICTURE [BACK]

The library is found as the system finds libraries; QVCARDSCAN_LIBRARY names another file.
"""

import ctypes
import json
import os
import sys
import threading
from ctypes import CFUNCTYPE, POINTER, byref, c_char_p, c_int32, c_int64, c_size_t, c_uint32, c_void_p

ABI_VERSION = 1
FIELDS = ["", "name", "title", "company", "email", "phone", "address", "url", "twitter", "weibo", "linkedin", "facebook"]


class Field(ctypes.Structure):
    _fields_ = [("size", c_size_t), ("kind", c_int32), ("label", c_char_p), ("text", c_char_p)]


class Resource(ctypes.Structure):
    _fields_ = [("size", c_size_t), ("kind", c_int32), ("hash", c_char_p), ("type", c_char_p),
                ("bytes", c_void_p), ("length", c_size_t)]


COMPLETION = CFUNCTYPE(None, c_void_p, c_void_p)
RELEASE = CFUNCTYPE(None, c_void_p)

SIGNATURES = {
    "qv_abi_version": (c_uint32, []),
    "qv_set_server_url": (c_int32, [c_char_p, POINTER(c_void_p)]),
    "qv_set_search_credentials": (c_int32, [c_char_p, c_char_p, POINTER(c_void_p)]),
    "qv_pump": (c_size_t, []),
    "qv_request_create": (c_void_p, [c_char_p]),
    "qv_request_release": (None, [c_void_p]),
    "qv_request_add_picture_bytes": (c_int32, [c_void_p, c_char_p, c_size_t, c_char_p, POINTER(c_void_p)]),
    "qv_request_set_token": (c_int32, [c_void_p, c_char_p, POINTER(c_void_p)]),
    "qv_request_run": (c_int32, [c_void_p, COMPLETION, c_void_p, RELEASE, POINTER(c_void_p)]),
    "qv_response_release": (None, [c_void_p]),
    "qv_response_note": (c_char_p, [c_void_p]),
    "qv_response_error_count": (c_size_t, [c_void_p]),
    "qv_response_error": (c_void_p, [c_void_p, c_size_t]),
    "qv_response_field": (c_int32, [c_void_p, c_size_t, POINTER(Field)]),
    "qv_response_resource": (c_int32, [c_void_p, c_size_t, POINTER(Resource)]),
    "qv_search_start": (c_int32, [c_void_p, COMPLETION, c_void_p, RELEASE, POINTER(c_void_p)]),
    "qv_search_result_type": (c_int32, [c_void_p]),
    "qv_search_result_release": (None, [c_void_p]),
    "qv_error_domain": (c_char_p, [c_void_p]),
    "qv_error_code": (c_int64, [c_void_p]),
    "qv_error_message": (c_char_p, [c_void_p]),
    "qv_error_release": (None, [c_void_p]),
    "qv_error_underlying": (c_void_p, [c_void_p]),
}


class CardError(Exception):
    """What the library says went wrong."""


def load():
    library = ctypes.CDLL(os.environ.get("QVCARDSCAN_LIBRARY", "libqvcardscan-c.so.1"))
    for name, (result, arguments) in SIGNATURES.items():
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    if library.qv_abi_version() != ABI_VERSION:
        raise CardError("The library is of another version")
    return library


class CardReader:
    """Every callback of ctypes is kept as long as the reader, so that the library never calls one that is gone."""

    def __init__(self, server, token):
        self._library = load()
        self._token = token
        self._outcome = None
        self._done = threading.Event()
        self._completion = COMPLETION(self._complete)
        self._search_completion = COMPLETION(self._complete)
        self._no_release = RELEASE()
        self._call("qv_set_server_url", server.encode())
        self._call("qv_set_search_credentials", b"key", b"secret")

    def _call(self, name, *arguments):
        error = c_void_p()
        if getattr(self._library, name)(*arguments, byref(error)) != 0:
            raise self._error(error)

    def _error(self, error):
        """The error, and what caused it: what is underneath says it in words."""
        texts = []
        while error:
            texts.append(f"{self._library.qv_error_domain(error).decode()} {self._library.qv_error_code(error)}")
            message = self._library.qv_error_message(error)
            if message:
                texts.append(message.decode())
            cause = self._library.qv_error_underlying(error)
            self._library.qv_error_release(error)
            error = cause
        return CardError(": ".join(texts))

    def _complete(self, handle, _data):
        """On a thread of the library."""
        self._outcome = handle
        self._done.set()

    def read(self, pictures):
        """The handle of the response; the caller releases it."""
        request = self._library.qv_request_create(b"a-note")
        try:
            for picture in pictures:
                self._call("qv_request_add_picture_bytes", request, picture, len(picture), None)
            self._call("qv_request_set_token", request, self._token.encode())
            self._call("qv_request_run", request, self._completion, None, self._no_release)
        finally:
            self._library.qv_request_release(request)
        self._done.wait()
        return self._outcome

    def search(self, response):
        """What kind of profile was found; pumps the library's main thread meanwhile, which is this one."""
        self._done.clear()
        self._call("qv_search_start", response, self._search_completion, None, self._no_release)
        while not self._done.wait(0.01):
            self._library.qv_pump()
        kind = self._library.qv_search_result_type(self._outcome)
        self._library.qv_search_result_release(self._outcome)
        return kind

    def describe(self, response):
        if self._library.qv_response_error_count(response) > 0:
            raise self._error(self._library.qv_response_error(response, 0))
        return {
            "fields": [self._field(field) for field in self._all("qv_response_field", response, Field)],
            "pictures": {resource.hash.decode(): resource.length
                         for resource in self._all("qv_response_resource", response, Resource)},
            "note": self._library.qv_response_note(response).decode(),
        }

    def _all(self, name, response, structure):
        index, value = 0, structure(size=ctypes.sizeof(structure))
        while getattr(self._library, name)(response, index, byref(value)):
            yield value
            index += 1

    @staticmethod
    def _field(field):
        entry = {"kind": FIELDS[field.kind], "text": field.text.decode()}
        return entry | {"label": field.label.decode()} if field.label else entry

    def release(self, response):
        self._library.qv_response_release(response)


def main(arguments):
    token = os.environ.get("QVCARDSCAN_TOKEN")
    if len(arguments) not in (3, 4) or token is None:
        sys.exit("usage: QVCARDSCAN_TOKEN=… card.py SERVER_URL PICTURE [BACK]")
    pictures = []
    for name in arguments[2:]:
        with open(name, "rb") as file:
            pictures.append(file.read())
    reader = CardReader(arguments[1], token)
    response = reader.read(pictures)
    try:
        card = reader.describe(response)
        card["search"] = reader.search(response)
    finally:
        reader.release(response)
    print(json.dumps(card, ensure_ascii=False, indent=2))


if __name__ == "__main__":
    try:
        main(sys.argv)
    except (CardError, OSError) as error:
        sys.exit(str(error))
