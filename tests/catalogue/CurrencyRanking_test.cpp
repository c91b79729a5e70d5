#include "fexora/catalogue/CurrencyRanking.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/catalogue/OneSlip.h"

#include "tests/support/TestCatalogue.h"

namespace fexora::test {
namespace {

using Codes = std::vector<std::string>;

Codes codes(const std::vector<CurrencyRef>& currencies) {
  Codes list;
  for (const CurrencyRef& currency : currencies) list.push_back(currency->code());
  return list;
}

TEST(CurrencyRanking, RealCatalogue_FindsWhatPeopleType) {
  VirtualPlatform desktop;
  CurrencyNames names;
  desktop.platform.strings = &names;
  const CurrencyManager manager(desktop.platform);
  struct Case {
    const char* language;
    const char* typed;
    Codes first;
  };
  for (const auto& [language, typed, first] : std::vector<Case>{
           {"en", "usd", {"USD", "USDC"}},
           {"en", " €", {"EUR"}},
           {"en", "$", {"USD", "AUD", "CAD", "HKD", "SGD", "NZD"}},
           {"en", "kr", {"SEK", "NOK", "DKK", "ISK", "EEK", "KRW"}},
           {"en", "円", {"JPY"}},
           {"en", "dolar", {"USD", "AUD", "CAD", "HKD", "SGD", "NZD"}},
           {"en", "rouble", {"RUB", "BYN"}},
           {"en", "switz", {"CHF"}},
           {"en", "swtizerland", {"CHF"}},
           {"en", "Deutschland", {"EUR", "DEM"}},
           {"en", "uk", {"GBP", "UAH"}},
           {"en", "Niger", {"XOF", "NGN"}},
           {"en", "won", {"KRW", "KPW"}},
           {"en", "bitcoin", {"BTC", "BCH"}},
           {"de", "dollars", {"USD", "AUD"}},
           {"en", "usa", {"USD"}},
           {"en", "turkey", {"TRY", "TRL"}},
           {"en", "dollar new", {"NZD", "TWD"}},
           {"en", "ZLOTY", {"PLN"}},
           {"en", "paanga", {"TOP"}},
           {"en", "cote d’ivoire", {"XOF"}},
           {"de", "Deutschland", {"EUR", "DEM"}},
           {"de", "oesterreich", {"EUR", "ATS"}},
           {"de", "osterreich", {"EUR", "ATS"}},
           {"ja", "スイス", {"CHF"}},
           {"ja", "switz", {"CHF"}},
           {"ar", "الِيَابان", {"JPY"}},
           {"el", "ελβετια", {"CHF"}},
           {"ru", "швейцраский", {"CHF"}},
           {"en", "", {}},
           {"en", " \t", {}},
           {"en", "–'", {}},
           {"en", "qqqq", {}},
       }) {
    names.setLanguage(language);
    Codes found = codes(manager.rankedCurrencies(typed, 1000));
    if (!first.empty() && found.size() > first.size()) found.resize(first.size());
    EXPECT_EQ(found, first) << language << ' ' << typed;
  }
}

TEST(CurrencyRanking, Ranks_StandInOrderAndTheCatalogueWithin) {
  TestCatalogue catalogue({"QQ8", "QQ7", "NODY", "ANODX", "NODX", "QQ5", "QQ4", "NOD", "NOD"});
  catalogue.desktop.strings.setTable(
      {{"QQ8", "Old Nxod"}, {"QQ7", "Panodia"}, {"QQ5", "Old nòdia"}, {"QQ4", "NODIA old"}});
  auto& manager = catalogue.manager();
  EXPECT_EQ(codes(manager.rankedCurrencies("nod", 100)),
            (Codes{"NOD", "NOD", "NODY", "NODX", "QQ4", "QQ5", "QQ7", "ANODX"}));
  EXPECT_EQ(codes(manager.rankedCurrencies("nodx", 100)),
            (Codes{"NODX", "ANODX", "NODY", "QQ5", "QQ4", "NOD", "NOD"}));
  EXPECT_EQ(codes(manager.rankedCurrencies("nodi", 100)),
            (Codes{"QQ4", "QQ5", "QQ7", "NODY", "NODX", "NOD", "NOD"}));
  EXPECT_EQ(codes(manager.rankedCurrencies("old nodia", 100)), (Codes{"QQ5", "QQ4"}));
  const auto all = manager.rankedCurrencies("nod", 100);
  const auto other = Currency::make("NOD");
  EXPECT_EQ(codes(manager.rankedCurrencies("nod", 2, {other, nullptr, Currency::make()})),
            (Codes{"NODY", "NODX"}));
  EXPECT_TRUE(manager.rankedCurrencies("nod", 0).empty());

  CurrencyFacts row;
  row.code = "QQ8";
  row.signs = WordList("Nod$ ₦ød");
  row.regions = WordList("CH");
  ASSERT_TRUE(addCurrencyFacts({&row, 1}));
  EXPECT_EQ(codes(manager.rankedCurrencies("nod$", 100)).at(0), "QQ8");
  EXPECT_EQ(codes(manager.rankedCurrencies("Schweiz", 100)), (Codes{"QQ8"}));
  catalogue.desktop.strings.setTable({{"QQ7", "Schweizer"}});
  EXPECT_EQ(codes(manager.rankedCurrencies("Schweiz", 100)), (Codes{"QQ8", "QQ7"}));
}

TEST(CurrencyRanking, OneSlip_IsOneLetterInAnyScript) {
  for (const char* typed : {"dolar", "dolllar", "dopllar", "dillar", "odllar", "ollar", "adollar",
                            "dol", "dollaar", "dollars"}) {
    EXPECT_TRUE(beginsButForOneSlip("dollar", typed)) << typed;
  }
  for (const char* typed : {"dlr", "doalr", "daller s", "dloalr", "lolar", "dollarsx"}) {
    EXPECT_FALSE(beginsButForOneSlip("dollar", typed)) << typed;
  }
  // The first bytes of the letters are the same.
  EXPECT_TRUE(beginsButForOneSlip("рубль", "рбль"));
  EXPECT_TRUE(beginsButForOneSlip("рубль", "рбуль"));
  EXPECT_TRUE(beginsButForOneSlip("рубль", "ртбль"));
  EXPECT_FALSE(beginsButForOneSlip("рубль", "рттль"));
}

TEST(CurrencyRanking, ThreadsWhileTheLanguageChanges_EachSeeOneOfThem) {
  TestCatalogue catalogue({"USD", "JPY"});
  CurrencyNames names;
  catalogue.desktop.platform.strings = &names;
  auto& manager = catalogue.manager();
  // ICU reads its tables at their first use, by a lock that the thread sanitizer does not see.
  EXPECT_EQ(codes(manager.rankedCurrencies("japan", 9)), Codes{"JPY"});
  std::vector<std::thread> threads;
  std::vector<int> wrong(4);
  for (std::size_t t = 0; t < wrong.size(); ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 50; ++i) {
        if (codes(manager.rankedCurrencies("japan", 9)) != Codes{"JPY"}) ++wrong[t];
        if (t == 0 && i % 10 == 0) names.setLanguage(i % 20 == 0 ? "de" : "fr");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(wrong.size()));
}

// Counts who asks, and holds every thread but the one that made it until it is opened.
class HeldStrings final : public HostStrings {
 public:
  std::optional<std::string> string(std::string_view key) override {
    if (std::this_thread::get_id() == owner_) {
      ++asked;
    } else {
      ++askedElsewhere;
      isOpen.wait(false);
    }
    return "name of " + std::string(key);
  }
  std::uint64_t generation() override { return 1; }

  int asked = 0;
  std::atomic<int> askedElsewhere = 0;
  std::atomic<bool> isOpen = false;

 private:
  const std::thread::id owner_ = std::this_thread::get_id();
};

TEST(CurrencyRanking, PreparedSearch_IsMadeOnAThreadThatOnlyTheEndWaitsFor) {
  for (const bool searchesMeanwhile : {true, false}) {
    HeldStrings names;
    {
      TestCatalogue catalogue({"USD", "JPY"});
      catalogue.desktop.platform.strings = &names;
      auto& manager = catalogue.manager();
      manager.prepareSearch();
      manager.prepareSearch();
      if (searchesMeanwhile) {
        EXPECT_EQ(codes(manager.rankedCurrencies("name of jpy", 9)), Codes{"JPY"});
      }
      names.isOpen = true;
      names.isOpen.notify_all();
    }
    // The plain search asks for each name once, the ranked one twice, unless its keys are there.
    EXPECT_EQ(names.asked, searchesMeanwhile ? 4 : 0);
    EXPECT_EQ(names.askedElsewhere, searchesMeanwhile ? 2 : 6);
  }
}

}  // namespace
}  // namespace fexora::test
