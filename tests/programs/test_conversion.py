"""The main job, offline."""

import json
import os
import plistlib
import time

from support import ProgramTest, snapshot_rates


class Conversion(ProgramTest):
    def test_every_pair_of_many_codes_is_the_quotient_of_the_snapshot(self):
        rates = snapshot_rates()
        extremes = ["BTC", "VEF", "IDR", "1INCH", "USD", "EUR", "JPY", "KWD", "SHIB", "XAU", "IRR"]
        codes = extremes + [code for code in sorted(rates) if code not in extremes][:60]
        self.succeed("select", *codes)
        for source in codes:
            items = self.json("1", source)["items"]
            self.assertEqual([item["currency"] for item in items], [c for c in codes if c != source])
            for item in items:
                # The dollar's own 1 makes both directions of it plain quotients too.
                self.assertEqual(item["rate"], rates[item["currency"]] / rates[source], (source, item))

    def test_keys_and_values_of_the_answer(self):
        answer = self.json("100", "usd", "Eur", "GBP", "eur")
        self.assertEqual(list(answer), ["amount", "source", "invert", "updated", "age_seconds",
                                        "origin", "rates", "items", "missing"])
        self.assertEqual({**answer["rates"], "stored": None}, {
            "published": "2026-09-29T00:00:00Z", "stored": None, "source": "", "origin": "bundled",
            "state": "old"})
        self.assertEqual((answer["amount"], answer["source"], answer["invert"]), (100, "USD", False))
        self.assertEqual((answer["updated"], answer["origin"]), ("2026-09-29T00:00:00Z", "bundled"))
        self.assertAlmostEqual(answer["age_seconds"], time.time() - 1790640000, delta=60)
        self.assertEqual([item["currency"] for item in answer["items"]], ["EUR", "GBP"])
        rate = snapshot_rates()["EUR"]
        self.assertEqual(answer["items"][0], {"currency": "EUR", "rate": rate, "amount": 100 * rate})
        self.assertEqual(answer["missing"], [])
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
                ("1", "BTC", "0.00000012", "0.00000012"), ("-1", "BTC", "-0.00000012", "0.00000012"),
                ("1", "ETH", "1.00", "0.99996"), ("-1", "XRP", f"{-1e-40:.40f}", f"{1e-40:.40f}"),
                ("5e-324", "ETH", "0." + "0" * 323 + "5", "0.99996")]:
            title, row, _ = self.succeed("--", amount, "USD", code).splitlines()
            self.assertRegex(title, "[1-9].* USD =")
            self.assertEqual(row, f"  {shown} {code}   (1 USD = {rate} {code})")


class Rejections(ProgramTest):
    def test_wrong_use_and_no_numbers_exit_with_2(self):
        self.assertIn("amount", self.reject(2))
        self.assertIn("currency", self.reject(2, "100"))
        for text in ["abc", "1.2.3", "", "1,234.5", "--", "0x10", "1e", "½", "1e400", "-1e400", "∞"]:
            words = ["--", text] if text.startswith("--") else [text]
            self.assertIn(f'"{text}"', self.reject(2, *words, "USD", "EUR"))
        self.assertIn("--bogus", self.reject(2, "1", "USD", "--bogus"))
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
                ("--container", ["status", "--container"]),
                ("--container", ["status", "--container", "--json"]),
                ("--locale", ["--locale=", "status"]), ("--lang", ["status", "--lang", ""]),
                ("--exclude", ["search", "yen", "--exclude", ""]),
                ("--limit", ["search", "yen", "--limit=", "3"]),
                ("--limit", ["search", "yen", "--limit", "9" * 30]),
                ("--limit", ["search", "yen", "--limit", "0x3"]),
                ("--refresh", ["watch", "--refresh", "1e400"]),
                ("--refresh", ["watch", "--refresh", "nan"])]:
            self.assertIn(option, self.reject(2, *words, cwd=self.container), words)
        self.assertEqual(os.listdir(self.container), [])
        self.succeed("status", "--container=--x", cwd=self.container)
        self.assertEqual(os.listdir(self.container), ["--x"])

    def test_bytes_that_are_no_text(self):
        """They stand as U+FFFD in JSON, whose reader could not take them."""
        folder = f"{self.container}/\udcffÄ\udce2\udc82"
        for words in (["status"], ["1\udcff", "USD", "EUR"], ["search", "yen", "--limit", "\udc80"]):
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
