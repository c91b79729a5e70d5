// Loading, converting and looking up, on a virtual clock and a scripted network.
#include "fexora/rates/RateManager.h"

#include <cctype>
#include <filesystem>
#include <limits>
#include <new>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

Dictionary rate(const char* code, Value value) {
  return {{"code", code}, {"rate", value}};
}

Value answer(const Array& rates = {rate("EUR", 0.9), rate("no such code", 5), rate("GBP", "0.8")}) {
  return Dictionary{{"serviceMessage", "hello"}, {"rates", rates}};
}

struct World {
  World() {
    rates->setProgress([this](const Transfer::Progress& progress) {
      told += std::to_string(progress.received) + " of " +
              std::to_string(progress.total.value_or(0)) + ";";
    });
  }
  RateManager::Completion tell() {
    return [this](bool fromCache, const ResponseError* error) {
      told += error != nullptr ? text(error->kind) : fromCache ? "cache" : "service";
      told += ";";
    };
  }
  std::optional<Rate> pair(const char* src, const char* dst) const {
    return rates->rateForSourceCurrency(Currency::make(src), Currency::make(dst));
  }
  void keepEuro() { store->saveUSDRates({USDRate::make(0.9, "EUR")}, false); }
  // Steps: a number lets so many seconds pass, `back` sets the wall clock back by an hour.
  void play(const std::string& steps) {
    const ResponseError refused{ResponseError::Kind::noConnection, kTrelbyRatesURL, "refused", 0};
    std::istringstream all(steps);
    for (std::string step; all >> step;) {
      if (step == "kept") keepEuro();
      if (step == "load") rates->loadRates(std::nullopt, tell());
      if (step == "cached") rates->loadRates(std::nullopt, true, true, tell());
      if (step == "forget") rates->setLastUpdate(std::nullopt);
      if (step == "odd") rates->setLastUpdate(Date(std::numeric_limits<double>::quiet_NaN()));
      if (step == "gone") rates.reset();
      if (step == "back") desktop.loop.setWall(desktop.loop.wallSeconds() - 3600);
      if (step == "cancel") rates->cancelRequests();
      if (step == "half") tellHalf();
      if (step == "answer") desktop.transport.answer(answer());
      if (step == "empty") desktop.transport.answer(Value(Dictionary{}));
      if (step == "list") desktop.transport.answer(Value(Array{}));
      if (step == "refuse") desktop.transport.answer(std::nullopt, refused);
      if (step == "both") desktop.transport.answer(answer(), refused);
      if (step == "neither") desktop.transport.answer(std::nullopt, std::nullopt);
      if (std::isdigit(step[0]) != 0) desktop.loop.advance(std::stod(step));
    }
  }

  void tellHalf() {
    Transfer& transfer = *desktop.transport.requests.front().transfer;
    transfer.counts()->set(24, 48);
    transfer.tell();
  }

  test::TestContainer container;
  test::VirtualPlatform desktop;
  std::string told;  // "cache", "service", the error's kind, or how far it is
  std::unique_ptr<StoreManager> store = std::make_unique<StoreManager>(desktop.platform);
  std::unique_ptr<RateManager> rates =
      std::make_unique<RateManager>(desktop.platform, nullptr, store.get());
};

class Loading : public testing::Test, protected World {};

