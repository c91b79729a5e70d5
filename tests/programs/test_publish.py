"""The program fexora-publish, as operators run it."""

import json
import os
import re
import time
import unittest

from service import LIMIT
from support import SNAPSHOT, SOURCE, ProgramTest
from test_service import EURO, PER_EURO

# Values in one answer that the library reads: six of the whole, and three a rate.
MOST = (int(re.search(r"kJsonValues = std::size_t\{(\d+)\} << 10",
                      (SOURCE / "fexora/platform/base/Limits.h").read_text())[1]) * 1024 - 6) // 3


def day_before(days):
    return time.strftime("%Y-%m-%d", time.gmtime(time.time() - days * 86400))


def of_day(day):
    return json.dumps({"date": day, "usd": {"eur": 0.85}})


class Publish(ProgramTest):
    program = "fexora-publish"
    longest = 520

    def setUp(self):
        super().setUp()
        self.folder = self.container
        self.output = self.folder / "rates.json"

    def run_program(self, *words, **options):
        result = super().run_program(*words, **options)
        self.assertFalse(result[0] and result[1], "a rejection has no result")
        return result

    def publish(self, *words, **options):
        """What must succeed; the answer with its rates by code, checked to be in wire format."""
        return self.answer(self.succeed(*words, **options) or self.output.read_text())

    def answer(self, text):
        answer = json.loads(text)
        self.assertEqual(set(answer), {"serviceMessage", "updated", "source", "count", "rates"})
        self.assertEqual([type(answer[key]) for key in ("serviceMessage", "source")], [str, str])
        rates = {rate["code"]: rate["rate"] for rate in answer["rates"]}
        self.assertEqual([answer["count"]] * 2, [len(answer["rates"]), len(rates)])
        return answer | {"rates": rates}

    def rates(self, *words, **options):
        return self.publish(*words, **options)["rates"]

    def reject_saying(self, said, *words, **options):
        """Rejected with a message that has each part of what is said; what stood there stays."""
        self.output.write_text("old")
        err = self.reject(2, "--output", self.output, *words, **options)
        self.assertEqual([part for part in said if part not in err], [], err)
        self.assertEqual(self.output.read_text(), "old")
        self.assertEqual(list(self.folder.iterdir()), [self.output])

    def reject_each(self, cases):
        for text, *said in cases:
            with self.subTest(text[:200]):
                self.reject_saying(said, "-", text=text)


