// The eight settings and the cached data.
#include "fexora/store/StoreManager.h"

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

class Store : public testing::Test {
 protected:
  Dictionary file() const {
    return *readPropertyList(test::readFile(container.file())).value.dictionary();
  }
  void startWith(const Dictionary& content) {
    test::writeFile(container.file(), writePropertyList(content).bytes);
  }

  test::TestContainer container;
  test::VirtualPlatform desktop;
};

TEST_F(Store, NoFile_GivesTheDefaultsAndWritesNone) {
  const StoreManager store(desktop.platform);
  EXPECT_EQ(store.fraction(), 3);
  EXPECT_EQ(store.mode(), StyleMode::light);
  EXPECT_TRUE(store.seporate());
  EXPECT_EQ(store.namingInWidget(), Naming::names);
  EXPECT_EQ(store.numberOfCurrenciesInWidget(), 10);
  EXPECT_TRUE(store.todayCurrencies().empty());
  EXPECT_EQ(store.todayConversionMode(), TodayConversionMode::linear);
  EXPECT_EQ(store.todayRelativeCurrency()->code(), "USD");
  EXPECT_TRUE(store.canSave());
  EXPECT_TRUE(file().empty());
}

TEST_F(Store, OddValues_GiveTheDefaults) {
  startWith({{"Fraction", 0},
             {"Mode", 2},
             {"Seporate", 0},
             {"NamingInWidget", "1"},
             {"NumberOfCurrenciesInWidget", 2.5},
             {"TodayCurrencies", Array{Dictionary{{"code", "EUR"}}, "GBP"}},
             {"TodayConversionMode", true},
             {"TodayRelativeCurrency", "EUR"}});
  const StoreManager store(desktop.platform);
  EXPECT_EQ(store.fraction(), 3);
  EXPECT_EQ(store.mode(), StyleMode::light);
  EXPECT_TRUE(store.seporate());
  EXPECT_EQ(store.namingInWidget(), Naming::names);
  EXPECT_EQ(store.numberOfCurrenciesInWidget(), 10);
  EXPECT_TRUE(store.todayCurrencies().empty());
  EXPECT_EQ(store.todayConversionMode(), TodayConversionMode::linear);
  EXPECT_EQ(store.todayRelativeCurrency()->code(), "USD");
  EXPECT_EQ(file().size(), 8U) << "defaults are not written back";
}

TEST_F(Store, KeptValues_AreTakenAsTheyAre) {
  startWith({{"Fraction", -2},
             {"Mode", 1},
             {"Seporate", false},
             {"NamingInWidget", 1},
             {"NumberOfCurrenciesInWidget", 250},
             {"TodayCurrencies", Array{Dictionary{{"code", "EUR"}}, Dictionary{{"code", "GBP"}}}},
             {"TodayConversionMode", 1},
             {"TodayRelativeCurrency", Dictionary{{"code", "JPY"}}}});
  const StoreManager store(desktop.platform);
  EXPECT_EQ(store.fraction(), -2);
  EXPECT_EQ(store.mode(), StyleMode::dark);
  EXPECT_FALSE(store.seporate());
  EXPECT_EQ(store.namingInWidget(), Naming::codes);
  EXPECT_EQ(store.numberOfCurrenciesInWidget(), 250);
  ASSERT_EQ(store.todayCurrencies().size(), 2U);
  EXPECT_EQ(store.todayCurrencies()[1]->code(), "GBP");
  EXPECT_EQ(store.todayConversionMode(), TodayConversionMode::rate);
  EXPECT_EQ(store.todayRelativeCurrency()->code(), "JPY");
}

TEST_F(Store, OneSetting_WritesAllEight) {
  StoreManager store(desktop.platform);
  store.setMode(StyleMode::dark);
  EXPECT_EQ(file(), (Dictionary{{"Fraction", 3},
                                {"Mode", 1},
                                {"Seporate", true},
                                {"NamingInWidget", 0},
                                {"NumberOfCurrenciesInWidget", 10},
                                {"TodayCurrencies", Array{}},
                                {"TodayConversionMode", 0},
                                {"TodayRelativeCurrency", Dictionary{{"code", "USD"}}}}));
  EXPECT_EQ(file().find("Seporate")->number()->kind(), NSNumber::Kind::boolean);
  store.setTodayRelativeCurrency(nullptr);
  store.setTodayCurrencies({Currency::make("EUR"), nullptr});
  EXPECT_EQ(store.todayRelativeCurrency()->code(), "USD");
  EXPECT_EQ(file().find("TodayCurrencies")->array()->size(), 1U);
}