TEST_F(Loading, TellsAndSends) {
  struct Case {
    const char* steps;
    std::string told;
    std::size_t requests;               // that wait for an answer
    std::string kept;                   // the codes of the store's rates
    const char* line = "SAVE SUCCESS";  // of the log
  };
  const Case cases[] = {
      {"load", "", 1, ""},
      {"load answer", "service;", 0, "EURGBP"},
      // Sent again after thirty seconds, whatever became of it.
      {"kept load", "cache;", 1, "EUR"},
      {"kept load 10 load", "cache;cache;", 1, "EUR",
       "Time difference between requests: 10.000000sec"},
      {"kept load 10 load 20 load", "cache;cache;cache;", 2, "EUR"},
      {"kept load refuse", "cache;no connection;", 0, "EUR"},
      {"kept load refuse 29 load", "cache;no connection;cache;", 0, "EUR"},
      {"load back load", "", 1, "", "-3600.000000sec"},
      {"load back load forget load", "", 2, ""},
      {"odd load", "", 1, ""},
      // Odd answers.
      {"kept load empty", "cache;service;", 0, ""},
      {"load both", "service;", 0, "EURGBP"},
      {"load both 30 load neither", "service;cache;", 0, "EURGBP"},
      {"load list", "not an object;", 0, ""},
      {"load gone half answer", "", 0, ""},
      // Told on its way, and ended there.
      {"load half half answer", "24 of 48;service;", 0, "EURGBP"},
      {"load half cancel half cancel answer", "24 of 48;cancelled;", 0, ""},
      {"kept load forget load cancel answer refuse", "cache;cache;cancelled;cancelled;", 0, "EUR"},
      {"load answer cancel", "service;", 0, "EURGBP"},
      {"kept load cancel 30 load refuse answer", "cache;cache;cancelled;service;", 0, "EURGBP"},
      // From memory alone, once there are rates in it.
      {"cached", "", 1, ""},
      {"cached answer 60 cached", "service;cache;", 0, "EURGBP"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.steps);
    World now;
    now.play(one.steps);
    EXPECT_EQ(now.told, one.told);
    EXPECT_EQ(now.desktop.transport.requests.size(), one.requests);
    EXPECT_NE(now.desktop.log.count(one.line), 0);
    std::string kept;
    for (const auto& dollar : now.store->loadUSDRates().value_or(std::vector<USDRateRef>())) {
      kept += dollar->code();
    }
    EXPECT_EQ(kept, one.kept);
    EXPECT_EQ(now.rates != nullptr && now.pair("USD", "EUR").has_value(), !kept.empty());
  }
}

TEST_F(Loading, AnAnswer_IsTakenWhole) {
  play("load");
  EXPECT_EQ(desktop.transport.requests.at(0).address, kTrelbyRatesURL);
  EXPECT_EQ(rates->lastUpdate()->secondsSince1970(), desktop.loop.wallSeconds());
  EXPECT_EQ(desktop.log.count("Time difference"), 0);
  play("answer");
  EXPECT_EQ(rates->serviceMessage(), "hello");
  EXPECT_EQ(rates->updated()->secondsSince1970(), desktop.loop.wallSeconds());
  EXPECT_EQ(pair("EUR", "GBP")->rate().doubleValue(), 0.8 / 0.9);
  // Out of memory with another selection.
  const auto last = rates->lastUpdate();
  desktop.loop.advance(60);
  store->setUd({});
  rates->loadRates(std::vector{Currency::make("EUR"), CurrencyRef()}, true, true, tell());
  EXPECT_EQ(rates->lastUpdate(), last);
  EXPECT_TRUE(pair("USD", "EUR").has_value());
  EXPECT_FALSE(pair("USD", "GBP").has_value());
  rates->loadRates(std::vector<CurrencyRef>{}, true, true, {});
  EXPECT_FALSE(pair("USD", "EUR").has_value());
}

TEST_F(Loading, WithoutSync_TheFileWaits) {
  rates->setRatesURL("http://127.0.0.1/other.json");
  rates->loadRates(std::nullopt, false, false, tell());
  EXPECT_EQ(desktop.transport.requests.at(0).address, "http://127.0.0.1/other.json");
  const std::string before = test::readFile(container.file());
  play("answer");
  EXPECT_EQ(test::readFile(container.file()), before);
  EXPECT_TRUE(rates->updated().has_value());
}

TEST_F(Loading, CompletionThatEndsItsManager_EndsTheCall) {
  keepEuro();
  rates->loadRates(std::nullopt, [&](bool, const ResponseError*) { rates.reset(); });
  EXPECT_EQ(rates, nullptr);
  EXPECT_TRUE(desktop.transport.requests.empty());
}

