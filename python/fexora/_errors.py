"""What can go wrong. Each error is one of Python's own kinds, too."""


class Error(Exception):
    """The base of all of them; its text is one line for people."""


class MisuseError(Error, ValueError):
    """A value out of range, a closed session, one of another process, or one that may not write."""


class AmountError(Error, ValueError):
    """The text is no amount."""


class CurrencyError(Error, LookupError):
    """There is no such currency; the text names those near."""


class RateError(Error, LookupError):
    """There is no rate of a currency that there is."""


class StoreError(Error, OSError):
    """The store's folder cannot be used, or its file was not written."""


class NetworkError(Error, OSError):
    """No answer came, or the file of rates cannot be read."""


class TimeOutError(Error, TimeoutError):
    """No answer came in time."""


class CancelledError(Error):
    """The refresh was ended by cancel()."""


class RefusedError(Error, ValueError):
    """Rates came and were not taken: unreadable, or not plausible."""


class InternalError(Error, RuntimeError):
    """The library failed."""


class NoMemoryError(Error, MemoryError):
    """There is no memory for it."""


# By enum fexora_code.
BY_CODE: dict[int, type[Error]] = {
    1: MisuseError, 2: NoMemoryError, 3: AmountError, 4: CurrencyError, 5: RateError, 6: StoreError,
    7: NetworkError, 8: TimeOutError, 9: CancelledError, 10: RefusedError,
}