TEST_F(Store, CanSave_SwallowsOneSaveOnly) {
  StoreManager store(desktop.platform);
  store.setCanSave(false);
  store.setFraction(5);
  EXPECT_TRUE(file().empty());
  EXPECT_TRUE(store.canSave());
  EXPECT_EQ(store.fraction(), 5);
  store.setFraction(5);
  EXPECT_EQ(file().find("Fraction")->number()->intValue(), 5);
}

TEST_F(Store, FreshStore_SelectsDollarAndEuroOfTheCatalogue) {
  StoreManager store(desktop.platform);
  EXPECT_FALSE(store.loadUSDRates().has_value());
  EXPECT_EQ(store.loadSourceCurrency(), nullptr);
  const auto selection = store.loadCurrencies();
  ASSERT_EQ(selection.size(), 2U);
  EXPECT_EQ(selection[0], currencyManager().currencyForCode("USD"));
  EXPECT_EQ(selection[1], currencyManager().currencyForCode("EUR"));
  store.saveCurrencies({});
  EXPECT_TRUE(store.loadCurrencies().empty());
  store.setUd({{"UDCurrencies", "EUR"}, {"UDUSDRates", 5}, {"UDSourceCurrency", Array{}}});
  EXPECT_EQ(store.loadCurrencies().size(), 2U);
  EXPECT_FALSE(store.loadUSDRates().has_value());
  EXPECT_EQ(store.loadSourceCurrency(), nullptr);
}

TEST_F(Store, WithoutSync_TheNextSaveOfAnyKindWrites) {
  StoreManager store(desktop.platform);
  store.saveUSDRates({}, false);
  EXPECT_TRUE(file().empty());
  EXPECT_EQ(store.ud().find(kUDUSDRatesUpdated)->date()->secondsSince1970(),
            desktop.loop.wallSeconds());
  ASSERT_TRUE(store.loadUSDRates().has_value());
  EXPECT_TRUE(store.loadUSDRates()->empty());
  store.saveUSDRates({USDRate::make(0.9, "EUR"), nullptr, USDRate::make(1.0 / 3, "GBP")}, false);
  store.saveSourceCurrency(Currency::make("EUR"), 12.5, false);
  store.setFraction(4);
  EXPECT_EQ(file().find(kUDUSDRates)->array()->size(), 2U);

  // A second store on the folder, as after a restart.
  const StoreManager restarted(desktop.platform);
  const auto rates = restarted.loadUSDRates();
  EXPECT_EQ((*rates)[1]->rate().doubleValue(), 1.0 / 3);
  EXPECT_EQ(restarted.loadSourceCurrency()->amount().doubleValue(), 12.5);
  EXPECT_EQ(restarted.loadSourceCurrency()->currency()->code(), "EUR");
}

TEST_F(Store, SourceWithSync_IsWrittenBeforeTheReturn) {
  StoreManager store(desktop.platform);
  const auto currency = Currency::make("EUR");
  const auto source = store.saveSourceCurrency(currency, 7, true);
  EXPECT_EQ(source->currency(), currency);
  const Dictionary saved = file();
  const Value* amount = saved.find(kUDSourceCurrency)->dictionary()->find("amount");
  EXPECT_EQ(amount->number()->kind(), NSNumber::Kind::integer);
}

TEST_F(Store, Bundle_SeedsOnlyAStoreWithoutRates) {
  StoreManager store(desktop.platform);
  store.saveUSDRates({}, false);
  EXPECT_TRUE(seedBundledRates(store));
  EXPECT_TRUE(file().empty()) << "seeding writes nothing";
  EXPECT_EQ(store.ud().find(kUDUSDRatesUpdated)->date()->isoText(), "2026-09-29T00:00:00Z");
  EXPECT_EQ(store.loadUSDRates()->size(), 339U);
  EXPECT_FALSE(seedBundledRates(store));
  store.saveUSDRates({USDRate::make(2, "EUR")}, false);
  EXPECT_FALSE(seedBundledRates(store));
  EXPECT_EQ(store.loadUSDRates()->size(), 1U);
}

}  // namespace
}  // namespace fexora
