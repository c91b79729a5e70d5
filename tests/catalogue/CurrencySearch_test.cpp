// Fixed cases of the search; fuzz/search.cpp compares it with a plain one on catalogues of any
// kind.
#include "fexora/catalogue/CurrencySearch.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/catalogue/CurrencyNames.h"

#include "tests/support/TestCatalogue.h"

namespace fexora::test {
namespace {

constexpr std::int64_t kNoLimit = 1000;

std::vector<std::string> codes(const std::vector<CurrencyRef>& currencies) {
  std::vector<std::string> list;
  list.reserve(currencies.size());
  for (const CurrencyRef& currency : currencies) list.push_back(currency->code());
  return list;
}

using Codes = std::vector<std::string>;

TEST(CurrencySearch, ExactCodeFirst_ThenCatalogueOrder) {
  TestCatalogue catalogue({"AUD", "EURC", "USD", "USDT", "EUR"});
  catalogue.desktop.strings.setTable({{"AUD", "Australian Dollar"},
                                      {"USD", "US Dollar"},
                                      {"USDT", "Tether, a usd coin"},
                                      {"EUR", "Euro"}});
  const auto search = [&](std::string_view query, std::int64_t limit = kNoLimit) {
    return codes(catalogue.manager().currenciesForString(query, limit, {}));
  };
  for (const char* query : {"usd", "USD", "uSd"}) {
    EXPECT_EQ(search(query), (Codes{"USD", "USDT"})) << query;
  }
  EXPECT_EQ(search("eur"), (Codes{"EUR", "EURC"}));
  EXPECT_EQ(search("us"), (Codes{"AUD", "USD", "USDT"}));
  EXPECT_EQ(search("dollar"), (Codes{"AUD", "USD"}));
  EXPECT_EQ(search(" dollar"), (Codes{"AUD", "USD"}));
  EXPECT_EQ(search("dollar "), Codes{});
  // The limit is the starting count: the first record, AUD, does not count and ends the walk.
  EXPECT_EQ(search("eur", 1), (Codes{"EUR"}));
  EXPECT_EQ(search(""), Codes{});
  EXPECT_EQ(search("", 0), Codes{});
}

TEST(CurrencySearch, Limit_CountsMatchesAndNotResults) {
  TestCatalogue catalogue({"EUR", "EURA", "EURB", "EURC", "EURD"});
  auto& manager = catalogue.manager();
  const auto search = [&](std::int64_t limit, const std::vector<CurrencyRef>& exclude) {
    return codes(manager.currenciesForString("eur", limit, exclude));
  };
  const auto other = Currency::make("EUR");
  EXPECT_EQ(search(3, {}), (Codes{"EUR", "EURA", "EURB"}));
  EXPECT_EQ(search(1, {other}), Codes{});
  EXPECT_EQ(search(3, {other, nullptr, Currency::make(), Currency::make("eura")}),
            (Codes{"EURA", "EURB"}));
  // EUR, the first, is given already and does not count again, so a limit of one ends there.
  EXPECT_EQ(search(1, {}), (Codes{"EUR"}));
  EXPECT_EQ(search(0, {}).size(), 5U);
  EXPECT_EQ(search(-1, {}).size(), 5U);
  EXPECT_EQ(search(0, {other}).size(), 4U);
}

TEST(CurrencySearch, EqualCodes_AreBothGivenByTheExactPassOnly) {
  TestCatalogue catalogue({"ABC", "abc", "ABC", "", "ABCD", "ABCD", ""});
  catalogue.desktop.strings.setTable({{"", "no abcd"}});
  auto& manager = catalogue.manager();
  const auto& all = manager.currencies();
  EXPECT_EQ(manager.currenciesForString("abc", kNoLimit, {}),
            (std::vector{all[0], all[1], all[2], all[3], all[4], all[6]}));
  EXPECT_EQ(manager.currenciesForString("abcd", kNoLimit, {all[3]}),
            (std::vector{all[3], all[4], all[6]}));
}

TEST(CurrencySearch, Characters_AreNeverCutApart) {
  TestCatalogue catalogue({"A", "B", "C", "D", "ÉTÉ"});
  catalogue.desktop.strings.setTable(
      {{"A", "caf\u00E9"}, {"B", "cafe\u0301"}, {"C", "각"}, {"D", "👩\u200D👧"}});
  const auto search = [&](std::string_view query) {
    return codes(catalogue.manager().currenciesForString(query, kNoLimit, {}));
  };
  EXPECT_EQ(search("e"), Codes{});
  EXPECT_EQ(search("f"), (Codes{"A", "B"}));
  EXPECT_EQ(search("É"), (Codes{"A", "B", "ÉTÉ"}));
  EXPECT_EQ(search("E\u0301"), (Codes{"A", "B", "ÉTÉ"}));
  EXPECT_EQ(search("\u0301"), Codes{});
  EXPECT_EQ(search("가"), Codes{});
  EXPECT_EQ(search("👩"), Codes{});
  EXPECT_EQ(search("👩\u200D👧"), (Codes{"D"}));
  EXPECT_EQ(search("e\u0301te\u0301"), (Codes{"ÉTÉ"}));
}

class CountingStrings final : public HostStrings {
 public:
  std::optional<std::string> string(std::string_view key) override {
    ++asked;
    return names_prefix + std::string(key);
  }
  std::uint64_t generation() override { return now; }

