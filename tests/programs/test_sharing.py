"""Two processes on one folder, for real."""

import json
import os
import pathlib
import signal

import kills
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

    def test_more_changes_than_the_system_keeps_are_one_reload(self):
        most = int(pathlib.Path("/proc/sys/fs/inotify/max_queued_events").read_text())
        self.succeed("settings", "fraction", "4")
        watcher = Watcher(self)
        watcher.process.send_signal(signal.SIGSTOP)
        os.waitpid(watcher.process.pid, os.WUNTRACED)
        # Two events a move.
        names = [self.container / "a", self.container / "b"]
        names[0].touch()
        for i in range(most // 2 + 1):
            names[i % 2].rename(names[1 - i % 2])
        self.succeed("settings", "fraction", "5")
        watcher.process.send_signal(signal.SIGCONT)
        self.assertEqual(watcher.next()["settings"]["fraction"], 5)
        self.succeed("settings", "fraction", "6")
        self.assertEqual(watcher.next()["settings"]["fraction"], 6)

    def test_savers_killed_at_any_moment_leave_whole_files_only(self):
        self.succeed("1", "USD", "EUR")
        self.succeed("settings", "fraction", "1")
        # The long form: FEXORA_KILLS=10000.
        count = int(os.environ.get("FEXORA_KILLS", 200))
        figures = kills.run(BIN / "reliability_saver", self.container, self.environment(), count)
        print({name: figure for name, figure in figures.items() if figure != []})
        self.assertEqual((figures["kills"], figures["torn"], figures["lost"]), (count, [], []))
        # The means of the test are there: saves happened, and were seen.
        self.assertGreater(min(figures["saves"], figures["reads"]), 100)
        self.assertEqual(len(self.content()["UDUSDRates"]), 339)
        self.succeed("settings")  # a start clears what the dead left
        self.assertEqual(os.listdir(self.container), ["Store.plist"])
