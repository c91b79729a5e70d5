"""What the program's tests share: running it in a container of the test's own."""

import json
import os
import pathlib
import plistlib
import shutil
import subprocess
import tempfile
import unittest

BIN = pathlib.Path(os.environ["FEXORA_BIN"])
SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
SNAPSHOT = SOURCE / "fexora/resources/data/usd-2026-09-29.json"


def snapshot_rates():
    """The bundled rates by upper-case code, straight from their source."""
    rates = json.loads(SNAPSHOT.read_text(encoding="utf-8"))["usd"]
    return {code.upper(): float(rate) for code, rate in rates.items()}


class ProgramTest(unittest.TestCase):
    program = "fexora"
    longest = 501  # of its messages, in bytes

    def setUp(self):
        self.container = pathlib.Path(tempfile.mkdtemp(prefix="fexora-test-"))
        for folder in (self.container, f"{self.container}-cache"):
            self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        self.store = self.container / "Store.plist"

    def environment(self, **changes):
        env = {k: v for k, v in os.environ.items() if not k.startswith(("LC_", "LANG", "FEXORA"))}
        env["FEXORA_CONTAINER"] = str(self.container)
        # Nothing may reach the network; a test that wants a service names one on loopback.
        env["FEXORA_RATES_URL"] = "http://127.0.0.1:9/rates.json"
        env["XDG_CACHE_HOME"] = str(self.container) + "-cache"
        env.update(changes)
        return {k: v for k, v in env.items() if v is not None}

    def start(self, *words, program=None, before=(), env=None, terminal=None, **options):
        """With `terminal`, a descriptor, as both outputs instead of two pipes."""
        words = [*before, BIN / (program or self.program), *words]
        process = subprocess.Popen(
            words, env=env or self.environment(), text=True,
            **{"stdin": subprocess.DEVNULL, "stdout": terminal or subprocess.PIPE,
               "stderr": terminal or subprocess.PIPE, **options})
        self.addCleanup(process.kill)  # should it hang
        return process

    def run_program(self, *words, text=None, **options):
        """(exit code, standard output, standard error), with `text` as standard input."""
        if text is not None:
            options["stdin"] = subprocess.PIPE
        process = self.start(*words, **options)
        out, err = process.communicate(text, timeout=120)
        return process.returncode, out, err

    def succeed(self, *words, **options):
        code, out, err = self.run_program(*words, **options)
        self.assertEqual((code, err), (0, ""), (words, out))
        return out

    def json(self, *words, **options):
        return json.loads(self.succeed(*words, "--json", **options))

    def reject(self, code, *words, **options):
        """Runs what must end with `code`; its one message."""
        got, out, err = self.run_program(*words, **options)
        self.assertEqual(got, code, (words, out, err))
        self.assertRegex(err, rf"\A{self.program}: [^\n]+\n\Z")
        self.assertLessEqual(len(err), self.longest)
        return err

    def failure(self, code, *words, **options):
        """Runs what must end with `code`; the JSON error, which is the one message, too."""
        got, out, err = self.run_program(*words, "--json", **options)
        error = json.loads(out)["error"]
        self.assertEqual((got, list(error), err),
                         (code, ["kind", "message"], f"fexora: {error['message']}\n"), words)
        self.assertNotIn("\n", error["message"])
        self.assertLessEqual(len(err), self.longest)
        return error

    def content(self):
        """The store file as Python's own reader has it."""
        with self.store.open("rb") as file:
            return plistlib.load(file)
