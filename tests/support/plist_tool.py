"""The other side of the property-list tests: Python's own plistlib.

  plist_tool.py describe FILE...     prints each file's value as tests/support/Describe.h does
  plist_tool.py make FORMAT SEED N FOLDER
      writes N random values into FOLDER as 0.plist, 1.plist, ... in FORMAT (xml or binary) and
      prints their descriptions, one a line
"""
import datetime
import math
import plistlib
import random
import struct
import sys

EPOCH = datetime.datetime(1970, 1, 1)


def bits(value):
    return struct.pack(">d", value).hex()


def describe(value):
    if isinstance(value, bool):
        return "b1" if value else "b0"
    if isinstance(value, int):
        # Beyond 64 signed bits our reader keeps a real.
        return f"i{value}" if value < 2**63 else "r" + bits(float(value))
    if isinstance(value, float):
        return "rnan" if math.isnan(value) else "r" + bits(value)
    if isinstance(value, str):
        return "s" + value.encode().hex()
    if isinstance(value, bytes):
        return "x" + value.hex()
    if isinstance(value, datetime.datetime):
        return "t" + bits((value - EPOCH).total_seconds())
    if isinstance(value, list):
        return "a[" + "".join(describe(item) + "," for item in value) + "]"
    entries = sorted((key.encode(), item) for key, item in value.items())
    return "d{" + "".join(f"{key.hex()}:{describe(item)}," for key, item in entries) + "}"


def text(source):
    alphabet = "aZ09 .<>&'\"]\t\n\u00e9\u20ac\U0001f4b6\u0627"
    return "".join(source.choice(alphabet) for _ in range(source.randrange(0, 40)))


def leaf(source):
    return source.choice([
        lambda: source.random() < 0.5,
        lambda: source.randrange(-2**63, 2**64),
        lambda: source.choice([0, 1, -1, 255, 256, 65535, 65536, 2**31, 2**32, 2**63 - 1, -2**63]),
        lambda: struct.unpack(">d", source.randbytes(8))[0],
        lambda: source.choice([0.0, -0.0, math.inf, -math.inf, math.nan, 5e-324, 85.23, 1e22]),
        lambda: EPOCH + datetime.timedelta(seconds=source.randrange(-62135596800, 253402300800)),
        lambda: source.randbytes(source.randrange(0, 90)),
        lambda: text(source)])()


def value(source, depth):
    kind = source.randrange(4) if depth > 0 else 3
    if kind == 0:
        return [value(source, depth - 1) for _ in range(source.randrange(0, 8))]
    if kind == 1:
        return {text(source): value(source, depth - 1) for _ in range(source.randrange(0, 8))}
    return leaf(source)


def make(form, seed, count, folder):
    source = random.Random(seed)
    for number in range(count):
        made = {text(source): value(source, 4) for _ in range(12)}
        with open(f"{folder}/{number}.plist", "wb") as file:
            plistlib.dump(made, file, fmt=form, sort_keys=False)
        # What Python reads back: its binary writer keeps one object for 0.0 and -0.0.
        with open(f"{folder}/{number}.plist", "rb") as file:
            print(describe(plistlib.load(file)))


def main(arguments):
    if arguments[0] == "describe":
        for name in arguments[1:]:
            with open(name, "rb") as file:
                print(describe(plistlib.load(file)))
    else:
        form = plistlib.FMT_XML if arguments[1] == "xml" else plistlib.FMT_BINARY
        make(form, int(arguments[2]), int(arguments[3]), arguments[4])


main(sys.argv[1:])
