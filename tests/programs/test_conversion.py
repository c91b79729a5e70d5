"""The main job, offline."""

import json
import os
import plistlib
import re
import signal
import subprocess
import time

from support import BIN, ProgramTest, snapshot_rates


class Conversion(ProgramTest):
    def test_every_pair_of_many_codes_is_the_quotient_of_the_snapshot(self):
        rates = snapshot_rates()
        extremes = ["BTC", "VEF", "IDR", "1INCH", "USD", "EUR", "JPY", "KWD", "SHIB", "XAU", "IRR"]
        codes = extremes + [code for code in sorted(rates) if code not in extremes][:60]
        self.succeed("select", *codes)
        for source in codes:
            items = json.loads(self.run_program("1", source, "--json")[1])["items"]
            self.assertEqual([item["currency"] for item in items],
                             [c for c in codes if c != source])
            for item in items:
                # The dollar's own 1 makes both directions of it plain quotients too.
                self.assertEqual(item["rate"], rates[item["currency"]] / rates[source],
                                 (source, item))

    def test_keys_and_values_of_the_answer(self):
        answer = self.json("100", "usd", "Eur", "GBP", "eur")
        self.assertEqual(list(answer), ["amount", "source", "invert", "updated", "age_seconds",
                                        "origin", "rates", "reading", "items", "missing",
                                        "notices"])
        self.assertEqual({**answer["rates"], "stored": None}, {
            "published": "2026-09-29T00:00:00Z", "stored": None, "source": "", "origin": "bundled",
            "state": "old"})
        self.assertEqual((answer["amount"], answer["source"], answer["invert"]),
                         (100, "USD", False))
        self.assertEqual((answer["updated"], answer["origin"]), ("2026-09-29T00:00:00Z", "bundled"))
        self.assertAlmostEqual(answer["age_seconds"], time.time() - 1790640000, delta=60)
        self.assertEqual([item["currency"] for item in answer["items"]], ["EUR", "GBP"])
        rate = snapshot_rates()["EUR"]
        self.assertEqual(answer["items"][0],
                         {"currency": "EUR", "rate": rate, "amount": 100 * rate})
        self.assertEqual((answer["missing"], answer["notices"]), ([], []))
        self.assertEqual(answer["reading"], {"kind": "exact", "value": 100, "other": None})
        # Until others are stored they are the bundled ones, whoever stored them.
        self.assertEqual(self.json("1", "USD", "EUR")["origin"], "bundled")
        content = self.content()
        content["UDUSDRates"][0]["rate"] *= 2
        self.store.write_bytes(plistlib.dumps(content))
        self.assertEqual(self.json("1", "USD", "EUR")["origin"], "store")

        # --invert divides.
        item = self.json("100", "USD", "EUR", "--invert")["items"][0]
        self.assertEqual(item["amount"], 100 / rate)

    def test_amounts_with_signs_and_both_marks(self):
        for typed, value in [("-5", -5), ("-.5", -0.5), ("12,5", 12.5), ("12.5", 12.5), ("0", 0)]:
            self.assertEqual(self.json(typed, "USD", "EUR")["amount"], value)
        env = self.environment(LC_ALL="de_DE.UTF-8")
        self.assertEqual(self.json("1.234,56", "EUR", "USD", env=env)["amount"], 1234.56)
        for locale in ("ar_EG", "fa"):
            self.assertEqual(self.json("12.5", "EUR", "USD", "--locale", locale)["amount"], 12.5)

    def noted(self, *words):
        """The JSON of a conversion that has something to say, and what it says."""
        code, out, err = self.run_program(*words, "--json")
        self.assertEqual(code, 0, err)
        return json.loads(out), err

    def test_what_has_two_readings_is_said(self):
        for words, amount, source, note in [
                (("1,234", "USD", "EUR"), 1234, "USD",
                 '"1,234" was read as 1234; write 1.234 for the other'),
                (("1.234", "USD", "EUR", "--locale", "de_DE"), 1234, "USD",
                 "write 1,234 for the other"),
                (("$100", "EUR"), 100, "USD", "the most traded"),
                (("kr 5", "EUR", "--locale", "da_DK"), 5, "DKK", "of the locale"),
                (("100", "uk", "in", "euro"), 100, "GBP", '"uk" was read as GBP (British Pound)'),
                (("250", "GBp", "USD"), 2.5, "GBP", "GBp are hundredths of GBP"),
                (("3", "ILA", "to", "USD"), 0.03, "ILS", "hundredths of ILS")]:
            answer, err = self.noted(*words)
            self.assertEqual((answer["amount"], answer["source"]), (amount, source), words)
            self.assertIn(note, err)
            self.assertTrue(any(note in notice for notice in answer["notices"]), answer)
        reading = self.noted("1,234", "USD", "EUR")[0]["reading"]
        self.assertEqual(reading, {"kind": "ambiguous", "value": 1234, "other": 1.234})
        for words in (("100USD", "eur"), ("€5", "=", "usd"), ("EUR 5", "into", "USD"),
                      ("5", "usd", "AS", "eur", "gbp")):
            self.succeed(*words)

    def test_withdrawn_money_and_rates_of_another_day(self):
        answer, err = self.noted("100", "DEM", "EUR")
        self.assertIn("DEM was replaced by EUR on 2002-01-01 (1 EUR = 1.95583 DEM)", err)
        content = self.content()
        content["UDUSDRates"] = [{"code": "EUR", "rate": 0.5}, {"code": "USD", "rate": 1},
                                 {"code": "JPY", "rate": 0}]  # no rate
        self.store.write_bytes(plistlib.dumps(content))
        items = self.noted("1", "USD", "DEM", "JPY", "EUR")[0]["items"]
        self.assertAlmostEqual(items[0]["rate"], 0.5 * 1.95583, 15)  # by law
        self.assertEqual(items[1]["rate"], snapshot_rates()["JPY"])
        self.assertEqual([item.get("published") for item in items],
                         [None, "2026-09-29T00:00:00Z", None])
        self.assertRegex(self.succeed("1", "USD", "JPY"), r"\(rate of 29 September.*, bundled\)")

    def test_rounded_to_the_minor_unit(self):
        out = self.succeed("2.75", "USD", "JPY", "BHD", "USDT", "--rounded")
        rates = snapshot_rates()
        for code, digits in (("JPY", 0), ("BHD", 3)):
            self.assertIn(f" {2.75 * rates[code]:.{digits}f} {code} ", out)
        self.assertEqual(self.json("2.75", "USD", "EUR", "--rounded")["items"][0]["amount"],
                         round(2.75 * rates["EUR"], 2))

    def test_amounts_of_standard_input(self):
        code, out, err = self.run_program("-", "USD", "EUR", "--json",
                                          text=f"1\n\n2+3\r\nx\n{'5' * 5000}\n1,234\n4\n"
                                               "\t \u00a0\n")
        lines = [json.loads(line) for line in out.splitlines()]
        self.assertEqual([line.get("amount") for line in lines], [1, 5, None, None, 1234, 4])
        self.assertRegex(err, r'\Afexora: line 4: "x".*\n.* line 5: it is longer.*\n'
                              r'.* line 6: "1,234" was.*\n\Z')
        self.assertEqual((code, self.content()["UDSourceCurrency"]["amount"]), (2, 4))
        # Ended by Ctrl+C, it keeps what it has shown.
        process = self.start("-", "USD", "EUR", stdin=subprocess.PIPE)
        process.stdin.write("6\n")
        process.stdin.flush()
        self.assertEqual(process.stdout.readline(), "6 USD =\n")
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(timeout=60), -signal.SIGINT)
        self.assertEqual(self.content()["UDSourceCurrency"]["amount"], 6)
        for unreadable in ("<.", "<&-"):
            code, out, err = self.run_program("-c", f'"$0" - USD EUR {unreadable}', BIN / "fexora",
                                              program="/bin/sh")
            self.assertEqual((code, out), (2, ""))
            self.assertIn("standard input cannot be read: ", err)

    def test_the_number_alone_for_scripts(self):
        rates = snapshot_rates()
        shown = self.succeed("1234.5", "USD", "USD", "JPY", "--plain", "--locale", "de_DE")
        self.assertEqual([float(line) for line in shown.splitlines()],
                         [1234.5, 1234.5 * rates["JPY"]])
        for small_or_large in ("1e-9", "1e25"):
            self.assertRegex(self.succeed(small_or_large, "USD", "EUR", "--plain"), r"^[0-9.]+\n$")
        self.assertEqual(self.succeed("2", "USD", "EUR", "--plain", "--rounded"),
                         f"{2 * rates['EUR']:.2f}\n")

    def test_the_input_is_recorded_unless_told_not_to(self):
        self.succeed("--no-save", "5", "USD", "EUR")
        self.assertEqual(self.content(), {})
        self.succeed("7", "gbp", "EUR")
        self.assertEqual(self.content()["UDSourceCurrency"],
                         {"amount": 7.0, "currency": {"code": "GBP"}})

    def test_people_read_their_own_number_format_and_the_age(self):
        self.succeed("settings", "fraction", "2")
        out = self.succeed("1234567.5", "USD", "JPY", "--locale", "de_DE")
        amount = f"{1234567.5 * snapshot_rates()['JPY']:,.2f}"
        self.assertIn(amount.translate(str.maketrans(".,", ",.")) + " JPY", out)
        self.assertRegex(out, r"rates of 29 September.*, bundled, \d+ days old: fexora refresh\n\Z")
        self.succeed("settings", "seporate", "false")
        self.assertIn(amount.replace(",", "") + " JPY", self.succeed("1234567.5", "USD", "JPY"))
        # Too small for two digits: shown all the same.
        small = 1 / snapshot_rates()["IDR"] * snapshot_rates()["BTC"]
        self.assertIn(f"{small:.2e}"[:1], self.succeed("1", "IDR", "BTC").split("BTC")[0])
        self.assertNotIn(" 0.00 ", self.succeed("1", "IDR", "BTC"))

    def test_what_is_not_zero_never_shows_as_zero(self):
        rates = {"BTC": 0.00000012, "ETH": 0.99996, "XRP": 1e-40}
        self.store.write_bytes(plistlib.dumps(
            {"UDUSDRates": [{"code": code, "rate": rate} for code, rate in rates.items()] +
                           [{"code": "USD", "rate": 1.0}], "Fraction": 2}))
        for amount, code, shown, rate in [
                ("1", "BTC", "0.00000012", "0.00000012"),
                ("-1", "BTC", "-0.00000012", "0.00000012"),
                ("1", "ETH", "1.00", "0.99996"), ("-1", "XRP", f"{-1e-40:.40f}", f"{1e-40:.40f}"),
                ("5e-324", "ETH", "0." + "0" * 323 + "5", "0.99996")]:
            title, row, _ = self.succeed("--", amount, "USD", code).splitlines()
            self.assertRegex(title, "[1-9].* USD =")
            self.assertEqual(row, f"  {shown} {code}   (1 USD = {rate} {code})")


