// Display records, and who keeps whom alive: the leak sanitizer watches these.
#include "fexora/catalogue/NSCurrency.h"

#include <memory>

#include <gtest/gtest.h>

#include "tests/support/TestCatalogue.h"

namespace fexora::test {
namespace {

TEST(NSCurrency, Description_IsCodeAndNameOrCodeTwice) {
  TestCatalogue catalogue({"USD", "EUR"});
  catalogue.desktop.strings.setTable({{"USD", "US Dollar"}});
  auto& manager = catalogue.manager();
  const auto records = manager.getNSCurrenciesFromCurrencies(manager.currencies());
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0]->description(), "(USD) US Dollar");
  EXPECT_EQ(records[1]->description(), "(EUR) EUR");
  EXPECT_EQ(records[0]->valueForKey("description"), Value("(USD) US Dollar"));
  EXPECT_EQ(records[0]->valueForKey("currency"), std::nullopt);
  EXPECT_EQ(records[0]->perform("init"), std::nullopt);
  catalogue.desktop.strings.setTable({{"USD", "Buck"}});
  EXPECT_EQ(records[0]->description(), "(USD) Buck");
  records[0]->setCurrency(manager.currencies()[1]);
  EXPECT_EQ(records[0]->description(), "(EUR) EUR");
  records[0]->setCurrency(nullptr);
  EXPECT_EQ(records[0]->description(), "");
  EXPECT_EQ(records[0]->currency(), nullptr);
}

TEST(NSCurrency, Conversion_GivesTheSameObjectsEachTime) {
  TestCatalogue catalogue({"USD", "EUR"});
  auto& manager = catalogue.manager();
  const CurrencyRef usd = manager.currencies()[0];
  const CurrencyRef other = Currency::make("USD");
  const std::vector<CurrencyRef> list = {usd, nullptr, other, usd};
  const auto first = manager.getNSCurrenciesFromCurrencies(list);
  ASSERT_EQ(first.size(), 3U);
  EXPECT_EQ(first[0], first[2]);
  EXPECT_NE(first[0], first[1]);
  EXPECT_EQ(manager.getNSCurrenciesFromCurrencies(list), first);
  EXPECT_EQ(usd->_NSCurrency(), first[0]);
  EXPECT_EQ(first[1]->currency(), other);
  EXPECT_TRUE(manager.getNSCurrenciesFromCurrencies({}).empty());

  const auto written = std::make_shared<NSCurrency>(other);
  usd->set_NSCurrency(written);
  EXPECT_EQ(manager.getNSCurrenciesFromCurrencies({usd})[0], written);
  EXPECT_EQ(first[0]->currency(), usd);  // the replaced one shows its currency all the same
  usd->set_NSCurrency(nullptr);
  EXPECT_NE(usd->_NSCurrency(), written);
}

TEST(NSCurrency, HandedOut_KeepsItsCurrencyWhenAllElseIsGone) {
  CurrencyRef currency = Currency::make("EUR");
  const std::weak_ptr<Currency> alive = currency;
  // Reading alone leaves nothing behind: what was handed out goes, the currency's own stays.
  const std::weak_ptr<NSCurrency> read = currency->_NSCurrency();
  EXPECT_TRUE(read.expired());
  NSCurrencyRef record = currency->_NSCurrency();
  currency.reset();
  EXPECT_FALSE(alive.expired());
  EXPECT_EQ(record->description(), "(EUR) EUR");
  EXPECT_EQ(record->currency()->_NSCurrency(), record);
  record.reset();
  EXPECT_TRUE(alive.expired());
}

TEST(NSCurrency, HostsRecordInItsOwnCurrency_LeaksNeither) {
  CurrencyRef currency = Currency::make("EUR");
  const std::weak_ptr<Currency> alive = currency;
  NSCurrencyRef record = std::make_shared<NSCurrency>(currency);
  const std::weak_ptr<NSCurrency> recordAlive = record;
  currency->set_NSCurrency(record);
  // What a read hands out keeps both, the host's own reference the record alone.
  NSCurrencyRef handed = currency->_NSCurrency();
  EXPECT_EQ(handed, record);
  currency.reset();
  EXPECT_EQ(handed->currency(), alive.lock());
  handed.reset();
  EXPECT_TRUE(alive.expired());
  EXPECT_EQ(record->description(), "(EUR) EUR");
  record.reset();
  EXPECT_TRUE(recordAlive.expired());
}

TEST(NSCurrency, WrittenBackOrMovedAbout_LeaksNeither) {
  CurrencyRef a = Currency::make("AAA");
  CurrencyRef b = Currency::make("BBB");
  const std::weak_ptr<Currency> alive[] = {a, b};
  NSCurrencyRef first = a->_NSCurrency();
  a->set_NSCurrency(first);
  EXPECT_EQ(a->_NSCurrency(), first);
  a->set_NSCurrency(std::make_shared<NSCurrency>(a));
  a->set_NSCurrency(first);  // one that had been handed out and replaced
  EXPECT_EQ(a->_NSCurrency(), first);
  EXPECT_EQ(first->currency(), a);
  b->set_NSCurrency(first);
  EXPECT_EQ(b->_NSCurrency()->description(), "(AAA) AAA");
  first->setCurrency(b);
  first->setCurrency(a);
  EXPECT_EQ(b->_NSCurrency()->currency(), a);
  for (const auto release : {&a, &b}) release->reset();
  first.reset();
  for (const auto& currency : alive) EXPECT_TRUE(currency.expired());
}

TEST(NSCurrency, CrossedRecords_KeepTheirCurrenciesUntilOneIsWritten) {
  std::vector<CurrencyRef> ring = {Currency::make("AAA"), Currency::make("BBB"),
                                   Currency::make("CCC")};
  const std::vector<std::weak_ptr<Currency>> alive(ring.begin(), ring.end());
  for (std::size_t i = 0; i < ring.size(); ++i) {
    ring[i]->set_NSCurrency(std::make_shared<NSCurrency>(ring[(i + 1) % ring.size()]));
  }
  ring.clear();
  const auto first = alive[0].lock();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->_NSCurrency()->currency()->_NSCurrency()->description(), "(CCC) CCC");
  first->set_NSCurrency(nullptr);
  EXPECT_TRUE(alive[1].expired());
  EXPECT_TRUE(alive[2].expired());
}

TEST(NSCurrency, UncountedCurrency_HasOneToo) {
  NSCurrencyRef record;
  {
    Currency currency("EUR");
    record = currency._NSCurrency();
    EXPECT_EQ(record, currency._NSCurrency());
    EXPECT_EQ(record->currency().get(), &currency);
  }
  EXPECT_EQ(record->description(), "(EUR) EUR");
  const CurrencyRef shared = currencyManager().currencyForCode("USD");
  EXPECT_EQ(shared->_NSCurrency()->currency(), shared);
}

}  // namespace
}  // namespace fexora::test
