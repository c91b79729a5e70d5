"""What the records hold; _records.py makes them without typing, which would double an import."""
from datetime import date, datetime
from typing import Literal, NamedTuple

State = Literal["none", "fresh", "stale", "old"]
Origin = Literal["none", "bundled", "service", "file"]
How = Literal["printed", "crossed", "by-law"]
Kind = Literal["official", "local", "metal", "crypto", "withdrawn"]
Rounding = Literal["half-even", "half-up", "up", "down", "cash"]

STATES: tuple[State, ...]
ORIGINS: tuple[Origin, ...]
HOWS: tuple[How, ...]
KINDS: tuple[Kind, ...]
ROUNDINGS: tuple[Rounding, ...]


class Rate(NamedTuple):
    """How many units of `target` one of `source` buys."""

    source: str
    target: str
    value: float
    published: datetime | None  # None: nobody knows


class PastRate(NamedTuple):
    """A rate of a past day."""

    source: str
    target: str
    value: float
    day: date  # that was asked for, or the newest one before it
    publisher: str  # "ecb"
    how: How


class Freshness(NamedTuple):
    """How old a session's rates are, and where they are from."""

    state: State
    origin: Origin
    currencies: int  # how many have a rate
    published: datetime | None
    stored: datetime | None
    source: str


class Reading(NamedTuple):
    """What a typed text says."""

    amount: float
    other: float | None  # the second reading of "1,234"
    source: str | None
    targets: tuple[str, ...]
    day: date | None  # whose rates are asked for


class Facts(NamedTuple):
    """What is known of a currency beside its name."""

    code: str
    kind: Kind
    digits: int | None  # of the minor unit
    customary_digits: int | None
    cash_step: float | None
    cash_half_down: bool
    signs: tuple[str, ...]
    regions: tuple[str, ...]
    successor: str | None
    units: float | None  # became successor_units of the successor
    successor_units: float | None
    last_day: str | None
