"""Sessions: a store, or none, and its rates."""
from __future__ import annotations

import os
from array import array
from collections.abc import Callable, Iterable, Iterator, Mapping
from ctypes import byref, c_char_p, c_double, c_int, sizeof
from datetime import date, datetime, timezone
from decimal import Decimal

from . import _native
from ._errors import MisuseError
from ._records import HOWS, ORIGINS, STATES, Freshness, PastRate, Rate

TYPE_CHECKING = False  # as typing has it, whose import would take as long as all else
if TYPE_CHECKING:
    from typing import Any, Protocol, TypeVar, Union, overload

    class _Array(Protocol):
        """What numpy's arrays are like; numpy itself is not needed."""

        def astype(self, dtype: Any, *, order: Any = ..., copy: Any = ...) -> Any: ...

    _A = TypeVar("_A", bound=_Array)
    # At run time anything that gives numbers.
    _Decimals = Union[list[Decimal], tuple[Decimal, ...], Iterator[Decimal]]
    _Doubles = Union[list[float], list[int], tuple[float, ...], Iterator[float]]
else:
    def overload(function):
        return function


def moment(seconds: float) -> datetime | None:
    if seconds != seconds:
        return None
    return datetime.fromtimestamp(seconds, timezone.utc)


def _exact(rate: float) -> Decimal:
    """The rate as it prints: a decimal amount never goes through a double."""
    return Decimal(repr(rate))


def _copied(amounts: Iterable[float]) -> array[float]:
    """Doubles of one's own, from a buffer or from anything that gives numbers."""
    try:
        view = memoryview(amounts)  # type: ignore[arg-type]
    except TypeError:
        return array("d", amounts)
    if view.ndim != 1:
        raise MisuseError("amounts of more than one dimension: flatten them, or give a numpy array")
    copied = array("d")
    if view.format == "d" and view.c_contiguous:
        copied.frombytes(view.cast("B"))
    else:
        copied.extend(view)
    return copied


