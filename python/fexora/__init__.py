"""Currency conversion offline, in the terms of Python.

    >>> import fexora
    >>> fexora.convert(100, "USD", "EUR")            # a double
    >>> fexora.convert(Decimal("0.10"), "USD", "EUR")  # exact

The functions here use the person's own store, which they only read, and take over what another
process has saved a second later at most. A Session is a store of one's own, or none.
"""
from __future__ import annotations

import os
import threading
from collections.abc import Iterable
from ctypes import byref, c_double, sizeof
from datetime import date
from decimal import (ROUND_DOWN, ROUND_HALF_DOWN, ROUND_HALF_EVEN, ROUND_HALF_UP, ROUND_UP,
                     Decimal, getcontext, localcontext)
from time import monotonic

from . import _native
from ._errors import (AmountError, CancelledError, CurrencyError, Error, InternalError, MisuseError,
                      NetworkError, NoMemoryError, RateError, RefusedError, StoreError,
                      TimeOutError)
from ._records import (KINDS, ROUNDINGS, Facts, Freshness, How, Kind, Origin, PastRate, Rate,
                       Reading, Rounding, State)
from ._session import Session

TYPE_CHECKING = False  # see _session.py
if TYPE_CHECKING:
    from typing import Any, overload
else:
    def overload(function):
        return function

__version__: str = _native.version().decode()

__all__ = [
    "AmountError", "CancelledError", "CurrencyError", "Error", "Facts", "Freshness", "How",
    "InternalError", "Kind", "MisuseError", "NetworkError", "NoMemoryError", "Origin", "PastRate",
    "Rate", "RateError", "Reading", "RefusedError", "Rounding", "Session", "State", "StoreError",
    "TimeOutError", "codes", "convert", "convert_amounts", "convert_to", "facts", "format_amount",
    "freshness", "name", "rate", "rate_on", "read", "round_amount", "search",
]

_DECIMAL = {"half-even": ROUND_HALF_EVEN, "half-up": ROUND_HALF_UP, "up": ROUND_UP,
            "down": ROUND_DOWN}


class _Shared:
    """The one session of the functions below, made at their first call and anew after a fork."""

    def __init__(self) -> None:
        self.lock = threading.Lock()
        self.session: Session | None = None
        self.looked = 0.0

    def get(self) -> Session:
        session, now = self.session, monotonic()
        if session is not None and now - self.looked < 1.0:
            return session
        with self.lock:
            if self.session is None:
                self.session = Session()
            else:
                self.session.look()
            self.looked = now
            return self.session


_shared = _Shared()
os.register_at_fork(after_in_child=_shared.__init__)  # type: ignore[misc]


@overload
def convert(amount: Decimal, source: str, target: str) -> Decimal: ...
@overload
def convert(amount: float, source: str, target: str) -> float: ...


def convert(amount: Any, source: str, target: str) -> Any:
    """The amount times the rate, nothing rounded: a double, and a Decimal of a Decimal."""
    return _shared.get().convert(amount, source, target)


def convert_amounts(amounts: Any, source: str, target: str) -> Any:
    """Many amounts by one rate: see Session.convert_amounts()."""
    return _shared.get().convert_amounts(amounts, source, target)


@overload
def convert_to(amount: Decimal, source: str,
               targets: Iterable[str]) -> dict[str, Decimal | None]: ...


@overload
def convert_to(amount: float, source: str, targets: Iterable[str]) -> dict[str, float | None]: ...


def convert_to(amount: Any, source: str, targets: Iterable[str]) -> Any:
    """One amount in many currencies; None for one without a rate."""
    return _shared.get().convert_to(amount, source, targets)


def rate(source: str, target: str) -> Rate:
    """How many units of `target` one of `source` buys, and of which day that is."""
    return _shared.get().rate(source, target)


def rate_on(day: date | str, source: str, target: str, *, publisher: str | None = None,
            at_most_before: int = 7) -> PastRate:
    """The rate of a past day: see Session.rate_on()."""
    return _shared.get().rate_on(day, source, target, publisher=publisher,
                                 at_most_before=at_most_before)