class Sources(Publish):
    def test_rates_of_one_euro_become_those_of_one_dollar(self):
        expected = {code: rate / PER_EURO["USD"] for code, rate in PER_EURO.items()}
        self.assertEqual(self.rates(EURO), expected | {"USD": 1, "EUR": 1 / PER_EURO["USD"]})

    def test_every_figure_is_kept(self):
        figures = json.loads(SNAPSHOT.read_text())["usd"]
        self.assertEqual(len(figures), 339)
        self.assertEqual(self.rates(SNAPSHOT),
                         {code.upper(): rate for code, rate in figures.items()})
        long = '{"usd": {"eur": 0.123456789012345678901234567, "jpy": 1034444444444444459008e0}}'
        self.assertEqual(self.rates("-", text=long),
                         {"EUR": 0.123456789012345678901234567, "JPY": 1034444444444444459008.0,
                          "USD": 1})

    def test_later_sources_fill_what_earlier_lack(self):
        euro, dollar = self.rates(EURO), self.rates(SNAPSHOT)
        answer = self.publish(EURO, SNAPSHOT)
        self.assertEqual(answer["rates"], dollar | euro)
        self.assertEqual(answer["source"], f"{EURO.name} 2026-09-11, {SNAPSHOT.name} 2026-09-29")
        self.assertEqual(answer["updated"], 1789084800)
        filled = self.rates("-", EURO, text="\ufeffcode,rate\r\n eur , 0.86 \r\n\r\nxyz,7e-3")
        self.assertEqual(filled, euro | {"EUR": 0.86, "XYZ": 0.007})
        # What contradicts each other is said, unless somebody insists.
        self.reject_saying(["standard input", EURO.name, "EUR is 0.5"], "-", EURO, text="eur,0.5\n")
        self.assertEqual(self.rates("--force", "-", EURO, text="eur,0.5\n"), euro | {"EUR": 0.5})

    def test_other_bases_and_keys_that_are_no_code(self):
        expected = {"USD": 1, "EUR": 1 / 1.25, "GBP": 0.75 / 1.25}
        for text in ('{"base": "EUR", "date": "2026-09-29", "rates": {"USD": 1.25, "GBP": 0.75}}',
                     '{"date": "2026-09-29", "eur": {"usd": 1.25, "gbp": 0.75}}',
                     '{"rates": {"USD": 1.25, "GBP": 0.75}, "meta": {"is": {}}, "base": "eur"}',
                     'Currency;Rate\r\n"eur";1\r\nusd;"1,25"\r\ngbp ; 0,750\r\n',
                     '"code","rate"\n"eur","1"\nusd,"1,25"\ngbp,0.75\n',
                     "eur,\t1\nusd,\t1.25\ngbp,\t0.75\n",
                     "eur,1\nusd,1.25\ngbp,0.75\n"):
            self.assertEqual(self.rates("-", text=text), expected)
        undated = self.publish("-", text='{"date": null, "updated": 1790640000, "usd": {"eur": 1}}')
        self.assertEqual(undated["updated"], 1790640000)
        passed = self.run_program("-", text='{"usd": {"$wen": 1, "btc.b": 2, "eur": 0.85}}')
        self.assertEqual(self.answer(passed[1])["rates"], {"USD": 1, "EUR": 0.85})
        self.assertIn("2 keys that are no currency code", passed[2])

    def test_a_name_that_is_no_text(self):
        source = self.folder / "[\udcff]"
        source.write_text("eur,1\n")
        self.assertRegex(self.publish(source)["source"], r"\A\[\ufffd\] ")

    def test_csv_that_is_rejected(self):
        self.reject_each([
            ("eur,1\ngbp,1,5\n", "standard input", "line 2", "gbp", "1,5"),
            ("eur,1\ngbp\n", "line 2"),
            ("eur,1\n\ngbp,0\n", "line 3", "GBP", "positive"), ("gbp,\n", "line 1", "gbp"),
            ("gbp,1e999\n", "line 1", "GBP", "finite"),
            ("gbp,1e-320\n", "line 1", "GBP", "reciprocal"),
            ('"jpy","1,234"\n', "line 1", "1,234", "two ways"),
            ("eur;0,85\njpy;1.234\n", "line 2", "1.234", "two ways"),
            ("eur,rate\n", "line 1", "eur", "no number"),
            ('g"p,1\n', "line 1", 'g"p', "code"), (",1\n", "line 1", "code"),
            ("gbp,1\nGBP,1\n", "line 2", "GBP", "line 1"), ("usd,1.1\n", "line 1", "USD"),
            ("code,rate\n", "no rates"), (" " * (LIMIT + 1), "too large")])

    def test_json_that_is_rejected(self):
        self.reject_each([
            ('{"usd": {\n"eur": 1,\n"gbp": 0}}', "line 3", "GBP", "positive"),
            ('{"usd": [1]}', "line 1"),
            ('{"usd": {\n"gbp": 1e400}}', "line 2", "gbp", "1e400"),
            ('{"usd": {"gbp": 1}', "line 1"),
            ('{"usd": {\n\n"gbp": "1"}}', "line 3", "gbp"),
            ('{"usd": {"gbp": 1}} x', "standard input"),
            ('{"usd": {"gbp": 1}, "usd": {}}', "line 1", "twice"),
            ('{"rates": [{"code": "EUR",\n"rate": 1, "rate": 2}]}', "line 2", "rate", "twice"),
            ('{"base": "EUR", "usd": {"gbp": 1}}', "usd", "EUR"),
            ('{"usd": {"gbp": true}}', "gbp", "number"),
            ('{"base": "EUR", "rates": {"GBP": 0.86}}', "EUR", "dollar"),
            ('{"eur": {"gbp": 1}}', "usd"), ('{"base": "\\u001b", "rates": {"gbp": 1}}', "base"),
            ('{"date": "2026-02-30",\n"usd": {"gbp": 1}}', "2026-02-30", "date")])

    def test_xml_that_is_rejected(self):
        dollar = "<Cube currency='USD' rate='1.1'/>\n"
        self.reject_each([(f"<e><Cube><Cube time='2026-09-11'>\n{cubes}</Cube></Cube></e>", *said)
                          for cubes, *said in [
            ("<Cube currency='JPY' rate='178'/>\n", "standard input", "USD"),
            (dollar + "<Cube currency='JPY' rate='x'/>", "line 3", "JPY"),
            (dollar + "<Cube currency='JPY'/>", "line 3", "JPY"),
            (dollar + "<Cube rate='1'/>", "line 3"),
            ("<Cube currency='USD' rate='0'/>", "line 2", "USD"),
            ("<Cube currency='USD' rate='1e-300'/><Cube currency='JPY' rate='1e300'/>",
             "line 2", "JPY", "finite"),
            (dollar + "<Cube currency='EUR' rate='2'/>", "line 3", "EUR"),
            (dollar + "<Cube time='2026-09-10'/>", "line 3", "day")]])
        self.reject_each([
            ("<e><Cube time='yesterday'/></e>", "line 1", "yesterday"), ("<e>\n<Cube>", "line 2"),
            ("<!DOCTYPE e [<!ENTITY a 'b'>]><e/>", "line 1", "DOCTYPE")])

    def test_the_age(self):
        self.publish("--max-age", "3", "-", text=of_day(day_before(2)))
        self.publish("-", text=of_day("1999-01-04"))
        # Somewhere it is tomorrow already; but never the day after.
        for days in (0, -1):
            self.publish("--max-age", "0", "-", text=of_day(day_before(days)))
        for day, said, *words in [(day_before(5), "5 days", "--max-age", "3"),
                                  (day_before(-3), "future"), ("2126-01-01", "future")]:
            self.reject_saying([day, said], *words, "-", text=of_day(day))
        # Any of the sources, whether or not it gives anything to the result.
        self.reject_saying([SNAPSHOT.name], "--max-age", "3", "-", SNAPSHOT, text="eur,1\ncny,1\n")

    def test_the_age_of_rates_without_a_day_is_that_of_the_file(self):
        source = self.folder / "rates.csv"
        source.write_text("eur,0.85\n")
        self.publish("--max-age", "1", source)
        os.utime(source, (time.time() - 4 * 86400,) * 2)
        self.assertIn(day_before(4), self.reject(2, "--max-age", "1", source))

    def test_the_count(self):
        self.assertEqual(len(self.rates("--min-count", "9", EURO)), 9)
        for fewest in ("10", "010"):
            self.reject_saying(["9 codes", "10"], "--min-count", fewest, EURO)
        # As many as the library reads.
        csv = "".join(f"a{i},1\n" for i in range(MOST - 1))
        self.assertEqual(len(self.rates("-", text=csv)), MOST)
        self.reject_saying(["codes", str(MOST)], "-", text=csv + "b,1\n")


