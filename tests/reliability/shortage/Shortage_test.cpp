// Each allocation of an operation failing in turn, once and from then on: nothing is thrown to the
// caller, what was there stays, and the next try succeeds.
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "fexora/fexora.h"

#include "tests/reliability/shortage/FailingNew.h"
#include "tests/support/StoreWorld.h"
#include "tests/support/TestCatalogue.h"
#include "tests/support/UnflushedFiles.h"

namespace fexora {
namespace {

// Keeps its lines in memory of the test's own: a log must not throw.
class GrantedLog final : public Log {
 public:
  void write(std::string_view line) override {
    const test::OwnAllocations granted;
    record.write(line);
  }
  test::RecordingLog record;
};

const char kLongText[] = "a text that no string holds in place, so that it takes memory";

Dictionary rate(const char* code, double value) {
  return {{"code", code}, {"rate", value}};
}

// A process with a full store; its platform's own doubles are not spared, as a host's would not be.
struct World : test::StoreWorld {
  World() : StoreWorld(test::unflushedFiles()) {
    desktop.platform.log = &log;
    const Dictionary euro{{"code", "EUR"}};
    const Dictionary odd{{"code", kLongText}};
    Dictionary full{{"Fraction", 6},
                    {"TodayCurrencies", Array{euro, odd}},
                    {"TodayRelativeCurrency", odd},
                    {"other", kLongText}};
    full.set(kUDUSDRates, Array{rate("EUR", 0.5), rate("GBP", 0.25)});
    full.set(kUDCurrencies, Array{Dictionary{{"code", "USD"}}, euro});
    full.set(kUDSourceCurrency, Dictionary{{"amount", 5}, {"currency", euro}});
    write(full);
    catalogue = std::make_unique<CurrencyManager>(desktop.platform);
  }
  void start() {
    StoreWorld::start(catalogue.get());
    convert();
  }

  // What tells of it is the test's own.
  void changeFolder() {
    const test::OwnAllocations granted;
    desktop.watch.change();
  }
  // From then on with the store that there is.
  void convert() {
    manager = std::make_unique<RateManager>(desktop.platform, catalogue.get(), store.get());
  }

