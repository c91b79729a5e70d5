"""Two processes on one folder, for real."""

import json
import os
import plistlib
import random
import signal
import subprocess
import threading
import unittest

from support import BIN, ProgramTest


class Watcher:
    """`fexora watch --json`, read line by line; ready once it has said that it watches."""

    def __init__(self, test, *words):
        self.process = test.start("watch", "--json", *words)
        test.addCleanup(self.stop)
        assert "watching" in self.next()

    def next(self):
        return json.loads(self.process.stdout.readline())

    def stop(self):
        self.process.kill()
        self.process.communicate()


class TwoProcesses(ProgramTest):
    def test_a_setting_shows_in_the_other_process_once_a_save(self):
        self.succeed("select", "USD", "JPY")
        watcher = Watcher(self, "--count", "3")
        self.succeed("settings", "fraction", "6")
        update = watcher.next()
        self.assertEqual(update["notification"], "FileWatcherUpdate")
        self.assertEqual(update["settings"]["fraction"], 6)
        self.assertEqual((update["currencies"], update["source"], update["updated"]),
                         (["USD", "JPY"], None, None))
        self.succeed("12,5", "USD", "EUR")
        update = watcher.next()
        self.assertEqual(update["source"], {"amount": 12.5, "currency": "USD"})
        self.assertEqual(update["updated"], "2026-09-29T00:00:00Z")
        self.succeed("settings", "fraction", "7")
        # One notification a save: the third is the last setting's, and then the count is full.
        self.assertEqual(watcher.next()["settings"]["fraction"], 7)
        self.assertEqual(watcher.process.wait(timeout=60), 0)
        self.assertEqual(watcher.process.stdout.read(), "")

    def test_savers_killed_at_any_moment_leave_whole_files_only(self):
        rounds = int(os.environ.get("FEXORA_KILL_ROUNDS", "60"))
        chance = random.Random(20261124)
        self.succeed("1", "USD", "EUR")
        done = threading.Event()
        seen, faults = set(), []

        def read():
            while not done.is_set():
                try:
                    seen.add(self.content()["Fraction"])
                except KeyError:
                    pass
                except (OSError, plistlib.InvalidFileException, ValueError) as fault:
                    faults.append(fault)

        reader = threading.Thread(target=read)
        reader.start()
        self.addCleanup(reader.join)
        self.addCleanup(done.set)
        killed = 0
        for number in range(rounds):
            # A loop of saves in one process, so that most kills fall into one.
            saver = subprocess.Popen(
                [BIN / "test_saver", str(number % 14 + 1)], env=self.environment(),
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
            saver.stdout.readline()  # it has begun
            for _ in range(chance.randrange(40)):
                saver.stdout.readline()
            saver.send_signal(signal.SIGKILL)
            saver.communicate()
            killed += saver.returncode == -signal.SIGKILL
        done.set()
        reader.join()
        self.assertEqual((faults, killed), ([], rounds))
        self.assertLessEqual(seen, set(range(1, 15)))
        self.assertIn(self.content()["Fraction"], range(1, 15))
        self.assertEqual(len(self.content()["UDUSDRates"]), 339)
        self.succeed("settings")  # a start clears what the dead left
        self.assertEqual(os.listdir(self.container), ["Store.plist"])


if __name__ == "__main__":
    unittest.main()
