#!/usr/bin/env python3
"""plot.py SOURCE TARGET FILE: a pair's rates of the last year, as matplotlib draws them."""
from __future__ import annotations

import datetime
import importlib
import sys
from typing import Any

import fexora


def main(source: str, target: str, path: str) -> None:
    today = datetime.date.today()
    rates: dict[datetime.date, float] = {}
    for back in range(366):
        try:
            past = fexora.rate_on(today - datetime.timedelta(days=back), source, target,
                                  at_most_before=0)
        except fexora.RateError:
            continue
        rates[past.day] = past.value
    if not rates:
        sys.exit("plot.py: the history has none of these days: fexora refresh --history ecb")
    matplotlib: Any = importlib.import_module("matplotlib")
    matplotlib.use("Agg")
    plot: Any = importlib.import_module("matplotlib.pyplot")
    days = sorted(rates)
    plot.plot(days, [rates[day] for day in days])
    plot.title(f"1 {source} in {target}")
    plot.gcf().autofmt_xdate()
    plot.savefig(path)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