class Session:
    """A store and the rates of one moment: between two looks nobody else changes them.

    Without a folder it is the person's own store, which the windows and the program share. Nothing
    is made or written unless it is `writable`. `any_rates` takes rates, too, that do not look
    plausible. Any thread, several at once; a child of fork() makes its own.
    """

    def __init__(self, folder: str | os.PathLike[str] | None = None, *, writable: bool = False,
                 any_rates: bool = False) -> None:
        path = None if folder is None else os.path.abspath(folder)
        self._open(path, writable, any_rates)

    def _open(self, path: str | None, writable: bool, any_rates: bool) -> None:
        flags = _native.WRITABLE * writable | _native.ANY_RATES * any_rates
        self._handle: _native.Handle | None = None
        self._handle = _native.Handle(_native.optional(path), flags)

    @classmethod
    def in_memory(cls, *, any_rates: bool = False) -> Session:
        """A session without a store, which begins with the rates that come with the library."""
        session = cls.__new__(cls)
        session._open("", False, any_rates)
        return session

    def __enter__(self) -> Session:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Calls that are under way end as they would; later ones fail."""
        self._handle = None

    @property
    def closed(self) -> bool:
        return self._handle is None

    def _held(self) -> _native.Handle:
        handle = self._handle
        if handle is None:
            raise MisuseError("the session is closed")
        return handle

    # -- Conversions

    def rate(self, source: str, target: str) -> Rate:
        handle, value, day = self._held(), c_double(), c_double()
        _native.call("rate", handle.pointer, _native.text(source), _native.text(target),
                     byref(value), byref(day))
        return Rate(source.upper(), target.upper(), value.value, moment(day.value))

    @overload
    def convert(self, amount: Decimal, source: str, target: str) -> Decimal: ...
    @overload
    def convert(self, amount: float, source: str, target: str) -> float: ...

    def convert(self, amount: float | Decimal, source: str, target: str) -> float | Decimal:
        """The amount times the rate, nothing rounded: a double, and a Decimal of a Decimal."""
        if isinstance(amount, Decimal):
            return amount * _exact(self.rate(source, target).value)
        handle, result = self._handle or self._held(), c_double(amount)
        from_, to = _native.code(source), _native.code(target)
        # The second call, after a failure, brings its words.
        if _native.convert(handle.pointer, result, from_, to, byref(result), None):
            _native.call("convert", handle.pointer, c_double(amount), from_, to, byref(result))
        return result.value

    @overload
    def convert_amounts(self, amounts: array[Any], source: str, target: str) -> array[float]: ...
    @overload
    def convert_amounts(self, amounts: _A, source: str, target: str) -> _A: ...
    @overload
    def convert_amounts(self, amounts: _Decimals, source: str, target: str) -> list[Decimal]: ...
    @overload
    def convert_amounts(self, amounts: _Doubles, source: str, target: str) -> list[float]: ...

    def convert_amounts(self, amounts: Any, source: str, target: str) -> Any:
        """Many by one rate: numpy's array (any shape), array.array, or a list of what is else."""
        if hasattr(amounts, "astype"):
            doubles = amounts.astype("f8", order="C", copy=True)
            if hasattr(doubles, "ctypes"):
                self._convert_at(doubles.ctypes.data, doubles.size, source, target)
                return doubles
            raise MisuseError("amounts of this kind: give their numpy array, as by to_numpy()")
        if not isinstance(amounts, (array, memoryview)):
            amounts = list(amounts)
            if any(isinstance(amount, Decimal) for amount in amounts):
                rate = self.rate(source, target).value
                return [amount * (_exact(rate) if isinstance(amount, Decimal) else rate)
                        for amount in amounts]
        copied = _copied(amounts)
        address, count = copied.buffer_info()
        self._convert_at(address, count, source, target)
        return copied if isinstance(amounts, (array, memoryview)) else copied.tolist()

    def _convert_at(self, address: int, count: int, source: str, target: str) -> None:
        handle = self._held()
        _native.call("convert_amounts", handle.pointer, address, count, _native.text(source),
                     _native.text(target), address)

    @overload
    def convert_to(self, amount: Decimal, source: str,
                   targets: Iterable[str]) -> dict[str, Decimal | None]: ...

    @overload
    def convert_to(self, amount: float, source: str,
                   targets: Iterable[str]) -> dict[str, float | None]: ...

    def convert_to(self, amount: Any, source: str, targets: Iterable[str]) -> Any:
        """One amount in many currencies, by one state of the rates; None for one without a rate."""
        handle, names = self._held(), list(targets)
        is_exact = isinstance(amount, Decimal)
        one = c_double(1) if is_exact else c_double(amount)
        codes = (c_char_p * len(names))(*map(_native.text, names))
        results = (c_double * len(names))()
        # By units of the source; not-a-number goes through, so that only a rate can be missing.
        _native.call("convert_to", handle.pointer, 1.0, _native.text(source), codes, len(names),
                     results)
        return {name: None if rate != rate else
                amount * _exact(rate) if is_exact else one.value * rate
                for name, rate in zip(names, results)}

    def rate_on(self, day: date | str, source: str, target: str, *, publisher: str | None = None,
                at_most_before: int = 7) -> PastRate:
        """The rate of a past day, out of the history beside the store.

        Each refresh() adds the day of its rates, `fexora refresh --history` the years before.
        Of `publisher` alone, where one is named, and at most so many days older than the day.
        """
        handle, found = self._held(), _native.Past()
        if at_most_before < 0:
            raise MisuseError("at_most_before is 0 or more")
        when = day if isinstance(day, str) else day.isoformat()[:10]
        _native.call("rate_on", handle.pointer, _native.text(when), _native.text(source),
                     _native.text(target), _native.optional(publisher), at_most_before,
                     byref(found), sizeof(found))
        return PastRate(source.upper(), target.upper(), found.rate,
                        date.fromisoformat(found.day.decode()), found.source.decode(),
                        HOWS[found.how])

    # -- Rates

    def codes(self) -> list[str]:
        """The codes of the session's rates."""
        handle = self._held()
        return _native.codes("codes", handle.pointer)

    def freshness(self) -> Freshness:
        handle, found = self._held(), _native.Freshness()
        _native.call("get_freshness", handle.pointer, byref(found), sizeof(found))
        return Freshness(STATES[found.state], ORIGINS[found.origin], found.count,
                         moment(found.published), moment(found.stored),
                         found.source.decode("utf-8", "replace"))

    def set_rates(self, rates: Mapping[str, float | Decimal], *, published: datetime | None = None,
                  source: str | None = None) -> None:
        """Takes rates in place of those there are: units that one US dollar buys."""
        handle = self._held()
        codes = (c_char_p * len(rates))(*map(_native.text, rates))
        values = (c_double * len(rates))(*map(float, rates.values()))
        day = float("nan") if published is None else published.timestamp()
        _native.call("set_rates", handle.pointer, codes, values, len(rates), day,
                     _native.optional(source))

    def read_rates(self, text: str | bytes) -> None:
        """The same from a text as rates are published: JSON, CSV, the euro's XML."""
        handle, data = self._held(), text.encode() if isinstance(text, str) else text
        _native.call("read_rates", handle.pointer, data, len(data))

    def refresh(self, source: str | os.PathLike[str] | None = None, *, timeout: float = 0) -> None:
        """The same from a source's name, a file or an address, in `timeout` seconds at most.

        None asks as the program and the windows do: by the store's setting `ratesFrom`, else a
        configured service, else "exchange-api" and then "ecb". A session that may write keeps what
        was taken for rate_on(), too.
        Ctrl-C ends it; so does cancel(), from any thread and from a signal's handler.
        """
        handle = self._held()
        from_ = None if source is None else _native.text(os.fspath(source))
        arguments = (handle.pointer, from_, timeout)
        import threading  # here, since a start that only converts needs none

        if threading.current_thread() is not threading.main_thread():
            return _native.call("refresh", *arguments)
        # Python's handlers of signals run between two steps of its own, not inside a call of C.
        failures: list[BaseException] = []

        def run() -> None:
            try:
                _native.call("refresh", *arguments)
            except BaseException as failure:  # raised below, where somebody waits for it
                failures.append(failure)

        thread = threading.Thread(target=run, daemon=True)
        try:
            thread.start()
            thread.join()
        except BaseException:
            while thread.is_alive():  # one that has not begun yet does not see the first
                _native.cancel(handle.pointer)
                thread.join(0.05)
            raise
        if failures:
            raise failures[0]

    def cancel(self) -> None:
        """Ends each refresh that has begun."""
        handle = self._handle
        if handle is not None:
            _native.cancel(handle.pointer)

    # -- The store

    def fileno(self) -> int:
        """Readable when look() has something to do: for select, selectors, asyncio's add_reader."""
        handle = self._held()
        return int(_native.descriptor(handle.pointer))

    def look(self) -> bool:
        """Takes what other processes have saved by now; whether there was any. Never waits."""
        handle, changed = self._held(), c_int()
        _native.call("look", handle.pointer, byref(changed))
        return changed.value != 0

    def selection(self) -> list[str]:
        """The currencies that the person has chosen."""
        handle = self._held()
        return _native.codes("selection", handle.pointer)

    def show(self, amount: float | Decimal, code: str) -> None:
        """Records the amount as the one that the windows show next."""
        handle = self._held()
        _native.call("show", handle.pointer, float(amount), _native.text(code))

    def set_log(self, line: Callable[[str], object] | None) -> None:
        """Hands over each line of the session's log, the first at once; None: nobody gets any."""
        handle = self._held()

        def take(_: object, text: bytes) -> None:
            if line is not None:
                line(text.decode("utf-8", "replace"))

        taker = _native.LogLine(take) if line is not None else _native.LogLine(0)
        _native.call("set_log", handle.pointer, taker, None)
        handle.log = taker  # it lives as long as it is called