def codes() -> list[str]:
    """The codes with a rate."""
    return _shared.get().codes()


def freshness() -> Freshness:
    """How old the rates are, and where they are from."""
    return _shared.get().freshness()


def read(text: str, locale: str | None = None) -> Reading:
    """An amount as people write it, and the currencies that it is of and goes to."""
    found = _native.Reading()
    _native.call("read", _native.text(text), _native.optional(locale), byref(found), sizeof(found))
    if found.target_count > len(found.targets):
        raise AmountError(f"{text!r}: expected {len(found.targets)} currencies at most after the "
                          f"amount, not {found.target_count}")
    targets = (code.decode() for code in found.targets[:found.target_count] if code)
    return Reading(found.amount, None if found.other != found.other else found.other,
                   found.source.decode() if found.source else None, tuple(targets),
                   date.fromisoformat(found.day.decode()) if found.day else None)


def facts(code: str) -> Facts:
    found = _native.Facts()
    _native.call("get_facts", _native.text(code), byref(found), sizeof(found))

    def count(number: int) -> int | None:
        return None if number < 0 else number

    return Facts(found.code.decode(), KINDS[found.kind], count(found.digits),
                 count(found.customary_digits), found.cash_step or None,
                 found.cash_half_down != 0, tuple(found.signs.decode().split()),
                 tuple(found.regions.decode().split()), found.successor.decode() or None,
                 found.units or None, found.successor_units or None,
                 found.last_day.decode() or None)


def search(text: str) -> list[str]:
    """The codes that match best, by code, sign, name and country."""
    return _native.codes("search", _native.text(text))


def name(code: str, language: str | None = None) -> str:
    """The currency's name in a language ("de"; None: the process's), or the code again."""
    return _native.written("name", _native.text(code), _native.optional(language))


@overload
def round_amount(amount: Decimal, code: str, mode: Rounding = "half-even") -> Decimal: ...
@overload
def round_amount(amount: float, code: str, mode: Rounding = "half-even") -> float: ...


def round_amount(amount: float | Decimal, code: str,
                 mode: Rounding = "half-even") -> float | Decimal:
    """The amount rounded to the currency's minor unit, or to what can be paid in cash."""
    if mode not in ROUNDINGS:
        raise MisuseError(f"mode {mode!r}: expected one of {', '.join(ROUNDINGS)}")
    if isinstance(amount, Decimal):
        return _round_decimal(amount, facts(code), mode)
    rounded = c_double()
    _native.call("round", c_double(amount), _native.text(code), ROUNDINGS.index(mode),
                 byref(rounded))
    return rounded.value


def _as_many_digits_as(amount: Decimal) -> Any:
    """In which nothing that rounding such an amount gives is too long."""
    digits = len(amount.as_tuple().digits) + abs(amount.adjusted())
    context = getcontext().copy()
    context.prec = max(context.prec, digits + 20)
    return localcontext(context)


def _round_decimal(amount: Decimal, known: Facts, mode: Rounding) -> Decimal:
    if not amount.is_finite():
        return amount
    if mode == "cash" and known.cash_step is not None:
        step = Decimal(repr(known.cash_step))
        half = ROUND_HALF_DOWN if known.cash_half_down else ROUND_HALF_UP
        with _as_many_digits_as(amount):
            return (amount / step).quantize(Decimal(1), half) * step
    if known.digits is None:
        return amount
    with _as_many_digits_as(amount):
        return amount.quantize(Decimal(1).scaleb(-known.digits), _DECIMAL.get(mode, ROUND_HALF_UP))


def format_amount(amount: float | Decimal, digits: int = 2, *, grouping: bool = True,
                  locale: str | None = None) -> str:
    """The amount as people of a locale ("de_DE"; None: the process's) write it; of a Decimal the
    double that is nearest, which has its first 15 digits."""
    return _native.written("format", float(amount), digits, grouping, _native.optional(locale))
