"""What people write means the same in the terminal and the desktop's search as in the library."""

import json
import os

from support import SOURCE, ProgramTest

TABLES = SOURCE / "tests/sentences"


def lines_of(name):
    return [line for line in (TABLES / name).read_text("utf-8").splitlines() if line[:1] != "#"]


def rows_of_the_table():
    return [line.split("\t") for line in lines_of("sentences.tsv")]


def numbers_of(amount):
    return [float(number) for number in amount.split("|")]


class Sentences(ProgramTest):
    def setUp(self):
        super().setUp()
        self.succeed("select", "EUR", "USD", "JPY")

    def test_the_table_in_the_terminal(self):
        rows = rows_of_the_table()
        by_locale = {row[0]: [text for locale, text, *_ in rows if locale == row[0]]
                     for row in rows}
        answers = {locale: self.answers(texts, locale) for locale, texts in by_locale.items()}
        for row in rows:
            locale, _, amount, source, destinations, *notices = row
            with self.subTest(row):
                answer = answers[locale].pop(0)
                if amount == "!" or source == "-":
                    self.assertIn("error", answer)
                    continue
                numbers = numbers_of(amount)
                reading = answer["reading"]
                self.assertAlmostEqual(answer["amount"] / numbers[0], 1, 12)
                self.assertEqual(reading["kind"], ["exact", "ambiguous"][len(numbers) - 1])
                self.assertEqual(answer["source"], source)
                self.assertEqual(bool(answer["notices"]), bool(notices))
                if destinations != "-":
                    self.assertEqual([item["currency"] for item in answer["items"]],
                                     destinations.split())

    def test_the_table_in_the_search(self):
        # A process for each: one in three, unless FEXORA_SEARCHES asks for all.
        step = 1 if "FEXORA_SEARCHES" in os.environ else 3
        for row in rows_of_the_table()[::step]:
            locale, text, amount, source, destinations, *_ = row
            with self.subTest(row):
                found = self.ask(text, locale)
                if amount == "!" or source == "-":
                    self.assertEqual(found, [])
                    continue
                # A currency alone, and a pair of names, may be about something else.
                for result in found:
                    query = result["id"].split()
                    number = float(query[0].translate(str.maketrans(",٫", "..")))
                    self.assertAlmostEqual(number / numbers_of(amount)[0], 1, 12)
                    self.assertEqual(query[1], source)
                isAsked = destinations not in ("-", source) and any(c.isdigit() for c in text)
                self.assertTrue(found or not isAsked)

    def answers(self, texts, locale):
        """The terminal's, to all of them in one call."""
        _, out, _ = self.run_program("-", "--json", "--no-save", "--locale", locale, "--lang",
                                     locale, text="".join(text + "\n" for text in texts))
        answers = [json.loads(line) for line in out.splitlines()]
        self.assertEqual(len(answers), len(texts))
        return answers

    def ask(self, text, locale):
        env = self.environment(LC_ALL=locale + ".UTF-8")
        return json.loads(self.succeed("--query", text, program="fexora-search", env=env))

    def test_the_search_leaves_alone_what_is_about_something_else(self):
        for text in lines_of("others.txt"):
            self.assertEqual(self.ask(text, "en_US"), [], text)

    def test_words_are_one_sentence(self):
        for words, amount, source, items in [
                (["100", "usd", "in", "eur"], 100, "USD", ["EUR"]),
                (["5k", "dollars", "to", "euros"], 5000, "USD", ["EUR"]),
                (["$100", "CAD"], 100, "USD", ["CAD"]), (["100", "$", "CAD"], 100, "USD", ["CAD"]),
                (["$100 CAD", "EUR"], 100, "CAD", ["EUR"]), (["usd", "eur"], 1, "USD", ["EUR"])]:
            answer = json.loads(self.run_program(*words, "--json")[1])
            self.assertEqual((answer["amount"], answer["source"]), (amount, source), words)
            self.assertEqual([item["currency"] for item in answer["items"]], items, words)
        code, out, _ = self.run_program("-", "--json", text="100 usd in eur\n5 quid\n€3 usd\n")
        self.assertEqual([json.loads(line)["source"] for line in out.splitlines()],
                         ["USD", "GBP", "EUR"])
