"""Past rates against an independent reading of the same tables, by decimals; and what is left of
them after kills.

Long forms: FEXORA_PAIRS pairs at random, FEXORA_HISTORY_KILLS kills.
"""

import datetime
import decimal
import lzma
import os
import pathlib
import random
import re
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
HISTORIAN = pathlib.Path(os.environ["FEXORA_BIN"]) / "historian"
NOW = "1790900000"
# Of the European Central Bank, 2026-09-11.
EURO = {"USD": "1.1592", "JPY": "178.56", "GBP": "0.85815", "CHF": "0.9331", "AUD": "1.7684",
        "CAD": "1.6012", "ILS": "3.5301", "NZD": "1.9455"}
DIGITS = decimal.Context(prec=15)


def dollar_tables():
    """The 73 real tables: by day the figures by code, as printed."""
    packed = (SOURCE / "tests/data/usd-73-days.tsv.xz").read_bytes()
    head, *rows = [line.split("\t") for line in lzma.decompress(packed).decode().splitlines()]
    tables = {day: {} for day in head[1:]}
    for key, *figures in rows:
        for day, figure in zip(tables, figures):
            if figure and re.fullmatch("[0-9a-z]+", key) and key != "usd":
                tables[day][key.upper()] = figure
    return tables


def ratios():
    """By withdrawn code the successor, the units that became one of it, and since when."""
    found, since = {}, {}
    for line in (SOURCE / "fexora/resources/currency-facts.tsv").read_text("utf-8").splitlines():
        code, fact, value, date, *_ = [*line.split("\t"), "", "", ""]
        if fact == "successor" and " " in value:
            units, _, others = value.split()[1].partition(":")
            found[code] = value.split()[0], decimal.Decimal(units), decimal.Decimal(others or "1")
            since.setdefault(code, date)
        elif fact == "ratio":
            since[code] = date
    # Of a month or a year that alone is known, from its end on.
    return {code: (*ratio, since[code] if len(since[code]) == 10 else since[code] + "-99")
            for code, ratio in found.items()}


class PastRatesTest(unittest.TestCase):
    def setUp(self):
        self.container = pathlib.Path(tempfile.mkdtemp(prefix="fexora-test-"))
        self.addCleanup(shutil.rmtree, self.container)
        self.file = self.container / ".fexora-history/rates.sqlite"

    def run_historian(self, *words, text="", code=0):
        done = subprocess.run([HISTORIAN, *words], input=text, capture_output=True, text=True,
                              env={"FEXORA_CONTAINER": str(self.container)}, check=False)
        if code is not None:
            self.assertEqual(done.returncode, code, done.stderr)
        return done.stdout.splitlines()


