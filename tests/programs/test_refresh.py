"""`fexora refresh` and `fexora watch --refresh` against a service that a test scripts."""

import json
import os
import pty
import random
import signal
import threading
import time
import unittest

from service import Service, answering
from support import ProgramTest
from test_sharing import Watcher

GOOD = json.dumps({"serviceMessage": "", "updated": 1, "source": "test", "count": 2,
                   "rates": [{"code": "EUR", "rate": 0.5}, {"code": "JPY", "rate": "150,5"},
                             {"code": "NOSUCHCODE", "rate": 1}]})


class Refresh(ProgramTest):
    url = "http://127.0.0.1:9/rates.json"

    def serve(self, respond):
        service = Service(self, respond)
        self.url = service.url
        return service

    def environment(self, **changes):
        return super().environment(**{"FEXORA_RATES_URL": self.url, "no_proxy": "*", **changes})

    def test_rates_are_stored_and_converted_with(self):
        self.serve(answering(GOOD))
        answer = self.json("refresh")
        self.assertEqual(set(answer), {"origin", "count", "message", "updated"})
        self.assertEqual((answer["origin"], answer["count"], answer["message"]), ("service", 2, ""))
        self.assertRegex(answer["updated"], r"\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ\Z")
        self.assertEqual(self.json("10", "USD", "EUR", "JPY")["items"][1]["amount"], 1505)
        self.assertIn("2 rates", self.succeed("refresh"))

    def test_a_failure_says_why_and_that_the_cached_rates_stay(self):
        self.serve(answering(GOOD))
        self.succeed("refresh")
        before = self.store.read_bytes()
        for respond, kind, word in (
                (answering("<html>"), "notJson", "not JSON"),
                (answering("[]"), "notAnObject", "not an object"),
                (answering("{}", 500), "httpStatus", "500"),
                (answering(GOOD, 404), "httpStatus", "404"),
                (lambda handler: None, "noConnection", "no connection")):
            self.serve(respond)
            message = self.refuse(3, "refresh")
            self.assertIn(word, message)
            self.assertIn(self.url, message)
            self.assertIn("cached rates stay: rates of", message)
            code, out, _ = self.run_program("refresh", "--json")
            self.assertEqual((code, json.loads(out)["error"]["kind"]), (3, kind))
            self.assertEqual(self.store.read_bytes(), before)

    def test_odd_figures_cost_only_themselves(self):
        self.serve(answering("""\ufeff{"serviceMessage": 7, "updated": 123456789012345678901234567890,
            "count": "two", "rates": [{"code": "EUR", "rate": "0.5"}, {"code": "JPY", "rate": "150,5"},
            {"code": "GBP", "rate": 1e400}, {"code": "CHF", "rate": 1, "rate": 2}, {"rate": 3},
            {"code": "CNY", "rate": null}, {"code": "INR", "rate": "x"}, {"code": "SEK", "rate": true},
            {"code": "USD", "rate": 1}, {"code": "USD", "rate": 1, "code": "EUR"}]}"""))
        self.assertEqual(self.json("refresh")["message"], "")
        stored = [(rate["code"], rate["rate"]) for rate in self.content()["UDUSDRates"]]
        self.assertEqual(stored, [
            ("EUR", 0.5), ("JPY", 150.5), ("GBP", float("inf")), ("CHF", 1), ("CNY", 0), ("INR", 0),
            ("SEK", 1), ("USD", 1), ("USD", 1)])
        converted = self.json("2", "USD", "EUR", "GBP")["items"]
        self.assertEqual([item["amount"] for item in converted], [1, None])

    def test_user_and_secret_of_the_address_never_show(self):
        service = self.serve(lambda handler: seen.append(handler.headers["Authorization"]))
        seen = []
        for secret in ("s3cret", "s3@cret"):
            self.url = service.url.replace("//", f"//us3r:{secret}@")
            for words in (["refresh"], ["refresh", "--json", "--verbose"], ["status"],
                          ["status", "--json"]):
                _, out, err = self.run_program(*words)
                self.assertNotRegex(out + err, "us3r|cret", words)
                self.assertIn("//***@127.0.0.1:", out + err, words)
        self.assertTrue(all(value.startswith("Basic ") for value in seen), seen)

    def test_without_cached_rates_a_failure_says_so(self):
        self.assertIn("no rates are cached", self.refuse(3, "refresh"))

    def test_an_answer_without_rates_is_taken_with_a_warning(self):
        self.serve(answering("{}"))
        code, out, err = self.run_program("refresh", "--json")
        self.assertEqual((code, json.loads(out)["count"]), (0, 0))
        self.assertIn("no rates", err)
        # Conversions then use the bundled rates.
        self.assertEqual(self.json("1", "USD", "EUR")["origin"], "bundled")

    def test_use_and_places_that_cannot_be_written(self):
        self.serve(answering(GOOD))
        self.refuse(2, "refresh", "EUR")
        (self.container / "file").write_text("")
        env = self.environment(FEXORA_CONTAINER=str(self.container / "file/below"))
        self.refuse(4, "refresh", env=env)

    def test_one_request_a_run(self):
        service = self.serve(answering(GOOD))
        for count in (1, 2, 3):
            self.succeed("refresh")
            self.assertEqual(service.requests, count)

    def test_progress_shows_on_a_terminal_only_and_is_wiped(self):
        go_on = threading.Event()

        def respond(handler):
            go_on.wait()
            answering(GOOD)(handler)

        self.serve(respond)
        leader, follower = pty.openpty()
        self.addCleanup(os.close, leader)
        process = self.start("refresh", terminal=follower)
        os.close(follower)
        shown = b""
        while b"loading rates" not in shown:
            shown += os.read(leader, 4096)
        go_on.set()
        self.assertEqual(process.wait(timeout=60), 0)
        while b"2 rates" not in shown:
            shown += os.read(leader, 4096)
        self.assertIn(b"\r\x1b[K2 rates", shown)
        # Not at a terminal there is nothing but the result, however long it takes.
        go_on.clear()
        process = self.start("refresh")
        timer = threading.Timer(1.2, go_on.set)
        timer.start()
        self.assertEqual(process.communicate(timeout=60)[1], "")

    def test_interrupted_at_any_moment_leaves_the_store_whole(self):
        self.serve(answering(GOOD))
        self.succeed("refresh")
        chance = random.Random(20261124)
        for _ in range(30):
            process = self.start("refresh")
            time.sleep(chance.uniform(0, 0.04))
            process.send_signal(signal.SIGINT)
            process.communicate(timeout=60)
            self.assertIn(process.returncode, (0, -signal.SIGINT))
            self.assertEqual(len(self.content()["UDUSDRates"]), 2)

    def test_interrupted_while_the_service_is_silent(self):
        asked = threading.Event()
        end = threading.Event()
        self.addCleanup(end.set)

        def respond(handler):
            asked.set()
            end.wait()

        self.serve(respond)
        process = self.start("refresh")
        asked.wait()
        process.send_signal(signal.SIGINT)
        process.communicate(timeout=60)
        self.assertEqual(process.returncode, -signal.SIGINT)
        self.succeed("settings")

    def test_watch_keeps_the_rates_fresh(self):
        asked = threading.Semaphore(0)

        def respond(handler):
            answering(GOOD)(handler)
            asked.release()

        self.serve(respond)
        Watcher(self, "--refresh", "1")
        for _ in range(3):
            self.assertTrue(asked.acquire(timeout=60))

    def test_watch_that_refreshes_still_tells_what_others_save(self):
        self.serve(answering(GOOD))
        other = Watcher(self, "--count", "1")
        watcher = Watcher(self, "--refresh", "3600")
        # Its own save is no news to itself, but to the others.
        self.assertIsNotNone(other.next()["updated"])
        self.succeed("settings", "fraction", "6")
        update = watcher.next()
        self.assertEqual(update["settings"]["fraction"], 6)
        self.assertIsNotNone(update["updated"])

    def test_watch_goes_on_when_the_service_fails(self):
        asked = threading.Semaphore(0)

        def respond(handler):
            asked.release()
            answering("oops", 500)(handler)

        self.serve(respond)
        watcher = Watcher(self, "--refresh", "1")
        for _ in range(2):
            self.assertTrue(asked.acquire(timeout=60))
        watcher.process.terminate()
        out, err = watcher.process.communicate()
        self.assertEqual(out, "")
        # Said once, not with every try.
        self.assertEqual(err.count("HTTP status 500"), 1)


if __name__ == "__main__":
    unittest.main()
