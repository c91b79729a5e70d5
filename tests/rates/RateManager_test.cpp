// Loading, converting and looking up, on a virtual clock and a scripted network.
#include "fexora/rates/RateManager.h"

#include <filesystem>
#include <limits>
#include <new>
#include <thread>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

// What `complete` was told, in order: "cache", "service" or the error's kind.
using Told = std::vector<std::string>;

Value answer(const Array& rates) {
  return Dictionary{{"serviceMessage", "hello"}, {"rates", rates}};
}

Dictionary rate(const char* code, Value value) {
  return {{"code", code}, {"rate", value}};
}

ResponseError refused() {
  return {ResponseError::Kind::noConnection, kTrelbyRatesURL, "refused", 0};
}

class Loading : public testing::Test {
 protected:
  RateManager::Completion tell() {
    return [this](bool fromCache, const ResponseError* error) {
      told.emplace_back(error != nullptr ? text(error->kind) : fromCache ? "cache" : "service");
    };
  }
  std::optional<Rate> pair(const char* src, const char* dst) const {
    return rates.rateForSourceCurrency(Currency::make(src), Currency::make(dst));
  }

  test::TestContainer container;
  test::VirtualPlatform desktop;
  StoreManager store{desktop.platform};
  RateManager rates{desktop.platform, nullptr, &store};
  Told told;
};

TEST_F(Loading, EmptyStore_OneRequestThenTheService) {
  rates.loadRates(std::nullopt, tell());
  EXPECT_TRUE(told.empty());
  ASSERT_EQ(desktop.transport.requests.size(), 1U);
  EXPECT_EQ(desktop.transport.requests[0].address, kTrelbyRatesURL);
  EXPECT_EQ(rates.lastUpdate()->secondsSince1970(), desktop.loop.wallSeconds());
  EXPECT_EQ(desktop.log.count("Time difference"), 0);
  desktop.transport.answer(answer({rate("EUR", 0.9), rate("no such code", 5), rate("GBP", "0.8")}));
  EXPECT_EQ(told, Told{"service"});
  EXPECT_EQ(rates.serviceMessage(), "hello");
  EXPECT_EQ(store.loadUSDRates()->size(), 2U);
  EXPECT_EQ(rates.updated()->secondsSince1970(), desktop.loop.wallSeconds());
  EXPECT_EQ(pair("EUR", "GBP")->rate().doubleValue(), 0.8 / 0.9);
}

TEST_F(Loading, SecondCallAfterTenSeconds_StoreOnly) {
  store.saveUSDRates({USDRate::make(0.9, "EUR")}, false);
  rates.loadRates(std::nullopt, tell());
  desktop.loop.advance(10);
  rates.loadRates(std::nullopt, tell());
  EXPECT_EQ(told, (Told{"cache", "cache"}));
  EXPECT_EQ(desktop.transport.requests.size(), 1U);
  EXPECT_EQ(desktop.log.count("Time difference between requests: 10.000000sec"), 1);
  desktop.loop.advance(20);
  rates.loadRates(std::nullopt, tell());
  EXPECT_EQ(desktop.transport.requests.size(), 2U) << "exactly thirty seconds send";
}

TEST_F(Loading, FailedRequest_KeepsEverythingAndHoldsBackTheNext) {
  store.saveUSDRates({USDRate::make(0.9, "EUR")}, false);
  rates.loadRates(std::nullopt, tell());
  const auto before = store.ud();
  desktop.transport.answer(std::nullopt, refused());
  EXPECT_EQ(told, (Told{"cache", "no connection"}));
  EXPECT_EQ(store.ud(), before);
  EXPECT_EQ(rates.serviceMessage(), "");
  EXPECT_TRUE(pair("USD", "EUR").has_value());
  desktop.loop.advance(29);
  rates.loadRates(std::nullopt, tell());
  EXPECT_TRUE(desktop.transport.requests.empty());
}

TEST_F(Loading, ErrorBesideAResponse_AndNeitherOfBoth) {
  rates.loadRates(std::nullopt, tell());
  desktop.transport.answer(answer({rate("EUR", 0.9)}), refused());
  EXPECT_EQ(told, Told{"service"});
  desktop.loop.advance(30);
  rates.loadRates(std::nullopt, tell());
  desktop.transport.answer(std::nullopt, std::nullopt);
  EXPECT_EQ(told, (Told{"service", "cache"}));
  desktop.loop.advance(30);
  rates.loadRates(std::nullopt, tell());
  desktop.transport.answer(Value(Array{}));
  EXPECT_EQ(told.back(), "not an object");
}

