"""The C library as it is: see <fexora/c.h>, which has every function's contract.

A wrong type here is a broken memory: the tests compare each struct's size with the C compiler's.
"""
from __future__ import annotations

import ctypes
import os
from ctypes import (CFUNCTYPE, POINTER, Structure, byref, c_char, c_char_p, c_double, c_int,
                    c_int32, c_size_t, c_uint32, c_void_p)

from ._errors import BY_CODE, Error, InternalError, MisuseError

TYPE_CHECKING = False  # see _session.py
if TYPE_CHECKING:
    from typing import Any

REVISION = 1
WRITABLE, ANY_RATES = 1, 2


class Failure(Structure):
    _fields_ = [("code", c_int32), ("message", c_char * 252)]


class Freshness(Structure):
    _fields_ = [("state", c_int32), ("origin", c_int32), ("count", c_int32), ("reserved", c_int32),
                ("published", c_double), ("stored", c_double), ("source", c_char * 64)]


class Reading(Structure):
    _fields_ = [("amount", c_double), ("other", c_double), ("source", c_char_p),
                ("targets", c_char_p * 12), ("target_count", c_uint32), ("day", c_char * 12)]


class Facts(Structure):
    _fields_ = [("kind", c_int32), ("digits", c_int32), ("customary_digits", c_int32),
                ("cash_half_down", c_int32), ("cash_step", c_double), ("code", c_char_p),
                ("signs", c_char_p), ("regions", c_char_p), ("successor", c_char_p),
                ("units", c_double), ("successor_units", c_double), ("last_day", c_char_p)]


class Past(Structure):
    _fields_ = [("rate", c_double), ("how", c_int32), ("reserved", c_int32), ("day", c_char * 12),
                ("source", c_char * 52)]


LogLine = CFUNCTYPE(None, c_void_p, c_char_p)

# FEXORA_C_LIBRARY is for a library that has been built and not installed.
_library = ctypes.CDLL(os.environ.get("FEXORA_C_LIBRARY") or "libfexora-c.so.0")
if _library.fexora_c_revision() < REVISION:
    raise ImportError(f"libfexora-c is too old: revision {REVISION} or later is needed")

_doubles, _codes, _sizes = POINTER(c_double), POINTER(c_char_p), POINTER(c_size_t)
# What each takes before its last parameter, the failure.
_PARAMETERS: dict[str, list[Any]] = {
    "open": [c_char_p, c_uint32, POINTER(c_void_p)],
    "set_log": [c_void_p, LogLine, c_void_p],
    "rate": [c_void_p, c_char_p, c_char_p, _doubles, _doubles],
    "convert": [c_void_p, c_double, c_char_p, c_char_p, _doubles],
    "convert_amounts": [c_void_p, c_void_p, c_size_t, c_char_p, c_char_p, c_void_p],
    "convert_to": [c_void_p, c_double, c_char_p, _codes, c_size_t, _doubles],
    "rate_on": [c_void_p, c_char_p, c_char_p, c_char_p, c_char_p, c_int, POINTER(Past), c_size_t],
    "get_freshness": [c_void_p, POINTER(Freshness), c_size_t],
    "codes": [c_void_p, _codes, c_size_t, _sizes],
    "set_rates": [c_void_p, _codes, _doubles, c_size_t, c_double, c_char_p],
    "read_rates": [c_void_p, c_char_p, c_size_t],
    "refresh": [c_void_p, c_char_p, c_double],
    "look": [c_void_p, POINTER(c_int)],
    "selection": [c_void_p, _codes, c_size_t, _sizes],
    "show": [c_void_p, c_double, c_char_p],
    "read": [c_char_p, c_char_p, POINTER(Reading), c_size_t],
    "get_facts": [c_char_p, POINTER(Facts), c_size_t],
    "search": [c_char_p, _codes, c_size_t, _sizes],
    "name": [c_char_p, c_char_p, c_char_p, c_size_t, _sizes],
    "round": [c_double, c_char_p, c_int, _doubles],
    "format": [c_double, c_int, c_int, c_char_p, c_char_p, c_size_t, _sizes],
}
functions: dict[str, Any] = {}
for _name, _parameters in _PARAMETERS.items():
    functions[_name] = getattr(_library, "fexora_" + _name)
    functions[_name].argtypes = [*_parameters, POINTER(Failure)]

version = _library.fexora_version
version.restype = c_char_p
close, cancel = _library.fexora_close, _library.fexora_cancel
descriptor = _library.fexora_descriptor
close.argtypes = cancel.argtypes = descriptor.argtypes = [c_void_p]
close.restype = cancel.restype = None
convert = functions["convert"]


def error_of(failure: Failure) -> Error:
    text = failure.message.decode("utf-8", "replace")
    return BY_CODE.get(failure.code, InternalError)(text)


def call(name: str, *arguments: Any) -> None:
    failure = Failure()
    if functions[name](*arguments, byref(failure)):
        raise error_of(failure)


def text(value: str) -> bytes:
    """The text as C takes it, which would end at a zero."""
    data = value.encode("utf-8", "surrogateescape")
    if b"\0" in data:
        raise MisuseError("a text with a zero in it")
    return data


_known: dict[str, bytes] = {}


def code(value: str) -> bytes:
    """The same for a currency's code, of which there are few."""
    data = _known.get(value)
    if data is None:
        data = text(value)
        if len(_known) < 4096 and len(data) <= 8:
            _known[value] = data
    return data


def optional(value: str | None) -> bytes | None:
    return None if value is None else text(value)


def codes(name: str, *arguments: Any) -> list[str]:
    """A list of codes from a function that gives as many as there is room for."""
    count, room = c_size_t(), 512
    while True:
        found = (c_char_p * room)()
        call(name, *arguments, found, room, byref(count))
        if count.value <= room:
            return [(code or b"").decode() for code in found[:count.value]]
        room = count.value


def written(name: str, *arguments: Any) -> str:
    """A text from a function that writes as much as there is room for."""
    length, room = c_size_t(), 256
    while True:
        buffer = ctypes.create_string_buffer(room)
        call(name, *arguments, buffer, room, byref(length))
        if length.value < room:
            return buffer.value.decode()
        room = length.value + 1


class Handle:
    """A session, which lives until nobody calls it any more and nobody will."""

    __slots__ = ("log", "pointer")

    def __init__(self, folder: bytes | None, flags: int) -> None:
        self.pointer: int | None = None
        self.log: Any = None
        pointer = c_void_p()
        call("open", folder, flags, byref(pointer))
        self.pointer = pointer.value

    # As they are when the interpreter ends and takes modules apart.
    def __del__(self, close: Any = close) -> None:
        close(self.pointer)