TEST_F(Loading, CompletionThatThrows_IsSaidAndLoadingGoesOn) {
  keepEuro();
  rates->loadRates(std::nullopt, [](bool, const ResponseError*) { throw std::bad_alloc(); });
  ASSERT_EQ(desktop.transport.requests.size(), 1U);
  desktop.transport.answer(answer({rate("EUR", 0.8)}));
  EXPECT_EQ(desktop.log.count("A completion of loadRates threw: std::bad_alloc"), 2);
  EXPECT_EQ(desktop.log.count(kOutOfMemory), 0) << "the host's, not the library's";
  EXPECT_EQ(pair("USD", "EUR")->rate().doubleValue(), 0.8);
}

TEST_F(Loading, MembersByName) {
  for (const auto& [key, value] :
       {std::pair{"lastUpdate", Value(Date(5))}, {"serviceMessage", "x"}}) {
    EXPECT_TRUE(rates->setValueForKey(key, value));
    EXPECT_EQ(rates->valueForKey(key), value);
  }
  EXPECT_EQ(rates->perform("tryLoadRatesFromQTXServer"), Value());
  EXPECT_TRUE(desktop.transport.requests.empty());
  EXPECT_EQ(rates->valueForKey("rates"), std::nullopt);
}

TEST_F(Loading, Convert_RecordsTheInputWhateverIsFound) {
  store->saveUSDRates({USDRate::make(0.9, "EUR"), USDRate::make(0.8, "GBP")}, false);
  auto [before, source] = rates->convertAmount(5, Currency::make("EUR"), false);
  EXPECT_TRUE(before.items().empty());
  EXPECT_EQ(store->loadSourceCurrency()->amount().intValue(), 5);
  rates->loadRates(std::vector{Currency::make("EUR"), Currency::make("GBP")}, tell());
  const auto plain = rates->convertAmount(100, Currency::make("EUR"), true).first;
  ASSERT_EQ(plain.items().size(), 2U);
  EXPECT_EQ(plain.items()[0].dstCurrency->code(), "USD");
  EXPECT_EQ(plain.items()[0].dstAmount.doubleValue(), 100 * (1 / 0.9));
  const auto inverted = rates->convertAmount(100, Currency::make("EUR"), true, true).first;
  EXPECT_EQ(inverted.items()[1].dstAmount.doubleValue(), 100 / (0.8 / 0.9));
  EXPECT_EQ(inverted.items()[1].srcCurrency->code(), "EUR");
  EXPECT_TRUE(rates->convertAmount(100, Currency::make("JPY"), false).first.items().empty());
  EXPECT_EQ(store->loadSourceCurrency()->currency()->code(), "JPY");
  EXPECT_TRUE(rates->convertAmount(1, nullptr, false).first.items().empty());
  EXPECT_FALSE(rates->rateForSourceCurrency(nullptr, nullptr).has_value());
}

TEST_F(Loading, ChangedCodes_AreLookedUpAnew) {
  CurrencyManager catalogue(desktop.platform);
  RateManager own(desktop.platform, &catalogue, store.get());
  store->saveUSDRates({USDRate::make(0.9, "EUR"), USDRate::make(0.8, "GBP")}, false);
  const CurrencyRef pound = catalogue.currencyForCode("GBP");
  for (const char* code : {"GBP", "NEW", "GBP"}) {
    pound->setCode(code);
    const bool isOld = pound->code() == "GBP";
    EXPECT_EQ(catalogue.currencyForCode("NEW"), isOld ? nullptr : pound);
    EXPECT_EQ(catalogue.currencyForCode("GBP"), isOld ? pound : nullptr);
    EXPECT_EQ(catalogue.currenciesForString("NEW", 10, {}).size(), isOld ? 0U : 1U);
    own.loadRates(std::nullopt, true, true, {});
    EXPECT_EQ(own.rateForSourceCurrency(Currency::make("USD"), pound).has_value(), isOld);
  }
}

TEST_F(Loading, CodesThatComeOften_GiveABoundedConversion) {
  std::vector<USDRateRef> list;
  list.reserve(4000);
  for (int i = 0; i < 4000; ++i) list.push_back(USDRate::make(1 + i, i % 2 == 0 ? "EUR" : "GBP"));
  store->saveUSDRates(list, false);
  rates->loadRates(std::nullopt, {});
  const auto converted = rates->convertAmount(1, Currency::make("EUR"), false).first;
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
