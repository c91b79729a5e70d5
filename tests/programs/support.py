"""What the program's tests share: running it in a container of the test's own."""

import json
import os
import pathlib
import plistlib
import pty
import select
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
    # Nothing may reach the network; a test that wants a service names one on loopback.
    url = "http://127.0.0.1:9/rates.json"

    def setUp(self):
        self.container = self.new_folder()
        self.addCleanup(shutil.rmtree, f"{self.container}-cache", ignore_errors=True)
        self.store = self.container / "Store.plist"

    def new_folder(self):
        folder = tempfile.mkdtemp(prefix="fexora-test-")
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        return pathlib.Path(folder)

    def environment(self, **changes):
        env = {k: v for k, v in os.environ.items() if not k.startswith(("LC_", "LANG", "FEXORA"))}
        env |= {"FEXORA_CONTAINER": str(self.container), "FEXORA_RATES_URL": self.url,
                "no_proxy": "*", "XDG_CACHE_HOME": f"{self.container}-cache"}
        return {k: v for k, v in (env | changes).items() if v is not None}

    def start(self, *words, program=None, before=(), env=None, **options):
        words = [*before, BIN / (program or self.program), *words]
        outputs = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE,
                   "stderr": subprocess.PIPE}
        process = subprocess.Popen(words, env=env or self.environment(), text=True,
                                   **outputs | options)
        self.addCleanup(process.wait)
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

    def rejected(self, code, *words, **options):
        """Runs what must end with `code`; its output and its one message."""
        got, out, err = self.run_program(*words, **options)
        self.assertEqual(got, code, (words, out, err))
        self.assertRegex(err, rf"\A{self.program}: [^\n]+\n\Z")
        self.assertLessEqual(len(err), self.longest)
        return out, err

    def reject(self, code, *words, **options):
        return self.rejected(code, *words, **options)[1]

    def failure(self, code, *words, **options):
        """The JSON error, which is the one message, too."""
        out, err = self.rejected(code, *words, "--json", **options)
        error = json.loads(out)["error"]
        self.assertEqual((list(error), err), (["kind", "message"], f"fexora: {error['message']}\n"))
        return error

    def start_on_terminal(self, *words, **options):
        """With the descriptor that shows what it prints."""
        ours, theirs = pty.openpty()
        self.addCleanup(os.close, ours)
        with open(theirs, "wb", buffering=0) as terminal:
            options |= dict.fromkeys(("stdin", "stdout", "stderr"), terminal)
            return self.start(*words, **options), ours

    def read_until(self, terminal, wanted):
        """What a terminal shows until it has shown this."""
        shown = ""
        while wanted not in shown:
            self.assertTrue(select.select([terminal], [], [], 60)[0], f"no {wanted} in {shown!r}")
            shown += os.read(terminal, 4096).decode(errors="replace")
        return shown

    def reject_full_output(self, *words):
        with open("/dev/full", "w", encoding="utf-8") as full:
            code, _, err = self.run_program(*words, stdout=full)
        self.assertEqual((code, "standard output" in err), (4, True), err)

    def content(self):
        """The store file as Python's own reader has it."""
        with self.store.open("rb") as file:
            return plistlib.load(file)
