#!/usr/bin/env python3
"""expenses.py FILE [CODE]: a CSV of day,amount,currency,… with the amount in one currency beside.

Each expense goes by the rate of its own day where the history has one, else by today's; the last
column says which day that was. Amounts stay decimals from the file to the file.
"""
from __future__ import annotations

import csv
import sys
from decimal import Decimal, InvalidOperation

import fexora


def rate_of(day: str, source: str, target: str) -> tuple[float, str]:
    try:
        past = fexora.rate_on(day, source, target)
        return past.value, past.day.isoformat()
    except (fexora.RateError, fexora.MisuseError):
        rate = fexora.rate(source, target)
        return rate.value, rate.published.date().isoformat() if rate.published else ""


def converted(row: dict[str, str], target: str) -> tuple[Decimal, str]:
    rate, day = rate_of(row["day"], row["currency"], target)
    exact = Decimal(row["amount"]) * Decimal(repr(rate))
    amount = fexora.round_amount(exact, target)
    return amount, day


def main(path: str, target: str = "EUR") -> None:
    with open(path, newline="", encoding="utf-8") as file:
        rows = csv.DictReader(file)
        names = [*(rows.fieldnames or ()), target, "rate of"]
        out = csv.DictWriter(sys.stdout, names, lineterminator="\n")
        out.writeheader()
        total = Decimal(0)
        for row in rows:
            try:
                amount, day = converted(row, target)
            except InvalidOperation:
                sys.exit(f"{path}, line {rows.line_num}: \"{row['amount']}\" is no amount; "
                         "expected one like 1250.50")
            total += amount
            out.writerow({**row, target: amount, "rate of": day})
        sys.stdout.flush()
        print(f"total {total} {target}", file=sys.stderr)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except (fexora.Error, ValueError, KeyError, OSError) as error:
        sys.exit(f"expenses.py: {error}")
