"""Savers on one folder, killed at any moment, and what became of their saves.

A few savers run at a time, each with its reports in a file; whoever is killed is replaced at once.
Meanwhile a reader takes the store file as often as it can. Afterwards the reports tell, of each
content that was seen, whether a save that had begun after this one was done had been done itself:
then that later save was lost.
"""

import bisect
import os
import pathlib
import random
import signal
import sys
import threading
import time

BEFORE = b"<key>Fraction</key>\n\t<integer>"
# A process saves fewer than that.
NUMBERS = 1_000_000


class Saver:
    def __init__(self, program, env, folder, order):
        self.first = (order + 1) * NUMBERS
        self.reports = os.open(folder, os.O_TMPFILE | os.O_RDWR)
        self.pid = os.posix_spawn(program, [program, "tell", str(self.first)], env, file_actions=[
            (os.POSIX_SPAWN_DUP2, self.reports, 1), (os.POSIX_SPAWN_OPEN, 2, "/dev/null", os.O_WRONLY, 0)])

    def has_reported(self):
        return os.fstat(self.reports).st_size

    def kill(self):
        """The saves it reported as (number, begin, end), and the one that it may have been in."""
        os.kill(self.pid, signal.SIGKILL)
        _, status = os.waitpid(self.pid, 0)
        died = time.monotonic_ns()
        assert os.WIFSIGNALED(status), "a save failed"
        size = self.has_reported()
        lines = os.pread(self.reports, size, 0).decode().splitlines()
        os.close(self.reports)
        saves = [tuple(map(int, line.split())) for line in lines]
        return saves, (self.first + len(saves), died)


def split(content):
    """The number of a store, and all that is the same in every save."""
    head, _, rest = content.partition(BEFORE)
    number, _, tail = rest.partition(b"<")
    return number, (head, tail)


class Reader(threading.Thread):
    """Reads the store until told to stop; what it saw as (when it began, number)."""

    def __init__(self, store):
        super().__init__()
        self.store, self.done = store, False
        self.frame = split(store.read_bytes())[1]
        self.seen, self.faults = [], []

    def run(self):
        while not self.done:
            self.look()
            time.sleep(0.001)  # else it takes the time that the savers need

    def look(self):
        begin = time.monotonic_ns()
        try:
            content = self.store.read_bytes()
        except OSError as fault:
            self.faults.append(str(fault))
            return
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
    ends, latest = [], []
    for _, begin, end in saves:
        ends.append(end)
        latest.append(max(begin, latest[-1] if latest else 0))
    faults = []
    for begin, number in seen:
        before = bisect.bisect_left(ends, begin)
        if number in done and before and latest[before - 1] > done[number]:
            faults.append(number)
        elif number not in done and number >= NUMBERS:
            faults.append(number)
    return faults


def run(program, container, env, kills, processes=4, seed=20261124):
    """Counts and faults, as a dictionary. The container holds a whole store already."""
    sys.setswitchinterval(0.0001)  # the reader and the killer take turns
    store = pathlib.Path(container) / "Store.plist"
    chance = random.Random(seed)
    reader = Reader(store)
    reader.start()
    saves, unreported, savers = [], [], []

    def bury(saver):
        reported, dying = saver.kill()
        saves.extend(reported)
        unreported.append(dying)

    started = time.monotonic()
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
                savers.append(Saver(str(program), env, str(container) + "-reports", order))
    finally:
        for saver in savers:
            bury(saver)
        took = time.monotonic() - started
        reader.done = True
        reader.join()
    reader.look()
    left = sorted(set(os.listdir(container)) - {"Store.plist"})
    return {"kills": len(unreported), "seconds": round(took, 1), "saves": len(saves),
            "reads": len(reader.seen), "torn": reader.faults,
            "lost": lost(saves, unreported, reader.seen), "temporaries": len(left)}