TEST_F(Loading, Cache_AnswersFromMemoryAlone) {
  rates.loadRates(std::nullopt, true, true, tell());
  EXPECT_EQ(desktop.transport.requests.size(), 1U) << "no rates in memory: as without the cache";
  desktop.transport.answer(answer({rate("EUR", 0.9), rate("GBP", 0.8)}));
  const auto last = rates.lastUpdate();
  desktop.loop.advance(60);
  store.setUd({});
  rates.loadRates(std::vector{Currency::make("EUR"), CurrencyRef()}, true, true, tell());
  EXPECT_EQ(told, (Told{"service", "cache"}));
  EXPECT_EQ(rates.lastUpdate(), last);
  EXPECT_TRUE(pair("USD", "EUR").has_value());
  EXPECT_FALSE(pair("USD", "GBP").has_value());
  rates.loadRates(std::vector<CurrencyRef>{}, true, true, {});
  EXPECT_FALSE(pair("USD", "EUR").has_value());
}

TEST_F(Loading, WithoutSync_TheFileWaits) {
  rates.loadRates(std::nullopt, false, false, tell());
  const std::string before = test::readFile(container.file());
  desktop.transport.answer(answer({rate("EUR", 0.9)}));
  EXPECT_EQ(test::readFile(container.file()), before);
  EXPECT_TRUE(rates.updated().has_value());
}

TEST_F(Loading, AnswerWithoutRates_EmptiesThem) {
  store.saveUSDRates({USDRate::make(0.9, "EUR")}, false);
  rates.loadRates(std::nullopt, tell());
  desktop.transport.answer(Value(Dictionary{}));
  EXPECT_EQ(told, (Told{"cache", "service"}));
  EXPECT_TRUE(store.loadUSDRates()->empty());
  EXPECT_FALSE(pair("USD", "EUR").has_value());
}

TEST_F(Loading, WallClockSetBack_CountsAsTooSoon) {
  rates.loadRates(std::nullopt, tell());
  desktop.loop.setWall(desktop.loop.wallSeconds() - 3600);
  rates.loadRates(std::nullopt, tell());
  EXPECT_EQ(desktop.transport.requests.size(), 1U);
  EXPECT_EQ(desktop.log.count("-3600.000000sec"), 1);
  rates.setLastUpdate(std::nullopt);
  rates.loadRates(std::nullopt, tell());
  EXPECT_EQ(desktop.transport.requests.size(), 2U);
}

TEST_F(Loading, ManagerGone_ItsAnswerChangesNothing) {
  auto other = std::make_unique<RateManager>(desktop.platform, nullptr, &store);
  other->loadRates(std::nullopt, tell());
  other.reset();
  desktop.transport.answer(answer({rate("EUR", 0.9)}));
  EXPECT_TRUE(told.empty());
  EXPECT_FALSE(store.loadUSDRates().has_value());
}

TEST_F(Loading, CompletionThatEndsItsManager_EndsTheCall) {
  store.saveUSDRates({USDRate::make(0.9, "EUR")}, false);
  auto other = std::make_unique<RateManager>(desktop.platform, nullptr, &store);
  RateManager& manager = *other;
  manager.loadRates(std::nullopt, [&](bool, const ResponseError*) { other.reset(); });
  EXPECT_EQ(other, nullptr);
  EXPECT_TRUE(desktop.transport.requests.empty());
}

TEST_F(Loading, CompletionThatThrows_IsSaidAndLoadingGoesOn) {
  store.saveUSDRates({USDRate::make(0.9, "EUR")}, false);
  rates.loadRates(std::nullopt, [](bool, const ResponseError*) { throw std::bad_alloc(); });
  ASSERT_EQ(desktop.transport.requests.size(), 1U);
  desktop.transport.answer(answer({rate("EUR", 0.8)}));
  EXPECT_EQ(desktop.log.count("A completion of loadRates threw: std::bad_alloc"), 2);
  EXPECT_EQ(desktop.log.count(kOutOfMemory), 0) << "the host's, not the library's";
  EXPECT_EQ(pair("USD", "EUR")->rate().doubleValue(), 0.8);
}

TEST_F(Loading, LastUpdateThatIsNoNumber_AndAnotherAddress) {
  rates.setLastUpdate(Date(std::numeric_limits<double>::quiet_NaN()));
  rates.setRatesURL("http://127.0.0.1/other.json");
  rates.loadRates(std::nullopt, tell());
  ASSERT_EQ(desktop.transport.requests.size(), 1U);
  EXPECT_EQ(desktop.transport.requests[0].address, "http://127.0.0.1/other.json");
}