  GrantedLog log;
  std::unique_ptr<CurrencyManager> catalogue;
  std::unique_ptr<RateManager> manager;
};

using Step = std::function<void(World&)>;

void eachAllocation(const Step& prepare, const Step& run, const Step& check) {
  for (const bool fromThenOn : {false, true}) {
    for (std::size_t number = 0;; ++number) {
      World world;
      prepare(world);
      world.log.record.lines.clear();
      SCOPED_TRACE("allocation " + std::to_string(number) +
                   (fromThenOn ? " from then on" : " alone"));
      bool threw = false;
      test::armNew(number, fromThenOn);
      try {
        run(world);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      const std::size_t count = test::disarmNew();
      ASSERT_FALSE(threw);
      ASSERT_GT(count, 0U) << "nothing was allocated";
      if (count <= number) break;
      check(world);
      if (testing::Test::HasFailure()) return;
    }
  }
}

void nothing(World& /*world*/) {}
void started(World& world) {
  world.start();
}

// Whatever went wrong: the store works on, its file and settings agree, and what it held is there.
void expectWorking(World& world) {
  world.desktop.loop.advance(2.0);
  EXPECT_FALSE(world.store->skipUpdate()) << "not deaf";
  world.store->setCanSave(true);
  world.store->setFraction(9);
  EXPECT_EQ(world.store->saveProblem(), "");
  EXPECT_EQ(world.fraction(), 9);
  EXPECT_EQ(*world.content().find("other"), Value(kLongText));
  EXPECT_EQ(world.content().find(kUDUSDRates)->array()->size(), 2U);
  EXPECT_EQ(world.store->loadCurrencies().size(), 2U);
  const auto euro = Currency::make("EUR");
  world.manager->loadRates(std::nullopt, false, true, {});
  EXPECT_EQ(world.manager->rateForSourceCurrency(euro, Currency::make("USD"))->rate().doubleValue(),
            2);
  EXPECT_EQ(world.manager->convertAmount(7, euro, true).second->amount().doubleValue(), 7);
  EXPECT_EQ(world.store->loadSourceCurrency()->amount().doubleValue(), 7);
  EXPECT_EQ(world.catalogue->currenciesForString("eur", 10, {}).at(0)->code(), "EUR");
}

TEST(Shortage, InASave_KeepsTheSettingAndTheFile) {
  eachAllocation(
      started, [](World& world) { world.store->setFraction(8); },
      [](World& world) {
        EXPECT_EQ(world.store->fraction(), 8);
        const auto& log = world.log.record;
        const bool isSaved = log.count("SAVE SUCCESS") == 1;
        EXPECT_EQ(world.fraction(), isSaved ? 8 : 6);
        EXPECT_TRUE(isSaved || log.count("Saving the s") == 1) << "the store, or the settings";
        world.store->saveSettings();
        EXPECT_EQ(world.fraction(), 8) << "the next save writes it";
        expectWorking(world);
      });
}

TEST(Shortage, InAnyCall_IsNotThrown) {
  const auto euro = Currency::make("EUR");
  const auto pound = Currency::make("GBP");
  const auto currencies = std::vector{euro, pound};
  const std::vector<USDRateRef> rates{USDRate::make(0.5, "EUR"), USDRate::make(2, "GBP")};
  const Value path(kLongText);
  const Step calls[] = {
      [](World& world) { world.store->setMode(StyleMode::dark); },
      [](World& world) { world.store->setSeporate(false); },
      [](World& world) { world.store->setNamingInWidget(Naming::codes); },
      [](World& world) { world.store->setNumberOfCurrenciesInWidget(4); },
      [](World& world) { world.store->setTodayConversionMode(TodayConversionMode::rate); },
      [&](World& world) { world.store->setTodayRelativeCurrency(euro); },
      [](World& world) { world.store->setTodayRelativeCurrency(nullptr); },
      [](World& world) { world.store->synchronize(); },
      [&](World& world) { world.store->saveUSDRates(rates, true); },
      [&](World& world) { world.store->saveCurrencies(currencies); },
      [&](World& world) { world.store->saveSourceCurrency(pound, 7, true); },
      [](World& world) { world.store->startSyncTimer(); },
      [](World& world) { world.store->loadUSDRates(); },
      [](World& world) { world.store->loadCurrencies(); },
      [](World& world) { world.store->loadSourceCurrency(); },
      [](World& world) { world.store->valueForKey("fileURL"); },
      [&](World& world) { world.store->setValueForKey("applicationDocumentsDirectory", path); },
      [&](World& world) {
        world.manager->loadRates(std::nullopt, false, true, {});
        world.manager->convertAmount(7, euro, true);
        world.manager->rateForSourceCurrency(euro, pound);
        world.manager->valueForKey("serviceMessage");
      },
      [](World& world) { const CurrencyManager fresh(world.desktop.platform); },
      [](World& world) { world.catalogue->currenciesForString("eur", 10, {}); },
      [](World& world) {
        FolderMonitor monitor(
            {}, [] {}, world.desktop.platform);
        monitor.stop();
        world.changeFolder();
        monitor.start();
      },
  };
  for (const auto& call : calls) {
    SCOPED_TRACE(&call - calls);
    eachAllocation(
        started,
        [&](World& world) {
          call(world);
          world.desktop.loop.advance(1.5);
        },
        expectWorking);
    if (HasFailure()) return;
  }
}

TEST(Shortage, InAReload_OverwritesNothing) {
  eachAllocation(
      [](World& world) {
        world.start();
        Dictionary content = world.content();
        content.set("Fraction", 7);
        content.set("TodayCurrencies", Array{Dictionary{{"code", kLongText}}});
        world.write(content);
      },
      [](World& world) { world.store->folderUpdate(); },
      [](World& world) {
        world.store->saveSettings();
        EXPECT_EQ(world.fraction(), 7);
        world.desktop.watch.change();
        EXPECT_EQ(world.store->fraction(), 7);
        EXPECT_EQ(world.store->todayCurrencies()[0]->code(), kLongText);
        expectWorking(world);
      });
}

TEST(Shortage, InAStart_WritesNothingOverTheFile) {
  eachAllocation(
      nothing,
      [](World& world) {
        // The object itself is the caller's to allocate.
        void* const place = [] {
          const test::OwnAllocations granted;
          return ::operator new(sizeof(StoreManager));
        }();
        world.store.reset(new (place) StoreManager(world.desktop.platform, world.catalogue.get()));
      },
      [](World& world) {
        EXPECT_EQ(world.fraction(), 6);
        EXPECT_EQ(world.log.record.count("SAVE"), 0);
        if (world.store->fileURL().empty()) return;
        // Where the start did not read the file, the first save loads it.
        for (const bool isFirst : {true, false}) {
          world.store->setNumberOfCurrenciesInWidget(4);
          EXPECT_TRUE(isFirst || world.store->saveProblem().empty());
          EXPECT_EQ(world.fraction(), 6) << "not the default";
          EXPECT_EQ(world.store->fraction(), 6);
        }
        world.convert();
        expectWorking(world);
      });
}

TEST(Shortage, InAnAnswer_TellsTheCaller) {
  const Dictionary answer{{"serviceMessage", kLongText},
                          {"rates", Array{rate("EUR", 0.75), rate("GBP", 0.5)}}};
  int calls = 0;
  eachAllocation(
      [&](World& world) {
        world.start();
        calls = 0;
        world.manager->loadRates(std::nullopt, [&calls](bool fromCache, const ResponseError*) {
          calls += fromCache ? 0 : 1;
        });
      },
      [&](World& world) {
        // What brings the answer is the transport's to catch.
        auto request = [&world] {
          const test::OwnAllocations granted;
          return std::move(world.desktop.transport.requests.at(0));
        }();
        try {
          request.complete(request.read(DictionarySource(answer)), std::nullopt);
        } catch (const std::bad_alloc&) {
          calls = 1;
          world.log.write("out of memory in the transport's hand");
        }
      },
      [&](World& world) {
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(world.store->loadUSDRates()->size(), 2U) << "all or the old ones, never a part";
      });
}

TEST(Shortage, InFactsAndRankedSearch_AddsAndFindsAllOrNothing) {
  test::TestCatalogue catalogue({"CHF", "JPY"});
  GrantedLog log;
  catalogue.desktop.platform.log = &log;
  const std::vector<USDRateRef> given = {USDRate::make(0.5, "EUR")};
  const CurrencyFacts row{.code = kLongText};
  const std::size_t all = withSuccessors(given).size();
  for (std::size_t number = 0, count = 1; number < count; ++number) {
    auto list = given;
    catalogue.desktop.strings.setTable({});  // other keys
    const auto& manager = catalogue.manager();
    const std::uint64_t before = currencyFactsChanges();
    test::armNew(number, false);
    list = withSuccessors(std::move(list));
    const bool added = addCurrencyFacts({&row, 1});
    const auto found = manager.rankedCurrencies("schweiz", 10);
    count = test::disarmNew();
    EXPECT_TRUE(list.size() == 1 || list.size() == all) << number;
    EXPECT_EQ(currencyFactsChanges(), before + (added ? 1 : 0)) << number;
    EXPECT_LE(found.size(), 1U) << number;
    EXPECT_EQ(manager.rankedCurrencies("schweiz", 10).size(), 1U) << number;
  }
}

}  // namespace
}  // namespace fexora