class Output(Publish):
    def jump(self, percent, csv, *words):
        """From 100 pounds and euros; what was said when it was rejected."""
        self.output.unlink(missing_ok=True)
        self.publish("--output", self.output, "-", text="eur,100\ngbp,100\n")
        words = (*words, "--output", self.output, "--max-jump", percent, "-")
        code, _, err = self.run_program(*words, text=csv)
        now = self.answer(self.output.read_text())["rates"]
        self.assertEqual((code, now["GBP"] == 100), (2, True) if err else (0, False), err)
        return err

    def test_jumps(self):
        for percent, csv, *words in [
                ("10", "eur,100\ngbp,110\n"), ("10", "eur,100\ngbp,90\n"),
                ("10", "gbp,500\n", "--force"),
                ("10", "gbp,1e308\n", "--force")]:
            self.assertEqual(self.jump(percent, csv, *words), "")
        self.reject(2, "--output", self.output, "--max-jump", "10", "-", text="gbp,1.7e308\n")
        for rate in ("110.1", "89.9", "1e-300", "1e300"):
            err = self.jump("10", f"eur,100\ngbp,{rate}\n")
            self.assertRegex(err, r"line 2.*GBP.*10 %.*100")
        self.assertNotEqual(self.jump("0", "eur,100\ngbp,100.00001\n"), "")
        self.assertIn("EUR is not there any more", self.jump("10", "gbp,100\n"))
        # A published whole number beyond 64 bits is compared like any other.
        large = "gbp,1034444444444444444470\n"
        self.assertEqual(self.jump("0", large, "--force"), "")
        self.publish("--output", self.output, "--max-jump", "0", "-", text=large)

    def test_jumps_with_nothing_to_compare(self):
        words = ("--output", self.output, "--max-jump", "1", "-")
        self.publish(*words, text="eur,2\n")
        self.reject_saying([str(self.output), "--force"], "--max-jump", "1", "-", text="eur,1\n")
        self.publish("--force", *words, text="eur,1\n")
        self.reject(2, "--max-jump", "1", "-", text="eur,1\n")

    def test_it_is_replaced_whole_and_keeps_its_mode(self):
        self.publish("--output", self.output, EURO)
        before = self.output.stat()
        self.assertEqual(before.st_mode & 0o7777, 0o644)
        self.assertEqual(self.output.read_text(), self.succeed(EURO))
        self.publish("--output", self.output, EURO)
        self.assertEqual(self.output.stat().st_ino, before.st_ino, "unchanged, so left alone")
        self.output.chmod(0o640)
        self.assertEqual(len(self.rates("--output", self.output, SNAPSHOT)), 339)
        self.assertEqual(self.output.stat().st_mode & 0o7777, 0o640)
        self.assertEqual(list(self.folder.iterdir()), [self.output])

    @unittest.skipUnless(os.geteuid() == 0, "only root may give files away")
    def test_it_keeps_owner_and_group(self):
        self.output.write_text("old")
        os.chown(self.output, 1, 2)
        # A root that may not either.
        err = self.reject(4, "--output", self.output, EURO,
                          before=("/usr/bin/setpriv", "--bounding-set=-chown"))
        self.assertIn("owner and group", err)
        self.assertEqual(self.output.read_text(), "old")
        self.assertEqual(list(self.folder.iterdir()), [self.output])
        self.publish("--output", self.output, EURO)
        self.assertEqual(self.output.stat()[4:6], (1, 2))

    def test_what_cannot_be_written(self):
        target = self.folder / "target"
        target.write_text("old")
        self.output.symlink_to(target)
        for output in (self.folder / "missing/rates.json", self.folder, self.output):
            self.reject(4, "--output", output, EURO)
        self.assertEqual(target.read_text(), "old")
        self.reject_full_output(EURO)

    def test_use(self):
        for words in [(), ("--colour", EURO), ("--max-age", EURO), ("--max-age", "-1", EURO),
                      ("--max-age", "x", EURO), ("--min-count", "-1", EURO),
                      ("--max-jump", "nan", EURO),
                      ("--max-age", "0x3", EURO), ("--min-count", "9e9", EURO),
                      ("--output", "--force", EURO), ("-", "-"), ("--output",)]:
            self.reject(2, *words)
        # An option whose value is missing takes no source for it.
        self.output.write_text("eur,1\n")
        options = ("--output", "--max-age", "--min-count", "--max-jump")
        for option in options:
            for words in ((option + "=", self.output, EURO), (option, "", self.output)):
                self.assertIn(option, self.reject(2, *words))
        self.assertEqual(self.output.read_text(), "eur,1\n")
        self.assertEqual(self.succeed("--output", "-", EURO), self.succeed(EURO))
        self.reject_saying(["missing.csv", "No such file"], self.folder / "missing.csv")
        self.reject_saying([str(self.folder)], self.folder)
        shown = self.succeed("--help")
        for option in (*options, "--force", "SOURCE"):
            self.assertIn(option, shown)
        self.succeed("--version")
