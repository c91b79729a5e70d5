"""Settings, selection, status, and containers that cannot be used."""

import os
import plistlib
import resource
import signal

from support import BIN, ProgramTest

DEFAULTS = {"fraction": 3, "mode": 0, "seporate": True, "namingInWidget": 0,
            "numberOfCurrenciesInWidget": 10, "todayCurrencies": [], "todayConversionMode": 0,
            "todayRelativeCurrency": "USD"}


class Settings(ProgramTest):
    def test_each_setting_is_kept_and_shown(self):
        self.assertEqual(self.json("settings"), DEFAULTS)
        for name, typed, value in [
                ("fraction", "5", 5), ("mode", "dark", 1), ("seporate", "0", False),
                ("namingInWidget", "1", 1), ("numberOfCurrenciesInWidget", "250", 250),
                ("todayCurrencies", "eur, GBP ", ["EUR", "GBP"]),
                ("todayConversionMode", "rate", 1),
                ("todayRelativeCurrency", "jpy", "JPY")]:
            for words in ([name, typed], []):
                self.assertEqual(self.json("settings", *words)[name], value)
        self.assertEqual(self.succeed("settings", "mode"), "1 (dark)\n")
        self.assertEqual(self.succeed("settings", "separate"), "false\n")
        self.assertIn("\nmode = 1 (dark)\n    light or dark", self.succeed("settings"))
        # Another reader sees the types that the file's format has.
        content = self.content()
        self.assertIs(content["Seporate"], False)
        self.assertIs(type(content["Mode"]), int)
        self.assertEqual(content["TodayCurrencies"], [{"code": "EUR"}, {"code": "GBP"}])

    def test_values_out_of_range_are_rejected_and_change_nothing(self):
        for name, typed in [("fraction", "0"), ("fraction", "two"), ("mode", "2"),
                            ("seporate", "x"),
                            ("numberOfCurrenciesInWidget", "-1"), ("nope", "1")]:
            self.assertIn(name, self.reject(2, "settings", name, typed))
        self.reject(1, "settings", "todayCurrencies", "EUR,nope")
        self.assertEqual(self.json("settings"), DEFAULTS)

    def test_selection(self):
        self.assertEqual(self.json("select"), {"currencies": ["USD", "EUR"]})
        self.assertEqual(self.json("select", "jpy", "GBP", "JPY"), {"currencies": ["JPY", "GBP"]})
        self.assertEqual(self.content()["UDCurrencies"], [{"code": "JPY"}, {"code": "GBP"}])
        for changes, codes in [("--add eur --add GBP", "JPY GBP EUR"), ("CHF --add usd", "CHF USD"),
                               ("--add eur --remove chf --add CHF", "USD EUR CHF"),
                               ("jpy GBP", "JPY GBP")]:
            self.assertEqual(self.succeed("select", *changes.split()).split(), codes.split())
        for words in (["nope"], ["--add", "nope"], ["--add", "CHF", "--remove", "USD"]):
            self.reject(1, "select", *words)
        self.assertEqual([item["currency"] for item in self.json("1", "JPY")["items"]], ["GBP"])

    def test_status(self):
        before = self.json("status")
        self.assertTrue(before.pop("catalogue"))
        self.assertEqual(before, {"container": str(self.container), "file": str(self.store),
                                  "rates": 0, "currencies": 2, "updated": None, "age_seconds": None,
                                  "url": self.url})
        self.succeed("1", "USD", "EUR")
        self.assertEqual(self.json("status")["rates"], 339)

    def test_a_binary_store_of_another_writer_is_read(self):
        content = {"Fraction": 4, "UDUSDRates": [{"code": "EUR", "rate": 0.1 + 0.2}]}
        self.store.write_bytes(plistlib.dumps(content, fmt=plistlib.FMT_BINARY))
        self.assertEqual(self.json("1", "USD", "EUR")["items"][0]["rate"], 0.1 + 0.2)
        self.assertEqual(self.content()["UDUSDRates"], content["UDUSDRates"])


class Unusable(ProgramTest):
    def convert(self, code, **options):
        """A conversion prints its result first, and then what went wrong."""
        got, out, err = self.run_program("100", "USD", "EUR", **options)
        self.assertEqual(got, code, err)
        self.assertIn("EUR", out)
        return err

    def test_without_a_container_folder_every_command_says_why(self):
        (self.container / "file").write_text("mine")
        places = {self.container / "file": "Not a directory", "/proc/fexora": "No such file"}
        if os.getuid() == 0:
            (self.container / "other").mkdir()
            os.chown(self.container / "other", 1, 1)
            places[self.container / "other"] = "another user"
        for place, cause in places.items():
            env = self.environment(FEXORA_CONTAINER=str(place))
            self.assertIn(str(place), self.convert(4, env=env))
            for words in (["status"], ["select"], ["select", "EUR"], ["settings"], ["watch"],
                          ["settings", "mode", "dark"], ["refresh"], ["refresh", "--json"]):
                self.assertIn(cause, self.reject(4, *words, env=env), words)
            self.assertEqual(self.run_program("status", env=env)[1], "")
        self.assertEqual((self.container / "file").read_text(), "mine")

    def test_a_full_disk_keeps_the_old_file(self):
        self.succeed("settings", "fraction", "5")
        before = self.store.read_bytes()

        def limit():
            # A limit on a file's size makes a real short write, and then a failing one.
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

        self.assertIn(f"{self.store} was not saved: write: File too large\n",
                      self.convert(4, preexec_fn=limit))
        self.assertEqual(self.store.read_bytes(), before)
        self.assertEqual(os.listdir(self.container), ["Store.plist"])

    def test_a_store_that_cannot_be_read_is_kept_aside(self):
        self.store.write_text("nonsense")
        self.assertIn("warning", self.convert(0))
        names = sorted(os.listdir(self.container))
        self.assertEqual(len(names), 2)
        self.assertEqual((self.container / names[0]).read_text(), "nonsense")
        self.assertIn("UDUSDRates", self.content())

    def test_standard_output_that_is_full_or_closed(self):
        self.reject_full_output("1", "USD", "EUR")
        # Eight bytes, as much as an event's descriptor takes, which would have the number.
        code, _, err = self.run_program("-c", '"$0" 2 USD EUR >&-', BIN / "fexora",
                                        program="/bin/sh")
        self.assertEqual((code, "standard output" in err), (4, True), err)
