// Fixed cases of the search; fuzz/search.cpp compares it with a plain one on catalogues of any
// kind.
#include "fexora/catalogue/CurrencySearch.h"

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/TestCatalogue.h"
#include "tests/support/Words.h"

namespace fexora::test {
namespace {

constexpr std::int64_t kNoLimit = 1000;

using Names = std::map<std::string, std::string, std::less<>>;

struct Search : TestCatalogue {
  explicit Search(const std::string& codes, Names names = {}) : TestCatalogue(words(codes)) {
    desktop.strings.setTable(std::move(names));
  }

  // The codes that are found, each after a space.
  std::string operator()(std::string_view query, std::int64_t limit = kNoLimit,
                         const std::vector<CurrencyRef>& exclude = {}) {
    std::string codes;
    for (const CurrencyRef& found : manager().currenciesForString(query, limit, exclude)) {
      codes += " " + found->code();
    }
    return codes;
  }
};

TEST(CurrencySearch, ExactCodeFirst_ThenCatalogueOrder) {
  Search search("AUD EURC USD USDT EUR", {{"AUD", "Australian Dollar"},
                                          {"USD", "US Dollar"},
                                          {"USDT", "Tether, a usd coin"},
                                          {"EUR", "Euro"}});
  for (const char* query : {"usd", "USD", "uSd"}) EXPECT_EQ(search(query), " USD USDT");
  EXPECT_EQ(search("eur"), " EUR EURC");
  EXPECT_EQ(search("us"), " AUD USD USDT");
  EXPECT_EQ(search(" dollar"), " AUD USD");
  EXPECT_EQ(search("dollar "), "");
  // The limit is the starting count: the first record, AUD, does not count and ends the walk.
  EXPECT_EQ(search("eur", 1), " EUR");
  EXPECT_EQ(search(""), "");
  EXPECT_EQ(search("", 0), "");
}

TEST(CurrencySearch, Limit_CountsMatchesAndNotResults) {
  Search search("EUR EURA EURB EURC EURD");
  const auto other = Currency::make("EUR");
  EXPECT_EQ(search("eur", 3), " EUR EURA EURB");
  EXPECT_EQ(search("eur", 1, {other}), "");
  EXPECT_EQ(search("eur", 3, {other, nullptr, Currency::make(), Currency::make("eura")}),
            " EURA EURB");
  // EUR, the first, is given already and does not count again, so a limit of one ends there.
  EXPECT_EQ(search("eur", 1), " EUR");
  for (const int none : {0, -1}) EXPECT_EQ(search("eur", none), " EUR EURA EURB EURC EURD");
  EXPECT_EQ(search("eur", 0, {other}), " EURA EURB EURC EURD");
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
  Search search("A B C D ÉTÉ",
                {{"A", "caf\u00E9"}, {"B", "cafe\u0301"}, {"C", "각"}, {"D", "👩\u200D👧"}});
  for (const char* part : {"e", "\u0301", "가", "👩"}) EXPECT_EQ(search(part), "") << part;
  for (const char* query : {"É", "E\u0301"}) EXPECT_EQ(search(query), " A B ÉTÉ");
  EXPECT_EQ(search("f"), " A B");
  EXPECT_EQ(search("👩\u200D👧"), " D");
  EXPECT_EQ(search("e\u0301te\u0301"), " ÉTÉ");
}

class CountingStrings final : public HostStrings {
 public:
  std::optional<std::string> string(std::string_view key) override {
    ++asked;
    return prefix + std::string(key);
  }
  std::uint64_t generation() override { return now; }

  int asked = 0;
  std::uint64_t now = 0;
  std::string prefix;
};

TEST(CurrencySearch, Keys_AreKeptForOneGenerationOfStrings) {
  Search search("USD EUR");
  CountingStrings strings;
  search.desktop.platform.strings = &strings;
  // Of generation zero is what promises nothing: that is asked at every search.
  for (const auto& [generation, prefix, asked] :
       {std::tuple(1U, "one ", 2), std::tuple(1U, "one ", 2), std::tuple(2U, "two ", 4),
        std::tuple(0U, "three ", 6), std::tuple(0U, "four ", 8)}) {
    strings.now = generation;
    strings.prefix = prefix;
    EXPECT_EQ(search(prefix), " USD EUR");
    EXPECT_EQ(strings.asked, asked);
  }
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

}  // namespace
}  // namespace fexora::test
