"""Fresh rates for real: sources, publisher, nginx as shipped, refresh, the other process."""

import json
import urllib.error
import urllib.request

from service import Nginx, gzip, update_rates
from support import SNAPSHOT, SOURCE, ProgramTest, snapshot_rates
from test_sharing import Watcher

EURO = SOURCE / "examples/data/eur-reference-2026-09-11.xml"
# What one euro buys by that file.
PER_EURO = {"USD": 1.1592, "JPY": 178.56, "GBP": 0.85815, "CHF": 0.9331, "AUD": 1.7684,
            "CAD": 1.6012, "ILS": 3.5301, "NZD": 1.9455}


def expected_rates():
    rates = snapshot_rates()
    rates.update({code: rate / PER_EURO["USD"] for code, rate in PER_EURO.items()})
    rates["EUR"] = 1 / PER_EURO["USD"]
    rates["USD"] = 1.0
    return rates


class ShippedService(ProgramTest):
    def setUp(self):
        super().setUp()
        self.folder = self.new_folder()
        self.web = self.folder / "web"
        self.web.mkdir()
        self.assertEqual(update_rates(self.web, EURO, SNAPSHOT), 0)
        self.nginx = Nginx(self, self.web, self.folder / "run")
        self.url = self.nginx.url

    def say(self, message):
        """Publishes the same rates with a message for the users."""
        answer = json.loads((self.web / "rates.json").read_text(encoding="utf-8"))
        answer["serviceMessage"] = message
        (self.web / "rates.json").write_text(json.dumps(answer), encoding="utf-8")
        (self.web / "rates.json.gz").write_bytes(gzip((self.web / "rates.json").read_bytes()))

    def get(self, **headers):
        return urllib.request.urlopen(urllib.request.Request(self.nginx.url, headers=headers))

    def test_refreshed_rates_reach_the_other_process(self):
        watcher = Watcher(self, "--count", "1")
        answer = self.json("refresh")
        self.assertEqual((answer["origin"], answer["count"]), ("service", 339))
        update = watcher.next()
        self.assertEqual(update["updated"], answer["updated"])
        stored = {rate["code"]: rate["rate"] for rate in self.content()["UDUSDRates"]}
        self.assertEqual(stored, expected_rates())
        converted = self.json("100", "EUR", "USD", "GBP")
        self.assertEqual(converted["origin"], "store")
        for item, code in zip(converted["items"], ("USD", "GBP"), strict=True):
            quotient = stored[code] / stored["EUR"]
            self.assertEqual(item, {"currency": code, "rate": quotient, "amount": 100 * quotient})

    def test_an_unchanged_answer_is_not_sent_again(self):
        packed = (self.web / "rates.json.gz").stat().st_size
        first = self.json("refresh")
        again = self.json("refresh")
        self.assertEqual((again["count"], again["origin"]), (first["count"], "service"))
        self.assertEqual(self.nginx.asked()[:3], (200, packed, ""))
        status, size, tag, name = self.nginx.asked()
        self.assertEqual((status, size), (304, 0))
        self.assertRegex(f"{tag} {name}", r'\A"[0-9a-f]+-[0-9a-f]+" fexora/')
        # The same sources again change nothing, so the answers that clients keep stay valid.
        self.assertEqual(update_rates(self.web, EURO, SNAPSHOT), 0)
        self.succeed("refresh")
        self.assertEqual(self.nginx.asked()[:2], (304, 0))

    def test_a_message_of_the_service_is_shown(self):
        self.succeed("refresh")
        self.say("Closed on 1 January – bonne année")
        self.assertEqual(self.json("refresh")["message"], "Closed on 1 January – bonne année")
        self.assertIn("Closed on 1 January", self.succeed("refresh"))
        self.assertEqual([self.nginx.asked()[0] for _ in range(3)], [200, 200, 304])

    def test_what_other_clients_get(self):
        plain = self.get()
        self.assertEqual(plain.read(), (self.web / "rates.json").read_bytes())
        self.assertEqual([plain.headers[name] for name in ("Content-Type", "Vary")],
                         ["application/json", "Accept-Encoding"])
        self.assertIn("max-age=300", plain.headers["Cache-Control"])
        packed = self.get(**{"Accept-Encoding": "gzip"})
        self.assertEqual(packed.read(), (self.web / "rates.json.gz").read_bytes())
        self.assertNotEqual(packed.headers["ETag"], plain.headers["ETag"])
        self.assertEqual(packed.headers["Last-Modified"], plain.headers["Last-Modified"])
        for url, method, status in ((self.url, "POST", 403), (self.url, "DELETE", 403),
                                    (self.url + ".gz", "GET", 404),
                                    (self.url.removesuffix("rates.json"), "GET", 404)):
            with self.assertRaisesRegex(urllib.error.HTTPError, f"Error {status}") as failure:
                urllib.request.urlopen(urllib.request.Request(url, method=method))
            failure.exception.close()

    def test_a_rejected_source_leaves_what_is_served(self):
        def state():
            stats = {path.name: path.stat() for path in self.web.iterdir()}
            return {name: (s.st_ino, s.st_mtime_ns) for name, s in stats.items()}

        before = state()
        bad = self.folder / "bad.csv"
        bad.write_text("eur,0\n", encoding="utf-8")
        self.assertEqual(update_rates(self.web, bad), 2)
        self.assertEqual(update_rates(self.web, "--max-jump", "1", SNAPSHOT, EURO), 2)
        # So does a packer that writes a part, and a name that cannot be replaced.
        good = self.folder / "good.csv"
        good.write_text("usd,1\neur,0.5\n", encoding="utf-8")
        gzip_stub = self.folder / "gzip"
        gzip_stub.write_text("#!/bin/sh\nhead -c 9 /dev/zero\nexit 1\n", encoding="utf-8")
        gzip_stub.chmod(0o755)
        self.assertEqual(update_rates(self.web, good, tools=self.folder), 4)
        self.assertEqual(state(), before)
        (self.web / "rates.json.gz").unlink()
        (self.web / "rates.json.gz").mkdir()
        self.assertEqual(update_rates(self.web, good), 4)
        self.assertEqual(state()["rates.json"], before["rates.json"])
        self.assertEqual(sorted(state()), sorted(before))
