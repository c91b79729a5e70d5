"""Both windows as people run them, on a display and a session bus of the test's own.

What is on the screen is read as a screen reader reads it.
"""

import importlib.util
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

BIN = pathlib.Path(os.environ["FEXORA_BIN"])
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
INNER = "FEXORA_TEST_HAS_DISPLAY"
PATIENCE = 60


def wait_for(condition):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError("waited in vain")


class Windows(unittest.TestCase):
    def setUp(self):
        import pyatspi
        self.desktop = pyatspi.Registry.getDesktop
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.environment = dict(
            os.environ, FEXORA_CONTAINER=f"{self.folder.name}/store",
            XDG_CONFIG_HOME=f"{self.folder.name}/config",
            FEXORA_RATES_URL="http://127.0.0.1:1/rates.json", LC_ALL="C.UTF-8",
            QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.run_program("select", "USD", "EUR", "JPY")
        self.run_program("100", "USD")

    def run_program(self, *words):
        return subprocess.run([BIN / "fexora", *words], env=self.environment, check=True,
                              stdout=subprocess.PIPE, text=True).stdout

    def open(self, name):
        process = subprocess.Popen([BIN / name], env=self.environment, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def names(self, program, role):
        """The names of what has the role in a program's window."""
        names = []

        def walk(node):
            if node is None:
                return
            if node.getRoleName() == role:
                names.append(node.name)
            for child in range(node.childCount):
                walk(node.getChildAtIndex(child))

        for application in self.desktop(0):
            if application is not None and application.name == program:
                walk(application)
        return names

    def shows(self, program, line):
        return wait_for(lambda: line in self.names(program, "list item"))

    def window(self, process):
        return wait_for(lambda: subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(process.pid)],
            stdout=subprocess.PIPE, text=True).stdout.split())[-1]

    def type(self, process, text):
        window = self.window(process)
        subprocess.run(["xdotool", "windowfocus", "--sync", window], check=True)
        subprocess.run(["xdotool", "type", "--window", window, text], check=True)

    def test_one_follows_the_other_and_nothing_is_lost(self):
        converter, today = self.open("fexora-converter"), self.open("fexora-today")
        self.shows("fexora-converter", "Euro, 88.02")
        self.shows("fexora-today", "Euro, 88.02")
        # What comes from elsewhere, also to a window behind others, is typed over.
        self.run_program("settings", "fraction", "1")
        self.shows("fexora-converter", "Euro, 88.0")
        self.type(converter, "250")
        self.shows("fexora-converter", "Euro, 220.1")
        self.shows("fexora-today", "Euro, 220.1")
        self.assertIn("Source currency: US Dollar", self.names("fexora-converter", "push button"))
        # The bundled rates are old, and nobody here says that power is to be saved.
        kept = pathlib.Path(self.folder.name, "config/fexora/fexora-converter.conf")
        wait_for(lambda: kept.exists() and "lastTry" in kept.read_text(encoding="utf-8"))
        # A second start hands its words over, and ends.
        self.assertEqual(subprocess.run([BIN / "fexora-converter", "7", "EUR", "CHF"],
                                        env=self.environment, timeout=PATIENCE).returncode, 0)
        wait_for(lambda: "Source currency: Euro" in self.names("fexora-converter", "push button"))
        swiss = next(name for name in self.names("fexora-converter", "list item")
                     if name.startswith("Swiss"))
        self.shows("fexora-today", swiss)
        for process in (converter, today):
            process.send_signal(signal.SIGKILL)
            process.wait()
        self.open("fexora-converter")
        self.shows("fexora-converter", swiss)


def main():
    tools = ("xvfb-run", "dbus-run-session", "xdotool", "gdbus")
    lacking = [tool for tool in tools if shutil.which(tool) is None]
    # Importing it would have the bus start a launcher of its own beside the one below.
    if importlib.util.find_spec("pyatspi") is None:
        lacking.append("pyatspi")
    if lacking or not os.path.exists(LAUNCHER):
        print("OK (skipped=1)", lacking)
        return 0
    if INNER not in os.environ:
        # Into a file: what the buses have started may outlive them and would hold a pipe open.
        with tempfile.TemporaryFile("w+") as output:
            result = subprocess.run(["xvfb-run", "-a", "-s", "-screen 0 1400x1000x24",
                                     "dbus-run-session", "--", sys.executable, "-B", __file__],
                                    env=dict(os.environ, **{INNER: "1"}), stdin=subprocess.DEVNULL,
                                    stdout=output, stderr=subprocess.STDOUT)
            output.seek(0)
            print(output.read())
        return result.returncode
    bus = subprocess.Popen([LAUNCHER, "--launch-immediately"], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
    try:
        subprocess.run(["gdbus", "wait", "--session", "--timeout", str(PATIENCE), "org.a11y.Bus"],
                       check=True)
        unittest.main(verbosity=0)
    finally:
        bus.terminate()
        bus.wait()


if __name__ == "__main__":
    sys.exit(main())