  int asked = 0;
  std::uint64_t now = 1;
  std::string names_prefix = "one ";
};

TEST(CurrencySearch, Keys_AreKeptForOneGenerationOfStrings) {
  TestCatalogue catalogue({"USD", "EUR"});
  CountingStrings strings;
  catalogue.desktop.platform.strings = &strings;
  auto& manager = catalogue.manager();
  EXPECT_EQ(strings.asked, 0);
  EXPECT_EQ(manager.currenciesForString("one", kNoLimit, {}).size(), 2U);
  EXPECT_EQ(manager.currenciesForString("one e", kNoLimit, {}).size(), 1U);
  EXPECT_EQ(strings.asked, 2);
  strings.names_prefix = "two ";
  strings.now = 2;
  EXPECT_EQ(manager.currenciesForString("two", kNoLimit, {}).size(), 2U);
  EXPECT_EQ(strings.asked, 4);
  strings.names_prefix = "three ";
  strings.now = 0;  // no promise: asked at every search
  EXPECT_EQ(manager.currenciesForString("three", kNoLimit, {}).size(), 2U);
  strings.names_prefix = "four ";
  EXPECT_EQ(manager.currenciesForString("four", kNoLimit, {}).size(), 2U);
  EXPECT_EQ(strings.asked, 8);
}

TEST(CurrencySearch, FourThreadsWhileTheLanguageChanges_EachSeeOneOfThem) {
  TestCatalogue catalogue({"USD", "EUR", "JPY"});
  TableStrings strings;
  strings.setTable({{"JPY", "Yen"}});
  catalogue.desktop.platform.strings = &strings;
  auto& manager = catalogue.manager();
  // ICU reads its tables at their first use, by a lock that the thread sanitizer does not see.
  EXPECT_TRUE(manager.currenciesForString("円é", kNoLimit, {}).empty());
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 200; ++i) {
        const auto yen = manager.currenciesForString("en", kNoLimit, {}).size();
        const auto dollars = manager.currenciesForString("usd", kNoLimit, {}).size();
        if (yen > 1 || dollars != 1) ++wrong;
        if (t == 0 && i % 20 == 0) strings.setTable({{"JPY", i % 40 == 0 ? "円" : "Yen é"}});
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST(CurrencySearch, RealCatalogue_IsFoundByItsNamesInEachLanguage) {
  VirtualPlatform desktop;
  CurrencyNames names;
  desktop.platform.strings = &names;
  const CurrencyManager manager(desktop.platform);
  struct Case {
    const char *language, *query, *first;
  };
  const Case cases[] = {
      {"en", "japanese yen", "JPY"}, {"en", "bitcoin c", "BCH"},   {"de", "schweizer", "CHF"},
      {"de", "ISLÄNDISCHE", "ISK"},  {"ja", "日本円", "JPY"},      {"ja", "ト\u3099ル", "USD"},
      {"ar", "ين ياباني", "JPY"},    {"hi", "भारतीय रुपया", "INR"}, {"hi", "bitcoin", "BCH"},
  };
  for (const auto& [language, query, first] : cases) {
    names.setLanguage(language);
    const auto found = manager.currenciesForString(query, kNoLimit, {});
    ASSERT_FALSE(found.empty()) << query;
    EXPECT_EQ(found.front()->code(), first) << query;
  }
}

}  // namespace
}  // namespace fexora::test
