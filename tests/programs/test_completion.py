"""Shell completion and the manual page, each by its own shell or formatter."""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import tempfile
import time
import unittest

from support import BIN, SOURCE, ProgramTest

COMPLETIONS = SOURCE / "packaging/completions"
COMMANDS = ["select", "settings", "search", "refresh", "watch", "status"]


class Bash(ProgramTest):
    def complete(self, *words):
        script = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); '
                  '_fexora "$FEXORA" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        done = subprocess.run(
            ["bash", "-c", script, "bash", COMPLETIONS / "fexora.bash", "fexora", *words],
            env=self.environment(FEXORA=str(BIN / "fexora")), text=True, capture_output=True,
            check=True, timeout=60)
        self.assertEqual(done.stderr, "")
        return done.stdout.split()

    def test_commands_options_settings_and_values(self):
        self.assertEqual(self.complete(""), COMMANDS)
        self.assertEqual(self.complete("se"), ["select", "settings", "search"])
        self.assertEqual(self.complete("search", "--e"), ["--exclude"])
        self.assertEqual(self.complete("100", "--n"), ["--no-save", "--names"])
        self.assertNotIn("--invert", self.complete("watch", "--"))
        self.assertEqual(self.complete("settings", "todayR"), ["todayRelativeCurrency"])
        self.assertEqual(self.complete("--json", "settings", "mode", ""), ["light", "dark"])

    def test_currencies_by_code_or_name(self):
        self.assertEqual(self.complete("100", "jp"), ["JPY"])
        self.assertEqual(self.complete("100", "yen"), ["JPY"])
        self.assertEqual(self.complete("100", "USD", "zlo"), ["PLN"])
        self.assertEqual(self.complete("100", ""), ["USD", "EUR"])
        self.assertEqual(self.complete("select", "eur"), ["EUR", "EURC"])
        self.assertEqual(self.complete("search", "dollar", "--exclude", "eu"), ["EUR", "EURC"])
        self.assertEqual(self.complete("100", "no such"), [])


class Fish(ProgramTest):
    def complete(self, line):
        home = tempfile.mkdtemp(prefix="fexora-test-")
        self.addCleanup(shutil.rmtree, home)
        done = subprocess.run(
            ["fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]",
             COMPLETIONS / "fexora.fish", line],
            env=self.environment(PATH=f"{BIN}:{os.environ['PATH']}", HOME=home, LANG="C.UTF-8"),
            text=True, capture_output=True, check=True, timeout=60)
        self.assertEqual(done.stderr, "")
        return dict(line.partition("\t")[::2] for line in done.stdout.splitlines())

    def test_commands_options_and_currencies(self):
        self.assertEqual(sorted(self.complete("fexora ")), sorted(COMMANDS))
        self.assertEqual(list(self.complete("fexora settings mode ")), ["dark", "light"])
        self.assertEqual(sorted(self.complete("fexora 1 --n")), ["--names", "--no-save"])
        self.assertEqual(list(self.complete("fexora search x --ex")), ["--exclude"])
        self.assertEqual(self.complete("fexora 100 jp"), {"JPY": "Japanese Yen"})
        self.assertEqual(sorted(self.complete("fexora select ")), ["EUR", "USD"])


class Zsh(ProgramTest):
    def type(self, line, wanted):
        """Types into an interactive shell until it shows what is wanted; what it showed."""
        home = tempfile.mkdtemp(prefix="fexora-test-")
        self.addCleanup(shutil.rmtree, home)
        pathlib.Path(home, ".zshrc").write_text(
            f"PS1='READY> '; unset zle_bracketed_paste; fpath=({COMPLETIONS} $fpath)\n"
            "autoload -U compinit; compinit -u -D\n", encoding="utf-8")
        ours, theirs = pty.openpty()
        self.addCleanup(os.close, ours)
        env = self.environment(PATH=f"{BIN}:{os.environ['PATH']}", HOME=home, ZDOTDIR=home,
                               TERM="dumb", LANG="C.UTF-8")
        shell = subprocess.Popen(["zsh", "-d", "-i"], env=env, stdin=theirs, stdout=theirs,
                                 stderr=theirs, start_new_session=True)
        os.close(theirs)
        try:
            self.read_until(ours, "READY> ")
            os.write(ours, line.encode())
            return self.read_until(ours, wanted)
        finally:
            shell.kill()
            shell.wait()

    def read_until(self, descriptor, pattern):
        shown = ""
        end = time.monotonic() + 60
        while not re.search(pattern, shown):
            ready, _, _ = select.select([descriptor], [], [], end - time.monotonic())
            self.assertTrue(ready, f"never shown: {pattern} in {shown!r}")
            shown += os.read(descriptor, 4096).decode(errors="replace")
        return shown

    def test_a_name_becomes_its_code_and_a_command_is_completed(self):
        self.type("fexora 100 yen\t", "JPY")
        self.type("fexora setti\t", "settings")
        self.type("fexora settings mode d\t", "dark")
        self.type("fexora search x --exc\t", "--exclude")


class Manual(ProgramTest):
    def test_page_is_clean_and_names_all_there_is(self):
        page = SOURCE / "packaging/man/fexora.1"
        done = subprocess.run(["groff", "-man", "-Tutf8", "-ww", page], text=True,
                              capture_output=True, check=True, timeout=60)
        self.assertEqual(done.stderr, "")
        text = re.sub("\x1b\\[[0-9;]*m|.\b", "", done.stdout).replace("\u2010", "-")
        for command in ["", *COMMANDS]:
            self.assertIn(f"fexora {command}".strip(), text)
            words = [command] if command else []
            for option in re.findall(r"--[a-z-]+", self.succeed(*words, "--help")):
                self.assertIn(option, text, command)
        for name in self.json("settings"):
            self.assertIn(name, text)
        for code in range(5):
            self.assertRegex(text, rf"\n +{code} +\w")


if __name__ == "__main__":
    unittest.main()
