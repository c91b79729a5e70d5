"""Both windows as people run them, on a display and a session bus of the test's own.

What is on the screen is read as a screen reader reads it.
"""

import importlib.util
import os
import pathlib
import plistlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

BIN = pathlib.Path(os.environ["FEXORA_BIN"])
# Where the services' templates are; without it the installed services are meant.
SERVICES = os.environ.get("FEXORA_SERVICES")
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


def xdotool(*words):
    return subprocess.run(["xdotool", *map(str, words)], stdout=subprocess.PIPE, text=True).stdout


def call(interface, method, parameters, name="org.freedesktop.DBus"):
    """On the session bus, to a name at the path that is its own."""
    from gi.repository import Gio, GLib
    return Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        name, "/" + name.replace(".", "/"), interface, method,
        GLib.Variant.parse(None, parameters), None, 0, PATIENCE * 1000)


class Windows(unittest.TestCase):
    def setUp(self):
        import pyatspi
        from gi.repository import GLib
        self.desktop, self.gone = pyatspi.Registry.getDesktop, GLib.GError
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
        process = subprocess.Popen([BIN / name], env=self.environment)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def ask(self, name, method, parameters):
        """Calls org.freedesktop.Application, as whoever starts programs does."""
        wanted = {key: value for key, value in self.environment.items()
                  if key.startswith(("FEXORA", "QT", "LC", "XDG_CONFIG"))}
        call("org.freedesktop.DBus", "UpdateActivationEnvironment", "(@a{ss} %s,)" % wanted)
        call("org.freedesktop.Application", method, parameters, name)
        process, = call("org.freedesktop.DBus", "GetConnectionUnixProcessID", f"('{name}',)")
        self.addCleanup(self.end, process)

    def end(self, process):
        """Of one that is no child of ours."""
        if os.path.exists(f"/proc/{process}"):
            os.kill(process, signal.SIGKILL)
            wait_for(lambda: not os.path.exists(f"/proc/{process}"))

    def nodes(self, program, role):
        """What has the role in a program's window; nothing while it changes."""
        nodes = []

        def walk(node):
            if node is None:
                return
            if node.getRoleName() == role:
                nodes.append(node)
            for child in range(node.childCount):
                walk(node.getChildAtIndex(child))

        try:
            for application in self.desktop(0):
                if application is not None and application.name == program:
                    walk(application)
        except self.gone:
            return []
        return nodes

    def names(self, program, role):
        try:
            return [node.name for node in self.nodes(program, role)]
        except self.gone:
            return []

    def buttons(self):
        # The role is called so by AT-SPI of before and of today.
        return [name for role in ("push button", "button")
                for name in self.names("fexora-converter", role)]

    def shows(self, program, line):
        return wait_for(lambda: line in self.names(program, "list item"))

    def has_asked_for_rates(self):
        kept = pathlib.Path(self.folder.name, "config/fexora/fexora-converter.conf")
        return kept.exists() and "lastTry" in kept.read_text(encoding="utf-8")

    def windows(self, process):
        return set(xdotool("search", "--onlyvisible", "--pid", process.pid).split())

    def type(self, process, text):
        window, = wait_for(lambda: self.windows(process))
        xdotool("windowfocus", "--sync", window)
        xdotool("type", "--window", window, text)

    def drag(self, process, node, to):
        """Takes hold of one and lets go on the upper edge of the other."""
        start, end = (each.queryComponent().getExtents(0) for each in (node, to))
        x, y = start.x + start.width // 2, start.y + start.height // 2
        before = self.windows(process)
        xdotool("windowraise", *before)
        xdotool("mousemove", x, y, "mousedown", 1, "mousemove", x, y - 30)
        # What is dragged is a window under the pointer: it comes as the hand goes on, and goes
        # along.
        dragged, = wait_for(lambda: xdotool("mousemove_relative", "--", 0, -1) or
                            self.windows(process) - before)
        where = xdotool("getwindowgeometry", dragged)
        xdotool("mousemove", x, end.y + 3)
        wait_for(lambda: xdotool("getwindowgeometry", dragged) != where)
        xdotool("mouseup", 1)

    def title(self, process):
        return "".join(xdotool("getwindowname", window) for window in self.windows(process))

    def test_one_follows_the_other_and_nothing_is_lost(self):
        converter, today = self.open("fexora-converter"), self.open("fexora-today")
        self.shows("fexora-converter", "Euro, 88.023")
        self.shows("fexora-today", "Euro, 88.023")
        # What comes from elsewhere, also to a window behind others, is typed over.
        self.run_program("settings", "fraction", "1")
        self.shows("fexora-converter", "Euro, 88.0")
        self.type(converter, "250")
        self.shows("fexora-converter", "Euro, 220.1")
        self.shows("fexora-today", "Euro, 220.1")
        self.assertIn("Source currency: US Dollar", self.buttons())
        # The bundled rates are old, and nobody here says that power is to be saved.
        wait_for(self.has_asked_for_rates)
        euro, yen = self.nodes("fexora-converter", "list item")
        self.drag(converter, yen, to=euro)
        wait_for(lambda: self.names("fexora-converter", "list item")[0].startswith("Japanese"))
        wait_for(lambda: self.names("fexora-today", "list item")[0].startswith("Japanese"))
        # A second start hands its words over, and ends.
        self.assertEqual(subprocess.run([BIN / "fexora-converter", "-7", "EUR", "CHF"],
                                        env=self.environment, timeout=PATIENCE).returncode, 0)
        wait_for(lambda: "Source currency: Euro" in self.buttons())
        swiss = next(name for name in self.names("fexora-converter", "list item")
                     if name.startswith("Swiss"))
        self.shows("fexora-today", swiss)
        for process in (converter, today):
            process.send_signal(signal.SIGKILL)
            process.wait()
        # What is typed within the second before the session ends is kept.
        converter = self.open("fexora-converter")
        self.shows("fexora-converter", swiss)
        self.type(converter, "31")
        wait_for(lambda: self.title(converter).startswith("31 EUR"))
        converter.terminate()
        self.assertEqual(converter.wait(PATIENCE), 0)
        with open(f"{self.folder.name}/store/Store.plist", "rb") as store:
            self.assertEqual(plistlib.load(store)["UDSourceCurrency"]["amount"], 31)

    def test_the_bus_starts_what_is_wanted(self):
        self.ask("org.fexora.Fexora", "ActivateAction", "('today', @av [], @a{sv} {})")
        self.shows("fexora-today", "Euro, 88.023")
        self.assertEqual(self.names("fexora-converter", "list item"), [])
        self.assertFalse(self.has_asked_for_rates())
        # As a result of the desktop's search is opened.
        call("org.kde.krunner1", "Run", "('-50 USD EUR', '')", "org.fexora.Search")
        self.shows("fexora-converter", "Euro, -44.011")
        wait_for(self.has_asked_for_rates)
        self.ask("org.fexora.Today", "Activate", "(@a{sv} {},)")


