"""The other side of the property-list tests: Python's own plistlib.

  plist_tool.py describe FILE     prints the file's value as tests/support/Describe.h does
  plist_tool.py make FILE FORMAT  makes the file of many random values first, as xml or binary
"""
import datetime
import math
import pathlib
import plistlib
import random
import struct
import sys

EPOCH = datetime.datetime(1970, 1, 1)
SOURCE = random.Random(7)
FORMATS = {"xml": plistlib.FMT_XML, "binary": plistlib.FMT_BINARY}


def bits(value):
    return struct.pack(">d", value).hex()


def describe(value):
    match value:
        case bool():
            return f"b{value:d}"
        case int():  # beyond 64 signed bits our reader keeps a real
            return f"i{value}" if value < 2**63 else "r" + bits(float(value))
        case float():
            return "rnan" if math.isnan(value) else "r" + bits(value)
        case str():
            return "s" + value.encode().hex()
        case bytes():
            return "x" + value.hex()
        case datetime.datetime():
            return "t" + bits((value - EPOCH).total_seconds())
        case list():
            return "a[" + "".join(describe(item) + "," for item in value) + "]"
    entries = sorted((key.encode().hex(), item) for key, item in value.items())
    return "d{" + "".join(f"{key}:{describe(item)}," for key, item in entries) + "}"


def text():
    return "".join(SOURCE.choices("aZ09 .<>&'\"]\t\n\u00e9\u20ac\U0001f4b6\u0627",
                                  k=SOURCE.randrange(40)))


LEAVES = [
    text, text, text, lambda: SOURCE.random() < 0.5, lambda: SOURCE.randrange(-2**63, 2**64),
    lambda: SOURCE.choice([0, 1, -1, 255, 256, 65535, 65536, 2**31, 2**32, 2**63 - 1, -2**63]),
    lambda: struct.unpack(">d", SOURCE.randbytes(8))[0],
    lambda: SOURCE.choice([0.0, -0.0, math.inf, -math.inf, math.nan, 5e-324, 85.23, 1e22]),
    lambda: EPOCH + datetime.timedelta(seconds=SOURCE.randrange(-62135596800, 253402300800)),
    lambda: SOURCE.randbytes(SOURCE.randrange(90))]


def value(depth):
    kind = SOURCE.randrange(4) if depth > 0 else 3
    items = range(SOURCE.randrange(8))
    if kind == 0:
        return [value(depth - 1) for _ in items]
    return {text(): value(depth - 1) for _ in items} if kind == 1 else SOURCE.choice(LEAVES)()


def main(command, file, form=None):
    if command == "make":
        made = {text(): value(4) for _ in range(500)}
        pathlib.Path(file).write_bytes(plistlib.dumps(made, fmt=FORMATS[form], sort_keys=False))
    print(describe(plistlib.loads(pathlib.Path(file).read_bytes())))


main(*sys.argv[1:])
