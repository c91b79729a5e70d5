"""Currency data of the Unicode CLDR, read out of the machine's own ICU (of libicu-dev)."""
import ctypes
import datetime
import functools
import pathlib
import re
from ctypes import POINTER, byref, c_char_p, c_int, c_int32, c_int8, c_uint16, c_void_p

SYMBOL, LONG_NAME, NARROW_SYMBOL = range(3)
CASH = 1
# Directional marks are for whoever lays text out; they are no part of a sign.
MARKS = re.compile("[\u200e\u200f\u061c]")


@functools.cache
def library():
    loaded = ctypes.CDLL("libicui18n.so")
    common = ctypes.CDLL("libicuuc.so")
    name = next(line.split()[-1]
                for line in pathlib.Path("/proc/self/maps").read_text().splitlines()
                if "/libicuuc.so" in line)
    version = re.search(r"\.so\.(\d+)", name)[1]
    return loaded, common, version


@functools.cache
def function(name, result, *arguments):
    """A function of ICU whose last argument, the error code, is added and looked at."""
    loaded, _, version = library()
    raw = getattr(loaded, f"{name}_{version}")
    raw.restype, raw.argtypes = result, (*arguments, POINTER(c_int))

    def call(*values):
        error = c_int(0)
        answer = raw(*values, byref(error))
        if error.value > 0:
            raise LookupError(f"{name}: ICU's error {error.value}")
        return answer
    return call


def plain(name, result, *values):
    """Calls a function of ICU that has no error code."""
    _, common, version = library()
    raw = getattr(common, f"{name}_{version}")
    raw.restype = result
    return raw(*values)


def data():
    """Which data this is, as the tables made from it name it."""
    release = (ctypes.c_uint8 * 4)()
    function("ulocdata_getCLDRVersion", None, POINTER(ctypes.c_uint8))(release)
    return f"CLDR {release[0]} of ICU {library()[2]}"


@functools.cache
def utf16(text):
    return (c_uint16 * (len(text) + 1))(*text.encode("utf-16-le")[::2], 0)


def from_utf16(units, length):
    return ctypes.string_at(units, 2 * length).decode("utf-16-le")


class Bundle:
    """One resource of ICU's data: children by index, integers, a string."""

    def __init__(self, handle):
        self.handle = handle

    def children(self):
        get = function("ures_getByIndex", c_void_p, c_void_p, c_int32, c_void_p)
        return [Bundle(get(self.handle, i, None))
                for i in range(self.plain("ures_getSize", c_int32))]

    def plain(self, name, result):
        return plain(name, result, c_void_p(self.handle))

    def key(self):
        return self.plain("ures_getKey", c_char_p).decode()

    def date(self):
        """The day of a date, which is two halves of milliseconds since 1970."""
        length = c_int32()
        read = function("ures_getIntVector", POINTER(c_int32), c_void_p, POINTER(c_int32))
        high, low = read(self.handle, byref(length))[:2]
        milliseconds = high * 2 ** 32 + low % 2 ** 32
        moment = datetime.datetime(1970, 1, 1) + datetime.timedelta(milliseconds=milliseconds)
        return moment.date().isoformat()

    def text(self):
        length = c_int32()
        read = function("ures_getString", POINTER(c_uint16), c_void_p, POINTER(c_int32))
        return from_utf16(read(self.handle, byref(length)), length.value)


@functools.cache
def tender():
    """What was money where: code, region, last day or None, in ICU's order."""
    _, _, version = library()
    opened = function("ures_openDirect", c_void_p, c_char_p, c_char_p)
    child = function("ures_getByKey", c_void_p, c_void_p, c_char_p, c_void_p)
    data = opened(f"icudt{version}l-curr".encode(), b"supplementalData")
    rows = []
    for region in Bundle(child(data, b"CurrencyMap", None)).children():
        for entry in region.children():
            cells = {cell.key(): cell for cell in entry.children()}
            if "tender" in cells and cells["tender"].text() == "false":
                continue
            last = cells["to"].date() if "to" in cells else None
            rows.append((cells["id"].text(), region.key(), last))
    return rows


def digits(code, usage=0):
    read = function("ucurr_getDefaultFractionDigitsForUsage", c_int32, POINTER(c_uint16), c_int)
    return read(utf16(code), usage)


def increment(code, usage=0):
    read = function("ucurr_getRoundingIncrementForUsage", ctypes.c_double, POINTER(c_uint16), c_int)
    return read(utf16(code), usage)


def sign(code, locale, style=SYMBOL):
    """The sign of the currency in a locale, or None where that is only the code."""
    read = function("ucurr_getName", POINTER(c_uint16), POINTER(c_uint16), c_char_p, c_int,
                    POINTER(c_int8), POINTER(c_int32))
    length = c_int32()
    units = read(utf16(code), locale.encode(), style, None, byref(length))
    text = MARKS.sub("", from_utf16(units, length.value))
    return text if text != code else None


def signs():
    """The signs of currencies in the locales: code and sign, as often as the data has them."""
    opened = function("ures_openDirect", c_void_p, c_char_p, c_char_p)
    child = function("ures_getByKey", c_void_p, c_void_p, c_char_p, c_void_p)
    for locale in ["root", *locales()]:
        for kind in ("", "%narrow", "%formal", "%variant"):
            try:
                own = opened(f"icudt{library()[2]}l-curr".encode(), locale.encode())
                entries = Bundle(child(own, f"Currencies{kind}".encode(), None)).children()
            except LookupError:  # it has what the locales above it have
                continue
            for entry in entries:
                # Beside the sign there is the name.
                text = entry if kind else entry.children()[0]
                yield entry.key(), MARKS.sub("", text.text())


def locales():
    """The names of all locales that there is data for."""
    return [plain("uloc_getAvailable", c_char_p, i).decode()
            for i in range(plain("uloc_countAvailable", c_int32))]


def regions():
    """All codes of ISO 3166 part 1."""
    listed = plain("uloc_getISOCountries", POINTER(c_char_p))
    return [code.decode() for code in iter(iter(listed).__next__, None)]


def currency(locale):
    """The currency of a locale's region; empty for a locale without one."""
    read = function("ucurr_forLocale", c_int32, c_char_p, POINTER(c_uint16), c_int32)
    buffer = (c_uint16 * 8)()
    try:
        return from_utf16(buffer, read(locale.encode(), buffer, 8))
    except LookupError:
        return ""


def likely(locale):
    """The locale with the script and region that most of its people have."""
    read = function("uloc_addLikelySubtags", c_int32, c_char_p, c_char_p, c_int32)
    buffer = ctypes.create_string_buffer(160)
    read(locale.encode(), buffer, 160)
    return buffer.value.decode()


@functools.cache
def local(region):
    """The locale that most people of a region use, or None."""
    locale = likely(f"und_{region}")
    return locale if locale.endswith(f"_{region}") else None
