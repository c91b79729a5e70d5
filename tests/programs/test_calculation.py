"""Amounts that are calculations."""

import json

from support import ProgramTest


class Calculations(ProgramTest):
    def amount(self, typed, *words, **options):
        return self.json(*words, typed, "USD", "EUR", **options)["amount"]

    def test_operators_parentheses_and_both_marks(self):
        for typed, value in [
                ("12+3*2", 18), ("(12+3)*2", 30), ("2-3-4", -5), ("8/2/2", 2), ("10/4", 2.5),
                ("-2*3", -6), ("2*-3", -6), ("-(-3)", 3), ("+5", 5), (" 1 + 1 ", 2),
                ("1,5+2.5", 4), ("0.1+0.2", 0.1 + 0.2), ("1e3*2", 2000), ("1/3", 1 / 3),
                ("((((7))))+0", 7), ("85.23*3", 85.23 * 3), ("(1)", 1), ("6×4÷3−1", 7),
                ("100 + 10%", 110), ("70-10%", 63), ("200*10%", 20), ("10%", 0.1),
                ("100+(10%)", 100.1), ("100+10%*2", 100.2), ("1,234.5*2", 2469)]:
            self.assertEqual(self.amount(typed), value, typed)

    def test_numbers_are_those_of_the_locale(self):
        self.assertEqual(self.amount("1,5*2", "--locale", "de_DE"), 3)
        self.assertEqual(self.amount("١٢٫٥*2", "--locale", "ar_EG"), 25)
        self.assertEqual(self.amount("2*1.5", "--locale", "ar_EG"), 3)
        self.assertIn("like ١٢٫٥", self.reject(2, "--locale", "ar_EG", "x", "USD", "EUR"))
        # Each number in it that has two readings is named.
        _, out, err = self.run_program("1,234+2,500", "USD", "EUR", "--json")
        self.assertEqual(json.loads(out)["amount"], 3734)
        self.assertEqual(json.loads(out)["reading"],
                         {"kind": "ambiguous", "value": 3734, "other": 1.234 + 2.5})
        for note in ('"1,234" was read as 1234; write 1.234',
                     '"2,500" was read as 2500; write 2.5 '):
            self.assertIn(note, err)

    def test_what_is_malformed_is_rejected_with_its_place(self):
        for typed, said in [
                ("12+*3", "at place 4"), ("3 4+1", "at place 3"), ("2(3)+1", "at place 2"),
                ("()+1", "at place 2"), ("12+", "at place 3"), ("(1+2", "partner at place 1"),
                ("1+2)", "partner at place 4"), ("(1+(2)", "partner at place 1"), ("1+x", '"1+x"'),
                ("1/0", "by zero at place 2"), ("1/(1/0)", "by zero at place 5"),
                ("10/-0", "by zero at place 3"), ("1e300*1e300", "finite number at place 1"),
                ("1/1e400", "too large at place 3"), ("1+" * 600 + "1", "too long"),
                ("1.2.3+1", '"1.2.3+1" is no amount')]:
            message = self.reject(2, "--", typed, "USD", "EUR")
            self.assertIn(said, message, typed)
        self.assertFalse(self.store.exists())

    def test_deep_nesting_is_no_danger(self):
        self.assertEqual(self.amount("(" * 400 + "7" + ")" * 400 + "+0"), 7)
        self.assertIn("by zero", self.reject(2, "--", "1/(" * 240 + "0" + ")" * 240, "USD", "EUR"))
