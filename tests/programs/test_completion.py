"""Shell completion and the manual page, each by its own shell or formatter."""

import os
import re
import subprocess

from support import BIN, SOURCE, ProgramTest

COMPLETIONS = SOURCE / "packaging/completions"
COMMANDS = ["select", "settings", "search", "refresh", "history", "watch", "status"]


# The words before the cursor, and what they can become.
EVERYWHERE = [
    ([""], COMMANDS), (["se"], ["select", "settings", "search"]),
    (["settings", "mode", ""], ["light", "dark"]), (["100", "--n"], ["--no-save", "--names"]),
    (["search", "x", "--ex"], ["--exclude"]), (["history", "USD", "--cs"], ["--csv"]),
    (["settings", "todayR"], ["todayRelativeCurrency"]),
    (["100", "jp"], ["JPY"]), (["select", ""], ["USD", "EUR"]),
    (["select", "eur"], ["EUR", "EURC"])]
IN_BASH = [
    (["--json", "settings", "mode", ""], ["light", "dark"]), (["100", "yen"], ["JPY"]),
    (["100", "USD", "zlo"], ["PLN"]), (["100", ""], ["USD", "EUR"]),
    (["search", "dollar", "--exclude", "eu"], ["EUR", "EURC"]), (["100", "no such"], [])]


class Shells(ProgramTest):
    def run_shell(self, *words, **changes):
        env = self.environment(PATH=f"{BIN}:{os.environ['PATH']}", LANG="C.UTF-8",
                               HOME=str(self.container), **changes)
        done = subprocess.run(words, env=env, text=True, capture_output=True, check=True,
                              timeout=60)
        self.assertEqual(done.stderr, "")
        return done.stdout.splitlines()

    def bash(self, *words):
        script = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); '
                  '_fexora fexora "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        found = self.run_shell("bash", "-c", script, "bash", COMPLETIONS / "fexora.bash", "fexora",
                               *words)
        return " ".join(found).split()

    def fish(self, *words):
        """With what stands beside each. Which else it offers that has the letters somewhere is
        fish's own choice, another one from version 4 on."""
        found = self.run_shell("fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]",
                               COMPLETIONS / "fexora.fish", " ".join(["fexora", *words]))
        return dict(line.partition("\t")[::2] for line in found
                    if line.lower().startswith(words[-1].lower()))

    def test_bash(self):
        for words, wanted in EVERYWHERE + IN_BASH:
            self.assertEqual(self.bash(*words), wanted, words)
        self.assertNotIn("--invert", self.bash("watch", "--"))

    def test_fish(self):
        for words, wanted in EVERYWHERE:
            self.assertEqual(sorted(self.fish(*words)), sorted(wanted), words)
        self.assertEqual(self.fish("100", "jp"), {"JPY": "Japanese Yen"})


class Zsh(ProgramTest):
    def test_a_name_becomes_its_code_and_a_command_is_completed(self):
        (self.container / ".zshrc").write_text(
            f"PS1='READY> '; unset zle_bracketed_paste; fpath=({COMPLETIONS} $fpath)\n"
            "autoload -U compinit; compinit -u -D\n", encoding="utf-8")
        env = self.environment(PATH=f"{BIN}:{os.environ['PATH']}", HOME=str(self.container),
                               ZDOTDIR=str(self.container), TERM="dumb", LANG="C.UTF-8")
        _, terminal = self.start_on_terminal("-d", "-i", program="/usr/bin/zsh", env=env,
                                             start_new_session=True)
        self.read_until(terminal, "READY> ")
        for line, wanted in [("100 yen", "JPY"), ("setti", "settings"),
                             ("settings mode d", "dark"), ("search x --exc", "--exclude"),
                             # Several that begin otherwise are listed, and the word stays.
                             ("100 krone", "Norwegian Krone"),
                             ("100 krone", "\nREADY> fexora 100 krone")]:
            os.write(terminal, f"\x15fexora {line}\t".encode())  # in place of the line so far
            self.read_until(terminal, wanted)


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