TEST_F(Loading, MembersByName) {
  EXPECT_EQ(rates.valueForKey("lastUpdate"), Value());
  EXPECT_TRUE(rates.setValueForKey("lastUpdate", Date(5)));
  EXPECT_EQ(rates.lastUpdate(), Date(5));
  EXPECT_TRUE(rates.setValueForKey("serviceMessage", "x"));
  EXPECT_EQ(rates.valueForKey("serviceMessage"), Value("x"));
  EXPECT_EQ(rates.perform("tryLoadRatesFromQTXServer"), Value());
  EXPECT_TRUE(desktop.transport.requests.empty());
  EXPECT_EQ(rates.valueForKey("rates"), std::nullopt);
}

TEST_F(Loading, Convert_RecordsTheInputWhateverIsFound) {
  store.saveUSDRates({USDRate::make(0.9, "EUR"), USDRate::make(0.8, "GBP")}, false);
  auto [before, source] = rates.convertAmount(5, Currency::make("EUR"), false);
  EXPECT_TRUE(before.items().empty());
  EXPECT_EQ(store.loadSourceCurrency()->amount().intValue(), 5);
  rates.loadRates(std::vector{Currency::make("EUR"), Currency::make("GBP")}, tell());
  const auto plain = rates.convertAmount(100, Currency::make("EUR"), true).first;
  ASSERT_EQ(plain.items().size(), 2U);
  EXPECT_EQ(plain.items()[0].dstCurrency->code(), "USD");
  EXPECT_EQ(plain.items()[0].dstAmount.doubleValue(), 100 * (1 / 0.9));
  const auto inverted = rates.convertAmount(100, Currency::make("EUR"), true, true).first;
  EXPECT_EQ(inverted.items()[1].dstAmount.doubleValue(), 100 / (0.8 / 0.9));
  EXPECT_EQ(inverted.items()[1].srcCurrency->code(), "EUR");
  EXPECT_TRUE(rates.convertAmount(100, Currency::make("JPY"), false).first.items().empty());
  EXPECT_EQ(store.loadSourceCurrency()->currency()->code(), "JPY");
  EXPECT_TRUE(rates.convertAmount(1, nullptr, false).first.items().empty());
  EXPECT_FALSE(rates.rateForSourceCurrency(nullptr, nullptr).has_value());
}

TEST_F(Loading, ChangedCodes_AreLookedUpAnew) {
  CurrencyManager catalogue(desktop.platform);
  RateManager own(desktop.platform, &catalogue, &store);
  store.saveUSDRates({USDRate::make(0.9, "EUR"), USDRate::make(0.8, "GBP")}, false);
  own.loadRates(std::nullopt, {});
  const auto search = [&] { return catalogue.currenciesForString("NEW", 10, {}); };
  EXPECT_TRUE(search().empty());
  const CurrencyRef pound = catalogue.currencyForCode("GBP");
  pound->setCode("NEW");
  EXPECT_EQ(catalogue.currencyForCode("NEW"), pound);
  EXPECT_EQ(catalogue.currencyForCode("GBP"), nullptr);
  EXPECT_EQ(search(), std::vector{pound});
  own.loadRates(std::nullopt, true, true, {});
  EXPECT_FALSE(own.rateForSourceCurrency(Currency::make("USD"), pound).has_value());
  pound->setCode("GBP");
  own.loadRates(std::nullopt, true, true, {});
  EXPECT_TRUE(own.rateForSourceCurrency(Currency::make("USD"), pound).has_value());
}

TEST_F(Loading, CodesThatComeOften_GiveABoundedConversion) {
  std::vector<USDRateRef> list;
  for (int i = 0; i < 4000; ++i) list.push_back(USDRate::make(1 + i, i % 2 == 0 ? "EUR" : "GBP"));
  store.saveUSDRates(list, false);
  rates.loadRates(std::nullopt, {});
  const auto converted = rates.convertAmount(1, Currency::make("EUR"), false).first;
  EXPECT_EQ(converted.items().size(), limits::kConversionLines);
  EXPECT_EQ(desktop.log.count("A conversion has only its first 262144 lines"), 1);
}

TEST(SharedInstances, FirstUseByManyThreads_MakesOne) {
  const test::TestContainer container;
  std::vector<const void*> seen(8);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < seen.size(); ++i) {
    threads.emplace_back([&seen, i] {
      seen[i] = i % 2 == 0 ? static_cast<const void*>(&currencyManager())
                           : static_cast<const void*>(&rateManager());
      EXPECT_TRUE(currencyManager().hasCurrency("EUR"));
    });
  }
  for (auto& thread : threads) thread.join();
  for (std::size_t i = 2; i < seen.size(); ++i) EXPECT_EQ(seen[i], seen[i - 2]);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(container.path()), {}), 0)
      << "making the rate manager touches no store";
}

}  // namespace
}  // namespace fexora