class Figures(PastRatesTest):
    def setUp(self):
        super().setUp()
        self.tables = {(day, "usd"): ("USD", figures) for day, figures in dollar_tables().items()}
        self.tables["2026-09-11", "ecb"] = "EUR", EURO
        self.lines = [f"{day} {source} {base} " +
                      " ".join(f"{c}={f}" for c, f in sorted(figures.items()))
                      for (day, source), (base, figures) in sorted(self.tables.items())]
        self.run_historian("keep", NOW, text="\n".join(self.lines))

    def test_every_table_comes_back_to_the_last_digit(self):
        self.assertEqual(len(self.tables), 74)
        self.assertEqual(self.run_historian("all", "2024-01-01", "2026-10-01"), self.lines)

    def side(self, table, code, day):
        """(units of the base's one, whether printed), or None."""
        base, figures = table
        if code == base:
            return decimal.Decimal(1), True
        if code in figures:
            return decimal.Decimal(figures[code]), True
        if code in self.ratios and self.ratios[code][3] <= day:
            successor, units, others, _ = self.ratios[code]
            found = self.side(table, successor, day)
            return found and (found[0] * units / others, False)
        return None

    def expected(self, day, source, target, wanted):
        """As the program should answer, by another way: day after day back, exact until the end."""
        date = datetime.date.fromisoformat(day)
        for back in range(8):
            of = (date - datetime.timedelta(back)).isoformat()
            for kind in wanted:
                table = self.tables.get((of, kind))
                sides = table and [self.side(table, code, of) for code in (source, target)]
                if not sides or None in sides or source == target:
                    continue
                (below, first), (above, second) = sides
                printed = source == table[0] and second
                how = ("byLaw" if not first or not second else
                       "printed" if table[0] in (source, target) else "crossed")
                return above if printed else DIGITS.divide(above, below), of, kind, how
        return None

    def test_pairs_at_random_are_those_of_decimals(self):
        decimal.getcontext().prec = 120
        chance, self.ratios = random.Random(20261125), ratios()
        days = sorted({day for day, _ in self.tables})
        codes = sorted({code for _, figures in self.tables.values() for code in figures})
        common = [*EURO, "EUR", "DEM", "FRF", "GRD", "TRL", "HRK", "XPT", "ADP", "USD", "BTC"]
        questions = []
        for _ in range(int(os.environ.get("FEXORA_PAIRS", "20000"))):
            day = datetime.date.fromisoformat(chance.choice(days))
            day += datetime.timedelta(chance.randrange(10))
            pair = [chance.choice(chance.choice([codes, common, common])) for _ in range(2)]
            wanted = chance.choice([["ecb", "usd"], ["usd"], ["ecb"], ["usd", "ecb"]])
            questions.append((day.isoformat(), *pair, wanted))
        answers = self.run_historian("ask", text="\n".join(
            " ".join([day, *pair, *wanted]) for day, *pair, wanted in questions))
        found = 0
        for question, answer in zip(questions, answers, strict=True):
            expected = self.expected(*question)
            if expected is None:
                self.assertEqual(answer, "none", question)
                continue
            rate, *rest = answer.split()
            self.assertEqual((float(rate), rest),
                             (float(expected[0]), list(expected[1:])), question)
            found += 1
        self.assertGreater(found, len(questions) / 4)


class Crashes(PastRatesTest):
    def table(self, source, number):
        day = datetime.date(1900, 1, 1) + datetime.timedelta(number)
        return f"{day} {source} EUR " + " ".join(f"C{i:02}={number + 1}.{i:02}" for i in range(40))

    def test_killed_writers_lose_and_tear_nothing_that_was_acknowledged(self):
        chance = random.Random(20261125)
        kills = int(os.environ.get("FEXORA_HISTORY_KILLS", "8"))
        counts, acknowledged = {"one": 0, "two": 0}, []
        for _ in range(kills):
            writers = {}
            for source in counts:
                lines = "\n".join(self.table(source, counts[source] + i) for i in range(100))
                text = self.container / f"{source}.txt"
                text.write_text(lines)
                with text.open() as file:
                    writers[source] = subprocess.Popen(
                        [HISTORIAN, "keep", NOW, "--each"], stdin=file, stdout=subprocess.PIPE,
                        env={"FEXORA_CONTAINER": str(self.container)}, text=True)
            for source in chance.sample(sorted(writers), 2):
                told = [writers[source].stdout.readline()
                        for _ in range(chance.choice([1, 1, 2, 5]))]
                writers[source].kill()
                told += writers[source].communicate()[0].splitlines(True)
                done = [line for line in told if line.endswith("\n")]
                acknowledged += [self.table(source, counts[source] + i) for i in range(len(done))]
                counts[source] += len(done)
        left = self.run_historian("all", "1900-01-01", "2026-01-01")
        self.assertEqual(len(set(acknowledged) - set(left)), 0, "of days that were acknowledged")
        self.assertEqual(set(left) - {self.table(source, i) for source in counts
                                      for i in range(counts[source] + 100)}, set())
        print(f"{kills} kills, {len(acknowledged)} days acknowledged, {len(left)} there")
        self.assertGreater(len(acknowledged), kills)


if __name__ == "__main__":
    unittest.main()
