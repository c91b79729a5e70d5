"""The Python package as programs use it; what the C library answers is asked in tests/c."""

import array
import asyncio
import ctypes
import datetime
import importlib.util
import multiprocessing
import os
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import unittest
from decimal import Decimal

HOME = tempfile.TemporaryDirectory()
os.environ.update(HOME=HOME.name, LC_ALL="C")
for name in ("FEXORA_CONTAINER", "XDG_DATA_HOME", "XDG_CACHE_HOME"):
    os.environ.pop(name, None)
import fexora
from fexora import Session, _native

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
BIG = Decimal("12345678901234567890.1")


def told(call):
    """The classes of Python's own that an error has, by name."""
    try:
        call()
    except Exception as error:
        return {kind.__name__ for kind in type(error).__mro__}
    return set()


class Package(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.session = Session.in_memory(any_rates=True)
        self.session.set_rates({"EUR": 0.1, "CHF": Decimal("0.3")}, source="till")

    def test_structs_are_those_of_c(self):
        sizes = subprocess.run([os.environ["FEXORA_TEST_C"], "sizes"], text=True, check=True,
                               capture_output=True).stdout
        structs = (_native.Failure, _native.Freshness, _native.Reading, _native.Facts,
                   _native.Past)
        self.assertEqual([int(size) for size in sizes.split()], [ctypes.sizeof(s) for s in structs])

    def test_amounts_come_out_as_they_went_in(self):
        for amount, expected in [
                (10, 1.0), (2.5, 0.25), (BIG, BIG * Decimal("0.1")), ([10, 2.5], [1.0, 0.25]),
                ((x for x in (10,)), [1.0]), ([BIG, BIG], [BIG / 10, BIG / 10]),
                (array.array("i", [10]), array.array("d", [1.0])),
                (memoryview(array.array("d", [1, 10, 2, 20]))[1::2], array.array("d", [1.0, 2.0]))]:
            many = not isinstance(amount, (int, float, Decimal))
            convert = self.session.convert_amounts if many else self.session.convert
            found = convert(amount, "usd", "EUR")
            self.assertEqual((found, type(found)), (expected, type(expected)))
        self.assertEqual(self.session.convert_to(BIG, "USD", ["CHF", "eur"]),
                         {"CHF": BIG * Decimal("0.3"), "eur": BIG / 10})
        self.assertEqual(self.session.freshness().source, "till")
        for amount, code, mode, expected in [("2.675", "USD", "half-even", "2.68"),
                                             ("1.5", "JPY", "down", "1"),
                                             ("1.025", "CHF", "cash", "1.05"),
                                             ("1.05", "NZD", "cash", "1.0")]:
            self.assertEqual(fexora.round_amount(Decimal(amount), code, mode), Decimal(expected))
            self.assertEqual(fexora.round_amount(float(amount), code, mode), float(expected))
        whole = "123456789012345678901234567890"
        self.assertEqual(fexora.round_amount(Decimal(whole + ".125"), "USD"),
                         Decimal(whole + ".12"))
        self.assertEqual(fexora.round_amount(Decimal("-inf"), "USD"), Decimal("-inf"))

    def test_the_command(self):
        def command(text):
            done = subprocess.run([sys.executable, "-B", "-m", "fexora", *text.split()], text=True,
                                  capture_output=True)
            return done.returncode, done.stdout, done.stderr

        code, out, err = command("100 usd in btc jpy")
        bitcoin, yen = (float(line.split()[0].replace(",", "")) for line in out.splitlines())
        self.assertAlmostEqual(bitcoin / fexora.convert(100, "USD", "BTC"), 1, delta=0.005)
        self.assertEqual(yen, round(fexora.convert(100, "USD", "JPY")))
        day = fexora.freshness().published.date()
        self.assertEqual((code, err), (0, f"rates of {day}, bundled\n"))
        code, out, err = command("100")
        self.assertEqual((code, out), (1, ""))
        self.assertIn("expected a currency after the amount", err)

    def test_past_day_is_the_historys(self):
        subprocess.run([os.environ["FEXORA_TEST_KEEP"], self.folder], check=True)
        with Session(self.folder) as session:
            past = session.rate_on(datetime.date(2024, 3, 3), "eur", "GBP")
        self.assertEqual(past, ("EUR", "GBP", 0.856, datetime.date(2024, 3, 1), "ecb", "printed"))

    @unittest.skipUnless(importlib.util.find_spec("numpy"), "there is no numpy")
    def test_arrays_of_any_layout(self):
        import numpy

        table = numpy.arange(12, dtype="i4").reshape(3, 4)[:, ::2]
        found = self.session.convert_amounts(table, "USD", "EUR")
        self.assertTrue((found == table * 0.1).all())
        self.assertEqual(table[2, 1], 10)

    def test_errors_are_pythons_own(self):
        closed = Session.in_memory()
        closed.close()
        for kind, call in [
                ("LookupError", lambda: fexora.convert(1, "QQQ", "EUR")),
                ("LookupError", lambda: fexora.facts("GBp")),
                ("ValueError", lambda: fexora.read("1..2")),
                ("ValueError", lambda: fexora.read(f"5 usd {' '.join(fexora.codes()[:13])}")),
                ("ValueError", lambda: fexora.convert(1, "USD\0X", "EUR")),
                ("ValueError", lambda: Session.in_memory().set_rates({"EUR": 1e9})),
                ("ValueError", lambda: closed.convert(1, "USD", "EUR")),
                ("TypeError", lambda: fexora.convert("1", "USD", "EUR")),
                ("OverflowError", lambda: fexora.convert(10**400, "USD", "EUR")),
                ("OSError", lambda: Session("/dev/null", writable=True)),
                ("OSError", lambda: self.session.refresh("/nowhere"))]:
            self.assertIn(kind, told(call))

    def test_refresh_ends_by_time_and_by_signal(self):
        def silent():
            server = socket.create_server(("127.0.0.1", 0))
            self.addCleanup(server.close)
            return server, "http://127.0.0.1:%d/" % server.getsockname()[1]

        ended = threading.Event()
        server, address = silent()

        def interrupt():
            connection, _ = server.accept()
            os.kill(os.getpid(), signal.SIGINT)
            ended.wait(60)
            connection.close()

        self.assertIn("TimeoutError", told(lambda: self.session.refresh(silent()[1], timeout=0.05)))
        thread = threading.Thread(target=interrupt)
        thread.start()
        with self.assertRaises(KeyboardInterrupt):
            self.session.refresh(address)
        ended.set()
        thread.join()

    def test_what_others_save_comes_by_the_descriptor(self):
        reader = Session(self.folder / "new")
        self.assertFalse((self.folder / "new").exists())

        async def told_rate():
            changed = asyncio.Event()
            asyncio.get_running_loop().add_reader(reader, lambda: reader.look() and changed.set())
            with Session(self.folder / "new", writable=True, any_rates=True) as writer:
                writer.set_rates({"EUR": 0.5})
            while reader.rate("USD", "EUR").value != 0.5:
                await asyncio.wait_for(changed.wait(), 60)
                changed.clear()
            return True

        self.assertTrue(asyncio.run(told_rate()))
        self.assertIn("ValueError", told(lambda: reader.show(1, "EUR")))

    def test_forks_and_threads(self):
        expected = fexora.convert(1, "USD", "EUR")
        with multiprocessing.get_context("fork").Pool(2) as pool:
            self.assertEqual(pool.starmap(fexora.convert, [(1, "USD", "EUR")] * 8), [expected] * 8)
        errors = []

        def convert():
            try:
                for _ in range(500):
                    self.session.convert(1, "USD", "EUR")
            except fexora.MisuseError as error:
                errors.append(str(error))

        threads = [threading.Thread(target=convert) for _ in range(4)]
        for thread in threads:
            thread.start()
        self.session.close()
        for thread in threads:
            thread.join()
        self.assertLessEqual(set(errors), {"the session is closed"})
        self.assertEqual(os.listdir(HOME.name), [])  # the person's store is only read

    @unittest.skipUnless(importlib.util.find_spec("mypy"), "there is no mypy")
    def test_types_are_strict(self):
        samples = sorted(map(str, (SOURCE / "examples/python").glob("*.py")))
        checked = subprocess.run(
            [sys.executable, "-m", "mypy", "--strict", "--cache-dir", self.folder,
             str(SOURCE / "python/fexora"), *samples],
            text=True, capture_output=True, cwd=self.folder)
        self.assertEqual(checked.returncode, 0, checked.stdout)
