"""What people write means the same in the terminal and the desktop's search as in the library."""

import json

from support import SOURCE, ProgramTest

TABLES = SOURCE / "tests/sentences"


def lines_of(name):
    return [line for line in (TABLES / name).read_text("utf-8").splitlines() if line[:1] != "#"]


class Sentences(ProgramTest):
    def setUp(self):
        super().setUp()
        self.succeed("select", "EUR", "USD", "JPY")

    def test_the_table_in_the_terminal_and_the_search(self):
        rows = [line.split("\t") for line in lines_of("sentences.tsv")]
        by_locale = {row[0]: [text for locale, text, *_ in rows if locale == row[0]]
                     for row in rows}
        answers = {locale: self.answers(texts, locale) for locale, texts in by_locale.items()}
        for place, row in enumerate(rows):
            locale, text, amount, source, destinations, *notices = row
            with self.subTest(row):
                answer = answers[locale].pop(0)
                # A process for each: one in three.
                found = self.ask(text, locale) if place % 3 == 0 else None
                if amount == "!" or source == "-":
                    self.assertIn("error", answer)
                    self.assertFalse(found)
                    continue
                numbers = [float(number) for number in amount.split("|")]
                reading = answer["reading"]
                self.assertAlmostEqual(answer["amount"] / numbers[0], 1, 12)
                self.assertEqual(reading["kind"], ["exact", "ambiguous"][len(numbers) - 1])
                self.assertEqual(answer["source"], source)
                self.assertEqual(bool(answer["notices"]), bool(notices))
                if destinations != "-":
                    self.assertEqual([item["currency"] for item in answer["items"]],
                                     destinations.split())
                if found is None:
                    continue
                # A currency alone, and a pair of names, may be about something else.
                for result in found:
                    query = result["id"].split()
                    number = float(query[0].translate(str.maketrans(",٫", "..")))
                    self.assertAlmostEqual(number / numbers[0], 1, 12)
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
