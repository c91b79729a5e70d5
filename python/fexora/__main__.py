"""python3 -m fexora 100 usd in eur: what an amount is in the currencies that are named, or in those
that the person has chosen."""
from __future__ import annotations

import sys

import fexora


def main(words: list[str]) -> int:
    if not words or words[0] in ("-h", "--help"):
        print(__doc__)
        return 0 if words else 2
    asked = fexora.read(" ".join(words))
    if asked.other is not None:
        print(f"read as {asked.amount:g}, not as {asked.other:g}", file=sys.stderr)
    source = asked.source or "USD"
    with fexora.Session() as session:
        for target in asked.targets or session.selection():
            if target == source and not asked.targets:
                continue
            rate = (session.rate(source, target).value if asked.day is None
                    else session.rate_on(asked.day, source, target).value)
            digits = fexora.facts(target).digits
            shown = fexora.format_amount(asked.amount * rate, 2 if digits is None else digits)
            print(shown, target)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except fexora.Error as error:
        sys.exit(f"fexora: {error}")
