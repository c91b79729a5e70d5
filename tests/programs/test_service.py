"""Fresh rates for real: sources, publisher, nginx as shipped, refresh, the other process."""

import json
import pathlib
import subprocess
import tempfile
import urllib.error
import urllib.request

from service import Nginx, update_rates
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
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="fexora-test-"))
        self.addCleanup(subprocess.run, ["rm", "-rf", self.folder])
        self.web = self.folder / "web"
        self.web.mkdir()
        self.assertEqual(update_rates(self.web, EURO, SNAPSHOT), 0)
        self.nginx = Nginx(self, self.web, self.folder / "run")

    def environment(self, **changes):
        nginx = getattr(self, "nginx", None)
        url = nginx.url if nginx else "http://127.0.0.1:9/"
        return super().environment(**{"FEXORA_RATES_URL": url, "no_proxy": "*", **changes})

    def say(self, message):
        """Publishes the same rates with a message for the users."""
        answer = json.loads((self.web / "rates.json").read_text(encoding="utf-8"))
        answer["serviceMessage"] = message
        (self.web / "rates.json").write_text(json.dumps(answer), encoding="utf-8")
        packed = subprocess.run(["gzip", "-9", "-n", "-c", self.web / "rates.json"],
                                stdout=subprocess.PIPE, check=True).stdout
        (self.web / "rates.json.gz").write_bytes(packed)

    def get(self, **headers):
        return urllib.request.urlopen(urllib.request.Request(self.nginx.url, headers=headers))

    def test_refreshed_rates_reach_the_other_process(self):
        watcher = Watcher(self, "--count", "1")
        answer = self.json("refresh")
        self.assertEqual((answer["origin"], answer["count"]), ("service", 339))
        update = watcher.next()
        self.assertEqual(update["notification"], "FileWatcherUpdate")
        self.assertEqual(update["updated"], answer["updated"])
        stored = {rate["code"]: rate["rate"] for rate in self.content()["UDUSDRates"]}
        self.assertEqual(stored, expected_rates())
        converted = self.json("100", "EUR", "USD", "GBP")
        self.assertEqual(converted["origin"], "store")
        self.assertEqual([item["currency"] for item in converted["items"]], ["USD", "GBP"])
        rate = expected_rates()
        self.assertEqual(converted["items"][0]["amount"], 100 * (1 / rate["EUR"]))
        self.assertEqual(converted["items"][1]["amount"], 100 * (rate["GBP"] / rate["EUR"]))

    def test_an_unchanged_answer_is_not_sent_again(self):
        packed = (self.web / "rates.json.gz").stat().st_size
        first = self.json("refresh")
        again = self.json("refresh")
        self.assertEqual((again["count"], again["origin"]), (first["count"], "service"))
        self.assertEqual(self.nginx.asked()[:3], (200, packed, ""))
        status, size, tag, name = self.nginx.asked()
        self.assertEqual((status, size), (304, 0))
        self.assertRegex(tag, r'\A"[0-9a-f]+-[0-9a-f]+"\Z')
        self.assertTrue(name.startswith("fexora/"), name)
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
        self.assertEqual(plain.headers["Content-Type"], "application/json")
        self.assertEqual(plain.headers["Vary"], "Accept-Encoding")
        self.assertIn("max-age=300", plain.headers["Cache-Control"])
        packed = self.get(**{"Accept-Encoding": "gzip"})
        self.assertEqual(packed.read(), (self.web / "rates.json.gz").read_bytes())
        self.assertNotEqual(packed.headers["ETag"], plain.headers["ETag"])
        self.assertEqual(packed.headers["Last-Modified"], plain.headers["Last-Modified"])
        for url, method, status in ((self.nginx.url, "POST", 403), (self.nginx.url, "DELETE", 403),
                                    (self.nginx.url + ".gz", "GET", 404),
                                    (self.nginx.url.rsplit("/", 1)[0] + "/", "GET", 404)):
            with self.assertRaises(urllib.error.HTTPError) as failure:
                urllib.request.urlopen(urllib.request.Request(url, method=method))
            self.assertEqual(failure.exception.code, status, (method, url))
            failure.exception.close()

    def test_a_rejected_source_leaves_what_is_served(self):
        before = {path.name: path.stat() for path in self.web.iterdir()}
        bad = self.folder / "bad.csv"
        bad.write_text("eur,0\n", encoding="utf-8")
        self.assertEqual(update_rates(self.web, bad), 2)
        self.assertEqual(update_rates(self.web, "--max-jump", "1", SNAPSHOT, EURO), 2)
        after = {path.name: path.stat() for path in self.web.iterdir()}
        self.assertEqual({name: (s.st_ino, s.st_mtime_ns) for name, s in before.items()},
                         {name: (s.st_ino, s.st_mtime_ns) for name, s in after.items()})
