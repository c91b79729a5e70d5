"""Search, names in the user's language, and what a mistyped code is offered."""

from support import ProgramTest


class Search(ProgramTest):
    def codes(self, *words):
        return [match["code"] for match in self.json("search", *words)["matches"]]

    def test_matches_come_with_code_and_name(self):
        self.assertEqual(self.json("search", "--plain", "yen"),
                         {"matches": [{"code": "JPY", "name": "Japanese Yen"}]})
        self.assertEqual(self.succeed("search", "bitcoin", "ca"), "BCH  Bitcoin Cash\n")
        for text, code in [("zlo", "PLN"), ("usd", "USD"), ("switz", "CHF"), ("€", "EUR"),
                           ("円", "JPY"),
                           ("yen", "JPY"), ("dolar", "USD"), ("Deutschland", "EUR")]:
            self.assertEqual(self.codes(text)[0], code, text)

    def test_limit_counts_matches_and_exclude_leaves_out(self):
        everything = self.codes("dollar", "--plain")
        self.assertGreater(len(everything), 20)
        first, second, *others = everything
        for words, found in [
                ("--limit 010", everything[:10]),
                (f"--exclude {second} --exclude jpy", [first, *others]),
                # Matches that are left out count all the same.
                (f"--limit 3 --exclude {first.lower()}", everything[1:3])]:
            self.assertEqual(self.codes("--plain", "dollar", *words.split()), found, words)
        self.assertEqual(self.codes("dollar", "--limit", "2"), ["USD", "AUD"])

    def test_each_language_is_searched_by_its_own_names(self):
        for language, text, code, name in [
                ("de", "ISLÄNDISCHE", "ISK", "Isländische Krone"), ("ja", "日本円", "JPY", "日本円"),
                ("ja", "ト\u3099ル", "USD", "米ドル"),
                ("ar", "ين ياباني", "JPY", "ين ياباني"), ("hi", "भारतीय", "INR", "भारतीय रुपया"),
                ("hi", "ethereum", "ETH", "Ethereum"), ("ja", "xrp", "XRP", "XRP")]:
            matches = self.json("search", text, "--lang", language, "--limit", "50")["matches"]
            self.assertIn({"code": code, "name": name}, matches, language)
            # A conversion shows the same name.
            items = self.json("1", "GBP", code, "--lang", language)["items"]
            self.assertEqual(items[0]["name"], name)
        # The language of the environment serves where none is asked for.
        env = self.environment(LANG="de_DE.UTF-8")
        self.assertEqual(self.succeed("search", "schweizer franken", env=env),
                         "CHF  Schweizer Franken\n")

    def test_nothing_found_offers_near_ones(self):
        self.assertIn('no currency matches "no such money"',
                      self.reject(1, "search", "no", "such", "money"))
        self.assertIn("near: USD (US Dollar)", self.reject(1, "search", "--plain", "UDS"))
        self.assertIn("matches", self.reject(1, "search", ""))

    def test_wrong_use(self):
        for words in ([], ["yen", "--limit", "many"], ["yen", "--limit", "0"]):
            self.reject(2, "search", *words)
        for option in ("--lang", "--locale"):
            self.assertIn("near: de_DE", self.reject(2, "1", "USD", "EUR", option, "dee_DE"))
        self.assertIn('"QQQ"', self.reject(1, "search", "yen", "--exclude", "QQQ"))


class Names(ProgramTest):
    def test_names_show_on_a_terminal_and_when_asked(self):
        self.assertNotIn("name", self.json("1", "USD", "EUR")["items"][0])
        self.assertEqual(self.json("1", "USD", "EUR", "--names")["items"][0]["name"], "Euro")
        self.assertNotIn("Yen", self.succeed("1", "USD", "JPY"))
        named = self.succeed("1", "USD", "JPY", "--names").splitlines()
        self.assertEqual(named[0], "1 USD (US Dollar) =")
        self.assertTrue(named[1].endswith("JPY)   Japanese Yen"), named)
        self.assertEqual(self.succeed("select", "--lang", "de", "usd", "xrp"),
                         "USD (US-Dollar)\nXRP\n")
        process, terminal = self.start_on_terminal("1", "USD", "JPY")
        self.assertIn("Japanese Yen", self.read_until(terminal, "old"))
        self.assertEqual(process.wait(timeout=60), 0)

    def test_names_that_need_no_language_data_open_no_module(self):
        env = self.environment(LD_DEBUG="files")
        for words, opened in [([], False), (["--names"], False), (["--lang", "en_GB"], False),
                              (["--lang", "ja"], True)]:
            code, _, log = self.run_program("1", "USD", "EUR", *words, env=env)
            self.assertEqual((code, "/fexora_" in log), (0, opened), words)


class Offers(ProgramTest):
    def test_a_mistyped_code_is_offered_what_the_search_finds(self):
        self.assertIn("near: JPY (Japanese Yen)", self.reject(1, "select", "yen"))
        self.assertIn("near: JPY (日本円)", self.reject(1, "select", "円", "--lang", "ja"))
        self.assertIn("near: USD (US Dollar),", self.reject(1, "1", "EUR", "dolar"))
        error = self.failure(1, "1", "frank")
        self.assertEqual(error["kind"], "currency")
        self.assertIn("CHF (Swiss Franc)", error["message"])
