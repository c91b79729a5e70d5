"""python3 -m fexora 100 usd in eur: what an amount is in the currencies that are named, or in those
that the person has chosen, by the rates of today or of a day that is named."""
from __future__ import annotations

import sys
from math import floor, log10

import fexora

MOST_DIGITS = 15


def shown(amount: float, code: str) -> str:
    """In minor units, and what is less than one of the currency in as many digits as tell it."""
    known = fexora.facts(code).digits
    digits = 2 if known is None else known
    if 0 < abs(amount) < 1:
        digits = max(digits, 2 - floor(log10(abs(amount))))
    return f"{fexora.format_amount(amount, min(digits, MOST_DIGITS))} {code}"


def tell(line: str) -> None:
    # What was printed before is to be seen before, in one file or pipe, too.
    sys.stdout.flush()
    print(line, file=sys.stderr)


def convert(asked: fexora.Reading, source: str, session: fexora.Session) -> None:
    targets = asked.targets or [code for code in session.selection() if code != source]
    for target in targets:
        if asked.day is None:
            print(shown(session.convert(asked.amount, source, target), target))
            continue
        past = session.rate_on(asked.day, source, target)
        print(shown(asked.amount * past.value, target))
        tell(f"{target}: rate of {past.day}, {past.publisher}")
    if asked.day is None:
        rates = session.freshness()
        day = f"{rates.published:%Y-%m-%d}" if rates.published else "an unknown day"
        tell(f"rates of {day}, {rates.source or rates.origin}")


def main(words: list[str]) -> int:
    if not words or words[0] in ("-h", "--help"):
        print(__doc__)
        return 0 if words else 2
    asked = fexora.read(" ".join(words))
    if asked.other is not None:
        tell(f"read as {asked.amount:g}, not as {asked.other:g}")
    if asked.source is None:
        raise fexora.CurrencyError("expected a currency after the amount, as in: 100 usd in eur")
    with fexora.Session() as session:
        convert(asked, asked.source, session)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except fexora.Error as error:
        sys.exit(f"fexora: {error}")
