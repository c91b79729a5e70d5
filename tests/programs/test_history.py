"""Rates of past days from the command line: filled from files, asked by day, listed and drawn."""

import datetime
import json
import pathlib

from support import SOURCE, ProgramTest

EURO = SOURCE / "examples/data/eur-reference-2026-09-11.xml"
PAST = ("day", "source", "how")


class History(ProgramTest):
    def setUp(self):
        super().setUp()
        self.files = self.new_folder()
        tables = {"2026-09-10": '"eur": 0.86, "$x": 7, "gbp": 0.74, "xpt": 0.00056',
                  "2026-09-11": '"eur": 0.8620, "gbp": 0.741'}
        for day, figures in tables.items():
            (self.files / f"{day}.json").write_text(f'{{"date": "{day}", "usd": {{{figures}}}}}\n')

    def fill(self):
        code, out, err = self.run_program("refresh", "--history", EURO,
                                          *sorted(self.files.glob("*.json")))
        self.assertEqual((code, out), (0, "3 days read, 3 of them new, with 13 new figures\n"))
        self.assertEqual(err, "fexora: 1 key is no currency code and was passed over\n")

    def past(self, *words, code=0):
        got, out, _ = self.run_program(*words, "--json")
        self.assertEqual(got, code, words)
        return json.loads(out)

    def test_a_day_is_converted_by_its_rates_and_saves_nothing(self):
        self.fill()
        self.succeed("7", "USD", "EUR")
        before = self.store.read_bytes()
        for words, rate, *expected in [
                (["--on", "2026-09-11"], 1 / 1.1592, "2026-09-11", "ecb", "printed"),
                (["--on", "2026-09-13"], 1 / 1.1592, "2026-09-11", "ecb", "printed"),
                (["--on", "2026-09-13", "--source", "usd"], 0.862, "2026-09-11", "usd", "printed"),
                (["on", "2026-09-11"], 1 / 1.1592, "2026-09-11", "ecb", "printed"),
                (["--before", "2026-09-11"], 0.86, "2026-09-10", "usd", "printed"),
                (["--on", "2026-09-30", "--at-most", "19"], 1 / 1.1592, "2026-09-11", "ecb",
                 "printed")]:
            answer = self.past("100", "USD", "EUR", *words)
            item = answer["items"][0]
            self.assertEqual([item[key] for key in PAST], expected)
            self.assertAlmostEqual(item["rate"], rate, delta=1e-15)
            self.assertEqual((answer["on"], answer["origin"], "rates" in answer),
                             (words[1], "history", False))
        many = self.past("100", "EUR", "DEM", "XPT", "GBP", "JPY", "XAU", "--on", "2026-09-12",
                         code=1)
        self.assertEqual([(item["currency"], item["day"], item["how"]) for item in many["items"]], [
            ("DEM", "2026-09-11", "byLaw"), ("XPT", "2026-09-10", "crossed"),
            ("GBP", "2026-09-11", "printed"), ("JPY", "2026-09-11", "printed")])
        self.assertEqual(many["missing"], ["XAU"])
        lines = "2026-09-12 100 USD EUR\n2026-09-10 1.5 GBP USD\n2026-09-12 1 000 USD EUR\nx\n"
        code, out, err = self.run_program("-", "--json", text=lines)
        items = [json.loads(line) for line in out.splitlines()]
        self.assertEqual([item.get("on") for item in items],
                         ["2026-09-12", "2026-09-10", "2026-09-12", None])
        self.assertEqual(items[2]["amount"], 1000)
        self.assertEqual((code, err.count("line 4")), (2, 1))
        self.assertEqual(self.store.read_bytes(), before)

    def test_where_there_is_no_rate_it_says_what_there_is(self):
        self.assertIn("there is no history yet",
                      self.reject(1, "1", "USD", "EUR", "--on", "2026-09-11"))
        self.fill()
        for day in ("2026-09-09", "2026-09-19"):
            self.assertIn("the history begins on 10 September",
                          self.reject(1, "1", "USD", "EUR", "--on", day))
        tomorrow = str(datetime.date.today() + datetime.timedelta(3))
        for words in (["--on", "yesterday?"], ["--on", "2026-02-30"], ["--on", tomorrow],
                      ["--at-most", "3"], ["--on", "2026-09-11", "--before", "2026-09-11"],
                      ["--on", "2026-09-11", "--at-most", "-1"], ["--source", "ecb"],
                      ["yesterday", "--on", "2026-09-11"]):
            self.reject(2, "1", "USD", "EUR", *words)
        self.reject(2, "history", "USD")
        self.reject(2, "history", "--csv")
        self.reject(2, "history", "--since", "nonsense")
        self.reject(1, "history", "USD", "XAU")

    def test_files_are_kept_whole_or_not_at_all(self):
        bad = self.new_folder() / "bad.json"
        for text in ('{"date": "2026-09-12", "usd": {"eur": 0}}', '{"usd": {"eur": 1}}',
                     "code,rate\nEUR,1\n", '{"date": "2026-09-12"}',
                     '{"date": "2026-09-12", "rates": {"EUR": 1}, "rates": {"EUR": 2}}',
                     '{"date": "2026-09-12", "usd": {"EUR": 1}, "eur": {"USD": 2}}',
                     '<Cube time="2026-09-12"><Cube currency="USD" rate="x"/></Cube>',
                     "Date,USD\n2026-09-12,1,2\n", "", '{"date": "2099-01-01", "usd": {"eur": 1}}'):
            bad.write_text(text)
            code, out, err = self.run_program("refresh", "--history", EURO, bad)
            self.assertIn((code, out, err.count("\n")), [(3, "", 1), (4, "", 1)], text)
            self.assertIn("nothing was kept", err)
            self.assertEqual(self.past("history")["sources"], [])
        self.fill()
        days = self.files / "days.xml"
        days.write_text('<x><Cube><Cube time="2026-09-10"><Cube currency="USD" rate="1.10"/></Cube>'
                        '<Cube time="2026-09-11"><Cube currency="USD" rate="1.1593"/></Cube>'
                        '</Cube></x>')
        lines = self.files / "days.csv"
        lines.write_text("Date,USD,CYP,\r\n2026-09-09,1.2,N/A,\r\n2026-09-08,1.3,0.58,\r\n")
        code, out, err = self.run_program("refresh", "--history", days, lines, "--json")
        self.assertEqual((code, json.loads(out)),
                         (0, {"read": 4, "tables": 3, "figures": 4, "corrected": 1,
                              "passedOver": 0}))
        self.assertIn("USD 2026-09-11: 1.1593 instead of 1.1592", err)
        # What stands beside the rates, and at what time of its day it was said, is passed over.
        (self.files / "more.json").write_text(
            '{"meta": {"of": {}}, "by": {"a": 1}, "timestamp": "2026-09-08T06:00:00Z", '
            '"rates": {"CAD": 1.37}, "terms": {"a": 1}}')
        self.succeed("refresh", "--history", self.files / "more.json")
        more = self.past("1", "USD", "CAD", "--on", "2026-09-08", "--source", "exchange-api")
        self.assertEqual(more["items"][0]["amount"], 1.37)
        past = self.past("1", "EUR", "CYP", "--on", "2026-09-08", "--source", "ecb")
        self.assertEqual(past["items"][0]["how"], "printed")

    def test_a_pair_is_listed_and_drawn(self):
        self.fill()
        self.assertEqual(self.succeed("history", "USD", "EUR", "XPT", "--csv", "--source", "usd"),
                         "day,EUR,XPT,source\n2026-09-10,0.86,0.00056,usd\n2026-09-11,0.862,,usd\n")
        self.assertEqual(self.succeed("history", "EUR", "GBP", "--source", "ecb"),
                         "2026-09-11  0.85815\n")
        pair = self.past("history", "USD", "GBP", "--until", "2026-09-10")
        self.assertEqual((pair["days"], pair["lowest"], pair["rates"]),
                         (1, {"day": "2026-09-10", "rate": 0.74},
                          [{"day": "2026-09-10", "rate": 0.74, "source": "usd"}]))
        kept = self.past("history")
        self.assertEqual([(line["source"], line["tables"]) for line in kept["sources"]],
                         [("ecb", 1), ("usd", 2)])
        self.assertEqual(kept["damaged"], 0)
        for locale, ink in (("C", "*"), ("C.UTF-8", "\u2800")):
            env = self.environment(LC_ALL=locale, COLUMNS="60")
            plot = self.succeed("history", "USD", "GBP", "--plot", env=env).splitlines()
            self.assertLessEqual(max(map(len, plot)), 60)
            self.assertEqual(locale == "C", "".join(plot).isascii())
            self.assertTrue(any(char == ink or char > ink == "\u2800"
                                for char in "".join(plot[2:14])), plot)
            self.assertRegex("\n".join(plot), r"\n  lowest +0\.740* +10 September")
            self.assertNotRegex(self.succeed("history", "USD", "GBP", "--plot", "--locale", "de_DE",
                                             env=env), r"\d\.\d")

    def test_damage_is_said_and_costs_nothing_else(self):
        self.fill()
        file = pathlib.Path(self.container / ".fexora-history/rates.sqlite")
        whole = file.read_bytes()
        page = int.from_bytes(whole[16:18], "big")
        file.write_bytes(whole[:page] + bytes(page) + whole[2 * page:])
        self.assertIn("damaged", self.reject(1, "1", "USD", "EUR", "--on", "2026-09-11"))
        self.succeed("1", "USD", "EUR")
        code, out, err = self.run_program("refresh", "--history", EURO)
        self.assertEqual((code, out.startswith("1 day read, 1 of them new")), (0, True), err)
        self.assertIn("kept as damaged-1.sqlite", err)
