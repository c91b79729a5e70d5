"""Savers on one folder, killed at any moment, and what became of their saves.

A few savers run at a time, each with its reports in a file; whoever is killed is replaced at once.
Meanwhile a reader takes the store file as often as it can. Afterwards the reports tell, of each
content that was seen, whether a save that had begun after this one was done had been done itself:
then that later save was lost.
"""

import bisect
import contextlib
import itertools
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import threading
import time

BEFORE = b"<key>Fraction</key>\n\t<integer>"
# A process saves fewer than that.
NUMBERS = 1_000_000


class Saver:
    def __init__(self, program, env, order):
        self.first = (order + 1) * NUMBERS
        self.reports = tempfile.TemporaryFile()
        self.process = subprocess.Popen([program, "tell", str(self.first)], env=env,
                                        stdout=self.reports, stderr=subprocess.DEVNULL)

    def has_reported(self):
        return os.fstat(self.reports.fileno()).st_size

    def kill(self):
        """The saves it reported as (number, begin, end), and the one that it may have been in."""
        self.process.kill()
        assert self.process.wait() == -signal.SIGKILL, "a save failed"
        died = time.monotonic_ns()
        with self.reports:
            self.reports.seek(0)
            saves = [tuple(map(int, line.split())) for line in self.reports]
        return saves, (self.first + len(saves), died)


def split(content):
    """The number of a store, and all that is the same in every save."""
    head, _, rest = content.partition(BEFORE)
    number, _, tail = rest.partition(b"<")
    return number, (head, tail)


class Reader:
    """What it saw of a store, as (when it began to read, number)."""

    def __init__(self, store):
        self.store = store
        _, self.frame = split(store.read_bytes())
        self.seen, self.faults = [], []

    def look_until(self, done):
        while not done.wait(0.001):  # else it takes the time that the savers need
            self.look()
        self.look()

    def look(self):
        begin = time.monotonic_ns()
        content = b""
        with contextlib.suppress(OSError):
            content = self.store.read_bytes()
        number, frame = split(content)
        if number.isdigit() and frame == self.frame:
            self.seen.append((begin, int(number)))
        else:
            self.faults.append(f"torn: {len(content)} bytes")


def lost(saves, unreported, seen):
    """The sightings that show a save that a later one had replaced."""
    done = {number: end for number, _, end in saves} | dict(unreported)
    # By their ends, with the latest beginning up to there.
    saves = sorted(saves, key=lambda save: save[2])
    ends = [end for _, _, end in saves]
    latest = [0, *itertools.accumulate((begin for _, begin, _ in saves), max)]
    # A number of nobody's is from before the first save.
    return [number for begin, number in seen if number >= NUMBERS and (
        number not in done or latest[bisect.bisect_left(ends, begin)] > done[number])]


def run(program, container, env, kills, processes=4, seed=20261124):
    """Counts and faults, as a dictionary. The container holds a whole store already."""
    sys.setswitchinterval(0.0001)  # the reader and the killer take turns
    store = pathlib.Path(container) / "Store.plist"
    chance = random.Random(seed)
    reader, done = Reader(store), threading.Event()
    reading = threading.Thread(target=reader.look_until, args=[done])
    reading.start()
    saves, unreported, savers = [], [], []

    def bury(saver):
        reported, dying = saver.kill()
        saves.extend(reported)
        unreported.append(dying)

    try:
        for order in range(kills + processes):
            if len(savers) == processes:
                victim = savers.pop(chance.randrange(processes))
                # In its start, or after some of its saves.
                wanted = chance.choice([0, 1, 1, 1, 50, 200])
                give_up = time.monotonic() + 5
                while victim.has_reported() < wanted and time.monotonic() < give_up:
                    time.sleep(0)
                bury(victim)
            if order < kills:
                savers.append(Saver(program, env, order))
    finally:
        for saver in savers:
            bury(saver)
        done.set()
        reading.join()
    return {"kills": len(unreported), "saves": len(saves), "reads": len(reader.seen),
            "torn": reader.faults, "lost": lost(saves, unreported, reader.seen)}