class Rejections(ProgramTest):
    def test_wrong_use_and_no_numbers_exit_with_2(self):
        self.assertIn("usage: fexora AMOUNT", self.reject(2))
        self.assertIn("currency", self.reject(2, "100"))
        for text in ["abc", "1.2.3", "", "12,34,5", "--", "0x10", "1e", "½", "1e400", "-1e400",
                     "∞"]:
            words = ["--", text] if text.startswith("--") else [text]
            self.assertIn(f'"{text}"', self.reject(2, *words, "USD", "EUR"))
        for words, offered in [(["selct"], "did you mean select?"), (["help"], "mean --help?"),
                               (["-v"], "--help"), (["--hlep"], "mean --help?"),
                               (["1", "USD", "--bogus=1"], "no option --bogus\n"),
                               (["settings", "seperate"], "mean seporate?")]:
            self.assertIn(offered, self.reject(2, *words))
        self.assertIn("--count", self.reject(2, "watch", "--count", "0"))
        self.assertFalse(self.store.exists(), "nothing is made for a wrong use")

    def test_unknown_currencies_exit_with_1_and_offer_near_ones(self):
        self.assertIn('"XXQ"', self.reject(1, "1", "USD", "EUR", "XXQ"))
        self.assertEqual(self.run_program("1", "USD", "CLF")[1], "")
        self.assertNotIn("UDSourceCurrency", self.content())

    def test_what_cannot_be_converted_costs_only_itself(self):
        # A currency of the catalogue that no rate came for.
        self.assertIn("no rate from USD to CLF", self.reject(1, "1", "USD", "EUR", "CLF"))
        self.assertEqual(self.content()["UDSourceCurrency"]["amount"], 1)
        self.succeed("select", "EUR", "CLF")
        content = self.content()
        content["UDCurrencies"] += [{"code": code} for code in ("QQQ", "QQQ", "gbp", "USD")]
        self.store.write_bytes(plistlib.dumps(content))
        self.assertRegex(self.reject(1, "2", "USD"), "QQQ.*CLF")
        answer = json.loads(self.rejected(1, "2", "USD", "--json")[0])
        self.assertEqual(([item["currency"] for item in answer["items"]], answer["missing"]),
                         (["EUR", "GBP"], ["QQQ", "CLF"]))
        self.assertEqual(self.content()["UDSourceCurrency"]["amount"], 2)

    def test_json_errors_stand_on_standard_output_too(self):
        self.failure(2, "abc", "USD", "EUR")
        for word in ("--json=true", "--json=yes", "--json=2", "--json="):
            self.assertIn("error", json.loads(self.run_program("abc", "USD", word)[1]), word)
        self.assertEqual(self.run_program("abc", "USD", "--json", "--json=false")[1], "")
        out, _ = self.rejected(1, "1", "\n" * 2000 + '"', "--json")
        self.assertIn("message", json.loads(out)["error"])

    def test_a_missing_value_takes_no_other_word(self):
        for option, words in [
                ("--container", ["--container", "", "--json", "1", "USD", "EUR"]),
                ("--container", ["1", "USD", "EUR", "--container=", "--json"]),
                ("--lang", ["status", "--lang", ""]),
                ("--limit", ["search", "yen", "--limit=", "3"]),
                ("--limit", ["search", "yen", "--limit", "9" * 30]),
                ("--limit", ["search", "yen", "--limit", "0x3"]),
                ("--refresh", ["watch", "--refresh", "1e400"]),
                ("--refresh", ["watch", "--refresh", "nan"])]:
            self.assertIn(option, self.reject(2, *words, cwd=self.container), words)
        for command in ([], ["select"], ["search"], ["refresh"], ["watch"]):
            for option in re.findall(r"\n  (--[a-z-]+) [A-Z]", self.succeed(*command, "--help")):
                self.assertIn(f"{option} needs", self.reject(2, *command, option, "--json"))
        self.assertEqual(os.listdir(self.container), [])
        self.succeed("status", "--container=--x", cwd=self.container)
        self.assertEqual(os.listdir(self.container), ["--x"])

    def test_bytes_that_are_no_text(self):
        """They stand as U+FFFD in JSON, whose reader could not take them."""
        folder = f"{self.container}/\udcffÄ\udce2\udc82"
        for words in (["status"], ["1\udcff", "USD", "EUR"],
                      ["search", "yen", "--limit", "\udc80"]):
            env = self.environment(FEXORA_CONTAINER=folder)
            _, out, _ = self.run_program(*words, "--json", env=env, errors="surrogateescape")
            self.assertIn("\ufffd", out)
            out.encode()  # holds no other bytes
        self.assertIn("/\ufffdÄ\ufffd\ufffd/",
                      self.json("status", env=env, errors="surrogateescape")["file"])

    def test_help_and_version(self):
        for words, shown in [(["--help"], "AMOUNT SRC"), (["settings", "--help"], "NAME"),
                             (["--version"], r"\Afexora \d+\.\d+\.\d+\n\Z")]:
            self.assertRegex(self.succeed(*words), shown)
