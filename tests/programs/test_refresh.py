"""`fexora refresh` and `fexora watch --refresh` against a service that a test scripts."""

import datetime
import json
import pathlib
import plistlib
import signal
import threading
import time

from service import ServedTest, answer
from test_sharing import Watcher

GOOD = json.dumps({"serviceMessage": "", "updated": 1, "source": "test", "count": 3,
                   "rates": [{"code": "EUR", "rate": 0.8}, {"code": "JPY", "rate": "150,5"},
                             {"code": "USD", "rate": 1}, {"code": "NOSUCHCODE", "rate": 1}]})


class Refresh(ServedTest):
    def setUp(self):
        super().setUp()
        self.service.script = answer(GOOD)
        self.folder = self.new_folder()

    def test_rates_are_stored_and_converted_with(self):
        result = self.json("refresh")
        self.assertEqual(set(result), {"origin", "count", "message", "updated"})
        self.assertEqual((result["origin"], result["count"], result["message"]), ("service", 3, ""))
        self.assertRegex(result["updated"], r"\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ\Z")
        self.assertEqual(self.json("10", "USD", "EUR", "JPY")["items"][1]["amount"], 1505)
        self.assertIn("3 rates", self.succeed("refresh"))
        self.assertEqual(len(self.service.requests), 2, "one a run")

    def test_odd_figures_cost_only_themselves(self):
        self.service.script = answer("""\ufeff{
            "serviceMessage": 7, "updated": 123456789012345678901234567890, "count": "two",
            "rates": [{"code": "EUR", "rate": "0.5"}, {"code": "JPY", "rate": "150,5"},
            {"code": "GBP", "rate": 1e400}, {"code": "CHF", "rate": 1, "rate": 2}, {"rate": 3},
            {"code": "CNY", "rate": null}, {"code": "INR", "rate": "x"},
            {"code": "SEK", "rate": true},
            {"code": "USD", "rate": 1}, {"code": "USD", "rate": 1, "code": "EUR"}]}""")
        self.assertEqual(self.failure(3, "refresh")["kind"], "implausible")
        self.assertEqual(self.json("refresh", "--force")["message"], "")
        stored = [(rate["code"], rate["rate"]) for rate in self.content()["UDUSDRates"]]
        self.assertEqual(stored, [
            ("EUR", 0.5), ("JPY", 150.5), ("GBP", float("inf")), ("CHF", 1), ("CNY", 0), ("INR", 0),
            ("SEK", 1), ("USD", 1), ("USD", 1)])
        _, out, err = self.run_program("2", "USD", "EUR", "GBP", "--json")
        self.assertEqual([item["amount"] for item in json.loads(out)["items"]], [1, None])
        self.assertIn("the result for GBP is no finite number", err)

    def test_sources_in_every_form_from_files_and_addresses(self):
        day = "2026-09-11"
        published = datetime.datetime.fromisoformat(day + "T06:07:08+00:00").timestamp()
        forms = {
            "own": json.dumps({"updated": published, "rates": [
                {"rate": 0.5, "code": "EUR"}, {"code": "USD", "rate": 1}]}),
            "dollar.json": json.dumps({"date": day, "usd": {"usd": 1, "eur": 0.5}}),
            "euro.xml": f'<E><Cube><Cube time="{day}">'
                        '<Cube currency="USD" rate="2"/></Cube></Cube></E>',
            "some.csv": "code,rate\nUSD,1\nEUR,0.5\n"}
        for name, content in forms.items():
            (self.folder / name).write_text(content)
            self.service.paths["/" + name] = answer(content)
            for source, origin in ((str(self.folder / name), "file"),
                                   (f"{self.service.base}/{name}", "service")):
                self.assertEqual(self.json("refresh", "--force", "--from", source)["origin"],
                                 origin)
                rates = self.json("1", "USD", "EUR")
                self.assertEqual(rates["items"][0]["amount"], 0.5)
                self.assertIn(name, rates["rates"]["source"])
                if not name.endswith(".csv"):
                    self.assertEqual(rates["rates"]["published"][:10], day)
                    self.assertIn("rates of 11 September", self.succeed("1", "USD", "EUR"))
        # The first is the base, later ones add what it lacks; a dash is standard input.
        result = self.run_program("refresh", "--force", "--from", str(self.folder / "own"),
                                  "--from", "-", text="JPY,140\n")
        self.assertIn("3 rates", result[1])
        self.assertEqual(self.json("1", "USD", "JPY")["items"][0]["amount"], 140)
        (self.folder / "more").write_text("EUR,9\nJPY,150\n")
        words = ("refresh", "--from", str(self.folder / "own"), "--from", str(self.folder / "more"))
        self.assertIn("EUR is 0.5 in one and 9 in another", self.reject(3, *words))
        (self.folder / "more").write_text(
            '{"date": "2026-10-01", "usd": {"eur": 0.51, "jpy": 150}}')
        self.assertEqual(self.json(*words)["count"], 3)
        euro, yen = self.json("1", "USD", "EUR", "JPY")["items"]
        self.assertEqual((euro["amount"], "published" in euro), (0.5, False))
        self.assertEqual((yen["amount"], yen["published"][:10], yen["source"]),
                         (150, "2026-10-01", "more"))
        (self.folder / "third").write_text("JPY,9\n")
        self.assertIn("JPY is 150 in one and 9 in another",
                      self.reject(3, *words, "--from", str(self.folder / "third")))
        self.assertIn("(rate of 1 October, more)", self.succeed("1", "USD", "EUR", "JPY"))

    def test_what_may_not_replace_the_rates_stays_out_and_says_why(self):
        self.succeed("refresh")
        before = self.store.read_bytes()
        for text, kind, part in (("EUR,0\n", "source", "line 1, EUR"),
                                 ("EUR,1.5\nJPY,150\n", "implausible", "EUR"),
                                 ("EUR,1\nJPY,180\n", "source", "dollar"),
                                 ("\n", "implausible", "there are none")):
            (self.folder / "source.csv").write_text(text)
            error = self.failure(3, "refresh", "--from", str(self.folder / "source.csv"))
            self.assertEqual(error["kind"], kind)
            self.assertIn(part, error["message"])
            self.assertIn("the cached rates stay", error["message"])
            self.assertEqual(self.store.read_bytes(), before)
        for missing in (str(self.folder / "none"), self.service.base + "/none"):
            self.service.script = answer("", status="404 Not Found")
            self.assertIn("none", self.failure(3, "refresh", "--from", missing)["message"])

    def test_the_first_answer_is_compared_with_the_bundled_rates(self):
        for text in ("EUR,85\nGBP,0.75\n", "EUR,1\nGBP,0.86\n", "EUR,1.136\nJPY,0.0063\n",
                     "JPY,1.57\n"):
            (self.folder / "source.csv").write_text(text)
            self.reject(3, "refresh", "--from", str(self.folder / "source.csv"))
        self.service.script = answer('{"rates": [{"code": "EUR", "rate": 0.88}]}')
        self.assertIn("the US dollar is missing", self.reject(3, "refresh"))

    def test_what_an_answer_lacks_stays_with_its_own_day(self):
        day = time.strftime("%Y-%m-%d")
        (self.folder / "wide.json").write_text(json.dumps(
            {"date": "2026-10-01", "usd": {"eur": 0.88, "try": 50, "btc": 1e-5}}))
        (self.folder / "euro.xml").write_text(
            f'<E><Cube><Cube time="{day}"><Cube currency="USD" rate="1.14"/></Cube></Cube></E>')
        for name in ("wide.json", "euro.xml"):
            self.succeed("refresh", "--from", str(self.folder / name))
        items = {item["currency"]: item
                 for item in self.json("100", "USD", "EUR", "TRY", "BTC", "KWD")["items"]}
        self.assertEqual(items["EUR"]["amount"], 100 / 1.14)
        self.assertEqual([(items[code].get("published", day)[:10], items[code].get("source"))
                          for code in items],
                         [(day, None), ("2026-10-01", "wide.json"), ("2026-10-01", "wide.json"),
                          ("2026-09-29", "bundled")])
        # The age is that of the rates, and not that of their storing.
        self.assertGreater(self.json("status")["age_seconds"], -1)
        self.assertEqual(self.json("status")["rates"], 4)

    def test_repeated_rates_do_not_get_younger(self):
        self.service.script = answer(json.dumps(
            {"updated": time.time() - 75 * 86400 - 60,
             "rates": [{"code": "EUR", "rate": 0.9}, {"code": "USD", "rate": 1}]}))
        for _ in range(2):
            # Asking once more would bring the same.
            self.assertTrue(self.succeed("refresh").endswith(", 75 days old\n"))
        rates = self.json("1", "USD", "EUR")
        self.assertEqual(rates["rates"]["state"], "old")
        self.assertAlmostEqual(rates["age_seconds"], 75 * 86400 + 60, delta=600)

    def test_user_secret_and_query_of_an_address_are_neither_shown_nor_kept(self):
        for address, name in ((f"{self.service.base}/own?key=s3cret", "own"),
                              (f"{self.service.base}/?s3cret", "127.0.0.1")):
            path = address.removeprefix(self.service.base)
            self.service.paths[path] = answer("USD,1\nEUR,0.5\n", 'ETag: "1"')
            out = self.succeed("refresh", "--force", "--from", address)
            self.assertIn(f" from {name}", out)
        self.url = f"{self.service.base}/good?key=s3cret"
        self.service.script = answer(GOOD, 'ETag: "1"')
        self.run_program("refresh", "--force")
        past = self.container / ".fexora-history/rates.sqlite"
        self.assertNotIn(b"cret", past.read_bytes())
        kept = [*self.container.glob("*.plist"),
                *pathlib.Path(f"{self.container}-cache").glob("*/*")]
        self.assertEqual(len(kept), 2)
        for file in kept:
            self.assertNotIn("cret", repr(plistlib.loads(file.read_bytes())))
        self.service.script = b""
        for secret in ("s3cret", "s3@cret"):
            self.url = self.service.url.replace("//", f"//us3r:{secret}@")
            self.url += "?s3cret"
            for words in (["refresh"], ["refresh", "--json", "--verbose"], ["status"],
                          ["status", "--json"]):
                _, out, err = self.run_program(*words)
                self.assertNotRegex(out + err, "us3r|cret", words)
                self.assertIn("//***@127.0.0.1:", out + err, words)
        for head in self.service.requests[3:]:
            self.assertIn("\r\nAuthorization: Basic ", head)

    def test_wrong_use_and_a_failure_without_cached_rates(self):
        self.reject(2, "refresh", "EUR")
        self.reject(2, "refresh", "--from", "-", "--from", "-")
        self.service.script = b""
        self.assertIn("no rates are cached", self.reject(3, "refresh"))

    def test_progress_shows_on_a_terminal_only_and_is_wiped(self):
        go_on = threading.Event()
        whole = answer(GOOD)
        self.service.script = lambda connection: (
            connection.sendall(whole[:-9]), go_on.wait(), connection.sendall(whole[-9:]))
        process, terminal = self.start_on_terminal("refresh")
        self.assertIn("loading rates from http", self.read_until(terminal, ", 1 of 1 KB, "))
        go_on.set()
        self.assertEqual(process.wait(timeout=60), 0)
        self.assertIn("\r\x1b[K3 rates", self.read_until(terminal, "3 rates"))
        # Not at a terminal there is nothing but the result, however long it takes.
        go_on.clear()
        process = self.start("refresh")
        threading.Timer(1.2, go_on.set).start()
        self.assertEqual(process.communicate(timeout=60)[1], "")

    def test_interrupted_while_the_service_is_silent(self):
        asked, end = threading.Event(), threading.Event()
        self.addCleanup(end.set)
        self.service.script = lambda _: (asked.set(), end.wait())
        process = self.start("refresh")
        asked.wait()
        process.send_signal(signal.SIGINT)
        process.communicate(timeout=60)
        self.assertEqual(process.returncode, -signal.SIGINT)
        self.succeed("settings")

    def test_watch_keeps_the_rates_fresh_and_goes_on_when_the_service_fails(self):
        failing = answer("oops", status="500 Oops")
        scripts = [failing, failing, answer(GOOD)]
        answered = threading.Semaphore(0)
        self.service.script = lambda connection: (
            connection.sendall(scripts.pop(0)), answered.release())
        watcher = Watcher(self, "--refresh", "1")
        self.assertTrue(all(answered.acquire(timeout=60) for _ in range(3)))
        watcher.process.terminate()
        out, err = watcher.process.communicate()
        self.assertEqual(out, "")
        # Said once, not with every try.
        self.assertEqual(err.count("HTTP status 500"), 1)

    def test_watch_that_refreshes_still_tells_what_others_save(self):
        other = Watcher(self, "--count", "1")
        watcher = Watcher(self, "--refresh", "3600")
        # Its own save is no news to itself, but to the others.
        self.assertIsNotNone(other.next()["updated"])
        self.succeed("settings", "fraction", "6")
        update = watcher.next()
        self.assertEqual(update["settings"]["fraction"], 6)
        self.assertIsNotNone(update["updated"])
