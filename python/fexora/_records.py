"""The records that the package gives; _records.pyi has their types."""
from collections import namedtuple

State = Origin = How = Kind = Rounding = str  # for annotations alone

STATES = ("none", "fresh", "stale", "old")
ORIGINS = ("none", "bundled", "service", "file")
HOWS = ("printed", "crossed", "by-law")
KINDS = ("official", "local", "metal", "crypto", "withdrawn")
ROUNDINGS = ("half-even", "half-up", "up", "down", "cash")

Rate = namedtuple("Rate", "source target value published")
Rate.__doc__ = """How many units of `target` one of `source` buys."""
PastRate = namedtuple("PastRate", "source target value day publisher how")
PastRate.__doc__ = """A rate of a past day."""
Freshness = namedtuple("Freshness", "state origin currencies published stored source")
Freshness.__doc__ = """How old a session's rates are, and where they are from."""
Reading = namedtuple("Reading", "amount other source targets day")
Reading.__doc__ = """What a typed text says."""
Facts = namedtuple(
    "Facts",
    "code kind digits customary_digits cash_step cash_half_down signs "
    "regions successor units successor_units last_day")
Facts.__doc__ = """What is known of a currency beside its name."""
