// The eight settings and the cached data.
#include "fexora/store/StoreManager.h"

#include <gtest/gtest.h>

#include "fexora/fexora.h"

#include "tests/support/StoreWorld.h"

namespace fexora {
namespace {

class Store : public testing::Test, protected test::StoreWorld {};

const Dictionary kDefaults{{"Fraction", 3},
                           {"Mode", 0},
                           {"Seporate", true},
                           {"NamingInWidget", 0},
                           {"NumberOfCurrenciesInWidget", 10},
                           {"TodayCurrencies", Array{}},
                           {"TodayConversionMode", 0},
                           {"TodayRelativeCurrency", Dictionary{{"code", "USD"}}}};

// What the store's accessors answer, in the file's form.
Dictionary settingsOf(const StoreManager& store) {
  Array today;
  for (const auto& currency : store.todayCurrencies()) {
    today.emplace_back(Dictionary{{"code", currency->code()}});
  }
  return {{"Fraction", store.fraction()},
          {"Mode", static_cast<std::int64_t>(store.mode())},
          {"Seporate", store.seporate()},
          {"NamingInWidget", static_cast<std::int64_t>(store.namingInWidget())},
          {"NumberOfCurrenciesInWidget", store.numberOfCurrenciesInWidget()},
          {"TodayCurrencies", today},
          {"TodayConversionMode", static_cast<std::int64_t>(store.todayConversionMode())},
          {"TodayRelativeCurrency", Dictionary{{"code", store.todayRelativeCurrency()->code()}}}};
}

TEST_F(Store, NoFile_GivesTheDefaultsAndWritesNone) {
  start();
  EXPECT_EQ(settingsOf(*store), kDefaults);
  EXPECT_TRUE(store->canSave());
  EXPECT_TRUE(content().empty());
}

TEST_F(Store, KeptValues_AreTakenAsTheyAreUnlessTheyAreOdd) {
  struct Setting {
    const char* key;
    Value kept;
    Value odd;
  };
  const Dictionary euro{{"code", "EUR"}};
  const Setting settings[] = {{"Fraction", -2, 0},
                              {"Mode", 1, 2},
                              {"Seporate", false, 0},
                              {"NamingInWidget", 1, "1"},
                              {"NumberOfCurrenciesInWidget", 250, 2.5},
                              {"TodayCurrencies", Array{euro, euro}, Array{euro, "GBP"}},
                              {"TodayConversionMode", 1, true},
                              {"TodayRelativeCurrency", euro, "EUR"}};
  Dictionary kept;
  Dictionary odd;
  for (const auto& setting : settings) {
    kept.set(setting.key, setting.kept);
    odd.set(setting.key, setting.odd);
  }
  write(kept);
  EXPECT_EQ(settingsOf(start()), kept);
  write(odd);
  EXPECT_EQ(settingsOf(start()), kDefaults);
  EXPECT_EQ(content(), odd) << "defaults are not written back";
}

TEST_F(Store, OneSetting_WritesAllEight) {
  start().setMode(StyleMode::dark);
  Dictionary expected = kDefaults;
  expected.set("Mode", 1);
  EXPECT_EQ(content(), expected);
  EXPECT_EQ(content().find("Seporate")->number()->kind(), NSNumber::Kind::boolean);
  store->setTodayRelativeCurrency(nullptr);
  store->setTodayCurrencies({Currency::make("EUR"), nullptr});
  expected.set("TodayCurrencies", Array{Dictionary{{"code", "EUR"}}});
  EXPECT_EQ(content(), expected);
}

TEST_F(Store, CanSave_SwallowsOneSaveOnly) {
  start().setCanSave(false);
  store->setFraction(5);
  EXPECT_TRUE(content().empty());
  EXPECT_TRUE(store->canSave());
  EXPECT_EQ(store->fraction(), 5);
  store->setFraction(5);
  EXPECT_EQ(fraction(), 5);
}

TEST_F(Store, FreshStore_SelectsDollarAndEuroOfTheCatalogue) {
  start();
  EXPECT_FALSE(store->loadUSDRates().has_value());
  EXPECT_EQ(store->loadSourceCurrency(), nullptr);
  EXPECT_EQ(store->loadCurrencies(), (std::vector{currencyManager().currencyForCode("USD"),
                                                  currencyManager().currencyForCode("EUR")}));
  store->saveCurrencies({});
  EXPECT_TRUE(store->loadCurrencies().empty());
  store->setUd({{"UDCurrencies", "EUR"}, {"UDUSDRates", 5}, {"UDSourceCurrency", Array{}}});
  EXPECT_EQ(store->loadCurrencies().size(), 2U);
  EXPECT_FALSE(store->loadUSDRates().has_value());
  EXPECT_EQ(store->loadSourceCurrency(), nullptr);
}

TEST_F(Store, WithoutSync_TheNextSaveOfAnyKindWrites) {
  start().saveUSDRates({}, false);
  EXPECT_TRUE(content().empty());
  EXPECT_EQ(store->ud().find(kUDUSDRatesUpdated)->date()->secondsSince1970(),
            desktop.loop.wallSeconds());
  EXPECT_EQ(store->loadUSDRates(), std::vector<USDRateRef>());
  store->saveUSDRates({USDRate::make(0.9, "EUR"), nullptr, USDRate::make(1.0 / 3, "GBP")}, false);
  store->saveSourceCurrency(Currency::make("EUR"), 12.5, false);
  store->setFraction(4);
  EXPECT_EQ(content().find(kUDUSDRates)->array()->size(), 2U);

  start();
  EXPECT_EQ((*store->loadUSDRates())[1]->rate().doubleValue(), 1.0 / 3);
  EXPECT_EQ(store->loadSourceCurrency()->amount().doubleValue(), 12.5);
  EXPECT_EQ(store->loadSourceCurrency()->currency()->code(), "EUR");
  // With sync it is written before the return, its number in its kind.
  const auto currency = Currency::make("GBP");
  EXPECT_EQ(store->saveSourceCurrency(currency, 7, true)->currency(), currency);
  const Dictionary saved = content();
  const Value* amount = saved.find(kUDSourceCurrency)->dictionary()->find("amount");
  EXPECT_EQ(amount->number()->kind(), NSNumber::Kind::integer);
}

TEST_F(Store, Bundle_SeedsOnlyAStoreWithoutRates) {
  start().saveUSDRates({}, false);
  EXPECT_TRUE(seedBundledRates(*store));
  EXPECT_TRUE(content().empty()) << "seeding writes nothing";
  EXPECT_EQ(store->ud().find(kUDUSDRatesUpdated)->date()->isoText(), "2026-09-29T00:00:00Z");
  EXPECT_EQ(store->loadUSDRates()->size(), 339U);
  EXPECT_FALSE(seedBundledRates(*store));
  store->saveUSDRates({USDRate::make(2, "EUR")}, false);
  EXPECT_FALSE(seedBundledRates(*store));
  EXPECT_EQ(store->loadUSDRates()->size(), 1U);
}

}  // namespace
}  // namespace fexora
