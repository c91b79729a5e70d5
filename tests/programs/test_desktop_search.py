"""The desktop's own search: what it answers and what it leaves alone, and its place on a bus."""

import ast
import json
import re
import shutil
import subprocess
import unittest

from support import BIN, ProgramTest, snapshot_rates


def quotient(amount, source, destination):
    rates = snapshot_rates() | {"USD": 1.0}
    return amount * (rates[destination] / rates[source])


class DesktopSearch(ProgramTest):
    program = "fexora-search"

    def ask(self, query, **changes):
        return json.loads(self.succeed("--query", query, env=self.environment(**changes)))

    def test_amounts_with_a_currency_are_answered(self):
        for query, amount, source, destinations in [
                ("100 usd in eur", 100, "USD", ["EUR"]), ("€20 yen", 20, "EUR", ["JPY"]),
                ("  usd 7  =  chf jpy ", 7, "USD", ["CHF", "JPY"]),
                ("300 GBp eur", 3, "GBP", ["EUR"]),
                ("100 usd", 100, "USD", ["EUR"]), ("100 yen in", 100, "JPY", ["USD", "EUR"])]:
            answers = self.ask(query)
            self.assertEqual([answer["id"] for answer in answers],
                             [f"{amount:g} {source} {code}" for code in destinations], query)
            for answer, code in zip(answers, destinations):
                self.assertAlmostEqual(float(answer["number"]), quotient(amount, source, code), 3)
                self.assertEqual(answer["title"].replace(",", ""), f"{answer['number']} {code}")
                self.assertRegex(answer["text"], r"rates of 29 September, bundled, \d+ days? old")
                # The one answer again, from what a desktop gives back.
                self.assertEqual([again["title"] for again in self.ask(answer["id"])],
                                 [answer["title"]])
        # In the locale, and said how it was read.
        answer = self.ask("1.234 eur usd", LC_ALL="de_DE.UTF-8")[0]
        self.assertEqual(answer["id"], "1234 EUR USD")
        self.assertIn("was read as 1234", answer["text"])

    def test_everything_else_is_left_alone_and_nothing_is_written(self):
        self.container.rmdir()
        for query in [" ", "usd", "100 usd usd", "9" * 300 + " usd"]:
            self.assertEqual(self.ask(query), [], query)
        self.assertEqual(len(self.ask("1 usd eur")), 1)
        self.assertFalse(self.container.exists())
        self.container.mkdir()
        for words in (["--idle", "0"], ["--nothing"], ["100"]):
            self.reject(2, *words)
        self.reject_full_output("--query", "1 usd eur")

    def test_rates_and_settings_are_the_stores(self):
        self.succeed("1", "USD", "EUR", program="fexora")
        self.succeed("select", "GBP", "CHF", program="fexora")
        self.succeed("settings", "fraction", "1", program="fexora")
        before = self.store.read_bytes()
        self.assertEqual([answer["title"] for answer in self.ask("1000 usd")],
                         [f"{quotient(1000, 'USD', code):.1f} {code}" for code in ("GBP", "CHF")])
        self.assertEqual(self.store.read_bytes(), before)

    @unittest.skipUnless(shutil.which("dbus-run-session") and shutil.which("gdbus"),
                         "no session bus")
    def test_both_desktops_ask_on_the_bus_which_starts_and_outlives_it(self):
        data = self.new_folder()
        (data / "dbus-1/services").mkdir(parents=True)
        (data / "dbus-1/services/org.fexora.Search.service").write_text(
            f"[D-BUS Service]\nName=org.fexora.Search\nExec={BIN}/fexora-search --idle 0.3\n")
        script = f"""
            ask() {{ gdbus call --session --dest $1 --object-path $2 --method "$3" "${{@:4}}"; }}
            fexora() {{ ask org.fexora.Search /org/fexora/Search "$@"; }}
            gnome=org.gnome.Shell.SearchProvider2
            fexora $gnome.GetInitialResultSet "['100','usd','in','eur']"
            fexora $gnome.GetSubsearchResultSet "['x']" "['5 usd','gbp']"
            fexora $gnome.GetResultMetas "['100 USD EUR']"
            fexora $gnome.GetInitialResultSet "['holiday']"
            fexora org.kde.krunner1.Match "100 usd in eur"
            fexora org.kde.krunner1.Actions
            {BIN}/fexora settings fraction 1 >&2
            until fexora org.kde.krunner1.Match "100 usd in eur" | grep -q "88.0 EUR"; do :; done
            until ask org.freedesktop.DBus / org.freedesktop.DBus.NameHasOwner org.fexora.Search |
              grep -q false; do :; done
            fexora $gnome.ActivateResult "5 USD GBP" "['5']" 0
            echo ended"""
        env = self.environment(XDG_DATA_HOME=str(data), PATH="/usr/bin:/bin")
        out = subprocess.run(["dbus-run-session", "--", "bash", "-euc", script], env=env, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120,
                             check=False)
        lines = out.stdout.splitlines()
        self.assertEqual(len(lines), 8, (out.stdout, out.stderr))
        self.store.unlink()  # the setting was followed, and the answers before were without
        answer = self.ask("100 usd in eur")[0]
        self.assertEqual(lines[:2], ["(['100 USD EUR'],)", "(['5 USD GBP'],)"])
        meta = ast.literal_eval(re.sub(r"[<>]", "", lines[2]))[0][0]
        self.assertEqual(meta, {"id": "100 USD EUR", "name": answer["title"],
                                "description": answer["text"], "gicon": "org.fexora.Fexora",
                                "clipboardText": answer["number"]})
        self.assertEqual(lines[3], "(@as [],)")
        # KRunner drops an answer of any other signature; a number without its type is an int32.
        match = ast.literal_eval(re.sub(r"[<>]", "", lines[4]))[0][0]
        self.assertEqual(match, ("100 USD EUR", answer["title"], "org.fexora.Fexora", 100, 1.0,
                                 {"subtext": answer["text"]}))
        # Without a converter nothing is opened; with one see tests/desktop.
        self.assertEqual(lines[5:], ["(@a(sss) [],)", "()", "ended"])


if __name__ == "__main__":
    unittest.main()
