"""The documents to the letter: their code, what their commands print, the files they describe."""

import datetime
import os
import re
import subprocess
import textwrap
import unittest

from support import BIN, SNAPSHOT, SOURCE, ProgramTest

DOCUMENTS = [SOURCE / "README.md", *sorted((SOURCE / "docs").glob("*.md"))]
# The last words before the code name its file.
CODE = re.compile(r"`(examples/[^`]+)`:\n\n```(?:cpp|c|python)\n(.*?)```", re.DOTALL)
CONSOLE = re.compile(r"(?m)^    \$ (.*)\n((?:    [^$].*\n)*)")
SANITIZED = os.environ.get("FEXORA_SANITIZED") == "1"
PYTHON = {"PYTHONPATH": str(SOURCE / "python"), "PYTHONDONTWRITEBYTECODE": "1",
          "FEXORA_C_LIBRARY": str(next(BIN.parent.glob("lib*/**/libfexora-c.so.0"), ""))}
TYPES = {bool: "boolean", int: "integer", str: "string", list: "array", dict: "dictionary",
         datetime.datetime: "date"}


def dedented(lines):
    return textwrap.dedent("\n".join(lines)).strip()


def without_age(text):
    """The text as of any day after the rates' own."""
    return re.sub(r"\d+ \w+ old", "some days old", re.sub(r"(\d+ September) \d{4}", r"\1", text))


class Documents(ProgramTest):
    def test_code_is_the_samples(self):
        for document in DOCUMENTS:
            text = document.read_text(encoding="utf-8")
            quotes = CODE.findall(text)
            self.assertEqual(len(quotes), len(re.findall(r"```(?:cpp|c|python)\n", text)),
                             f"{document}: code of no sample")
            for sample, code in quotes:
                lines = (SOURCE / sample).read_text(encoding="utf-8").splitlines()
                length = code.count("\n")
                there = {dedented(lines[i:i + length]) for i in range(len(lines))}
                self.assertIn(code.strip(), there, f"{document}: not in {sample}")

    def test_what_they_name_is_there(self):
        for document in {*DOCUMENTS, *SOURCE.glob("*.md")}:
            text = document.read_text(encoding="utf-8")
            links = re.findall(r"\]\(([\w./-]+)[#)]", text)
            names = re.findall(r"`([A-Za-z-]+\.md)`", text)
            names += re.findall(r"`((?:docs|examples|packaging|tools|tests|fuzz|bench)/[\w./-]+)`",
                                text)
            for name in links:
                self.assertTrue((document.parent / name).exists(), f"{document} links to {name}")
            for name in names:
                there = [(folder / name).exists() for folder in (SOURCE, SOURCE / "docs")]
                self.assertTrue(any(there), f"{document} names {name}")

    def test_commands_print_what_is_shown(self):
        path = f"{BIN}:{os.environ['PATH']}"
        for document in DOCUMENTS:
            env = self.environment(FEXORA_CONTAINER=str(self.new_folder()), PATH=path, **PYTHON)
            for command, shown in CONSOLE.findall(document.read_text(encoding="utf-8")):
                if SANITIZED and "python3" in command:
                    continue  # the interpreter does not have the sanitizers loaded
                command = command.replace("./run", "fexora")
                printed = subprocess.run(["bash", "-c", command], env=env, text=True, check=True,
                                         cwd=SOURCE, stdout=subprocess.PIPE,
                                         stderr=subprocess.STDOUT).stdout
                self.assertEqual(without_age(printed), without_age(textwrap.dedent(shown)), command)

    @unittest.skipIf(SANITIZED, "the interpreter does not have the sanitizers loaded")
    def test_python_answers_what_is_shown(self):
        subprocess.run(["python3", "-B", "-m", "doctest", SOURCE / "docs/c-and-python.md"],
                       check=True, env=self.environment(
                           FEXORA_CONTAINER=str(self.new_folder()), **PYTHON))

    def test_store_has_the_keys_of_its_table(self):
        text = (SOURCE / "docs/file-formats.md").read_text(encoding="utf-8")
        table = dict(re.findall(r"(?m)^\| `([A-Z]\w+)` \| (\w+) \|", text))
        self.succeed("select", "USD", "EUR")
        self.succeed("settings", "fraction", "2")
        few = self.new_folder() / "few.csv"
        few.write_text("EUR,0.9\n")
        for source in (SNAPSHOT, few):
            self.succeed("refresh", "--from", source, "--force")
        self.succeed("settings", "ratesFrom", "ecb")
        self.succeed("settings", "todayTrend", "true")
        self.succeed("100", "USD")
        content = self.content()
        self.assertEqual(table, {key: TYPES[type(value)] for key, value in content.items()})
        for inner in (content["UDRatesAnswer"], content["UDSourceCurrency"],
                      content["UDUSDRates"][0], content["UDRatesKept"][0]):
            for key in inner:
                self.assertIn(f"`{key}`", text)

    def test_answer_is_taken_as_it_is_described(self):
        text = (SOURCE / "docs/file-formats.md").read_text(encoding="utf-8")
        answer = re.search(r"```json\n(.*?)```", text, re.DOTALL)[1]
        file = self.new_folder() / "answer.json"
        file.write_text(answer, encoding="utf-8")
        self.assertEqual(self.json("refresh", "--from", file, "--force")["count"], 3)