def describe_services(folder):
    """Tells a session bus of the folder how the windows are started."""
    services = pathlib.Path(folder, "dbus-1/services")
    services.mkdir(parents=True)
    for template in pathlib.Path(SERVICES).glob("*/org.fexora.*.service.in"):
        text = template.read_text(encoding="utf-8")
        text = text.replace("@CMAKE_INSTALL_FULL_BINDIR@", str(BIN))
        (services / template.stem).write_text(
            text.replace("@FEXORA_SEARCH_PROGRAM@", f"{BIN}/fexora-search"), encoding="utf-8")


def main():
    tools = ("xvfb-run", "dbus-run-session", "xdotool")
    lacking = [tool for tool in tools if shutil.which(tool) is None]
    # Importing it would have the bus start a launcher of its own beside the one below.
    if importlib.util.find_spec("pyatspi") is None:
        lacking.append("pyatspi")
    if lacking or not os.path.exists(LAUNCHER):
        print("OK (skipped=1)", lacking)
        return 0
    if INNER not in os.environ:
        # Into a file: what the buses have started may outlive them and would hold a pipe open.
        with tempfile.TemporaryFile("w+") as output, tempfile.TemporaryDirectory() as data:
            if SERVICES is not None:
                describe_services(data)
            # A display that begins anew when its last client goes would drop the next one on the
            # way.
            result = subprocess.run(["xvfb-run", "-a", "-s", "-screen 0 1400x1000x24 -noreset",
                                     "dbus-run-session", "--", sys.executable, "-B", __file__],
                                    env=dict(os.environ, XDG_DATA_HOME=data, **{INNER: "1"}),
                                    stdin=subprocess.DEVNULL, stdout=output,
                                    stderr=subprocess.STDOUT)
            output.seek(0)
            print(output.read())
        return result.returncode
    bus = subprocess.Popen([LAUNCHER, "--launch-immediately"], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
    try:
        # A window that opens before would have the session bus start another of these.
        wait_for(lambda: call("org.freedesktop.DBus", "NameHasOwner", "('org.a11y.Bus',)")[0])
        unittest.main(verbosity=0)
    finally:
        bus.terminate()
        bus.wait()


if __name__ == "__main__":
    sys.exit(main())
