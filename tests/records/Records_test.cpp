// Equality, JSON forms and printed forms of the records.
#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/plist/PropertyListWriter.h"

namespace fexora {
namespace {

TEST(Currency, EqualByCode_WhoeverHoldsIt) {
  const auto euro = Currency::make("EUR");
  const auto empty = Currency::make();
  const USDRate rate(0.9, "EUR");
  // The last two are canonically equivalent.
  const std::pair<const char*, const char*> equal[] = {{"EUR", "EUR"}, {"\u00C5", "A\u030A"}};
  for (const auto& [a, b] : equal) {
    EXPECT_TRUE(*Currency::make(a) == *Currency::make(b));
    EXPECT_EQ(Currency::make(a)->hashValue(), Currency::make(b)->hashValue());
  }
  EXPECT_FALSE(*euro == *Currency::make("eur"));
  EXPECT_FALSE(*empty == *empty);
  EXPECT_FALSE(*euro == rate || rate == *euro);
  EXPECT_TRUE(rate == USDRate(0.95, "EUR"));
  EXPECT_FALSE(USDRate() == USDRate());
  EXPECT_FALSE(MappableModel() == MappableModel());
}

TEST(Currency, JsonForm_IsTheCodeAlone) {
  auto euro = Currency::make("EUR");
  euro->setId(7);
  EXPECT_EQ(Mapper<Currency>::toJSON(*euro), Value(Dictionary{{"code", "EUR"}}));
  EXPECT_EQ(Mapper<Currency>::toJSON(euro), Mapper<Currency>::toJSON(*euro));
  EXPECT_EQ(Mapper<Currency>::toJSON(nullptr), Value());
  const auto read = Mapper<Currency>::map(Dictionary{{"code", "GBP"}, {"id", 9}});
  EXPECT_EQ(read->code(), "GBP");
  EXPECT_EQ(read->id(), 0);
  EXPECT_EQ(Mapper<Currency>::map(Dictionary{{"code", 5}})->code(), "");
  const std::string code(limits::kCodeCharacters, 'X');
  for (const std::string& text : {code, code + "X", "E\u202EUR" + code}) {
    const auto isShort = text == code;
    EXPECT_EQ(Mapper<Currency>::map(Dictionary{{"code", text}})->code() == text, isShort);
    EXPECT_EQ(Mapper<USDRate>::map(Dictionary{{"code", text}})->code() == text, isShort);
  }
  EXPECT_EQ(Mapper<Currency>::map("EUR"), nullptr);
}

// A record that rejects some dictionaries, as a host's own may.
class Picky : public MappableModel {
 public:
  using MappableModel::mapping;
  bool initWithMap(Map& map) override {
    map.bind("name", name);
    return !name.empty();
  }
  void mapping(Map& map) override { map.bind("name", name); }
  std::string name;
};

TEST(Mapper, RecordsThatDoNotMap_AreLeftOut) {
  const Value list(Array{Dictionary{{"name", "a"}}, Dictionary{}, Dictionary{{"name", "b"}}});
  const auto records = Mapper<Picky>::mapArray(list);
  ASSERT_TRUE(records.has_value());
  ASSERT_EQ(records->size(), 2U);
  EXPECT_EQ((*records)[1]->name, "b");
  EXPECT_FALSE(Mapper<Picky>::mapArray(Array{Dictionary{{"name", "a"}}, "b"}).has_value());
}

// As bytes where that can be, and in a file always what a dictionary for each record gives.
TEST(Mapper, ListsForAPropertyListsRoot_AreWrittenAsAnyOther) {
  const std::string like = "A</string>\n\t\t\t<key>rate</key>\n\t\t\t<real>9";
  const struct {
    const char* what;
    std::string code;
    NSNumber rate;
    std::size_t records;
    bool isBytes;
  } cases[] = {
      {"a rate", "EUR", 0.8, 9, true},
      {"a whole one", "EUR", 1, 9, true},
      {"the smallest and no code", "", -5e-324, 9, true},
      {"longer than there is room for", std::string(100'000, 'A'), 0.8, 9, true},
      {"too few", "EUR", 0.8, 7, false},
      {"none", "EUR", 0.8, 0, false},
      {"what XML reads as something else", like, 0.8, 9, false},
      {"another script", "\u20AC", 0.8, 9, false},
      {"no number", "EUR", std::numeric_limits<double>::quiet_NaN(), 9, false},
      {"without end", "EUR", -std::numeric_limits<double>::infinity(), 9, false},
      {"yes or no", "EUR", NSNumber(true), 9, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    std::vector<USDRateRef> rates(each.records, USDRate::make(0.5, "USD"));
    if (!rates.empty()) rates.back() = USDRate::make(each.rate, each.code);
    rates.push_back(nullptr);
    const Value list = Mapper<USDRate>::toRootArray(rates);
    const Value plain = Mapper<USDRate>::toJSONArray(rates);
    EXPECT_EQ(list.deferred() != nullptr, each.isBytes);
    for (const char* const key : {"L", "M"}) {
      const PlistBytes written = writePropertyList(Dictionary{{"L", "before"}, {key, list}});
      EXPECT_EQ(written.bytes, writePropertyList(Dictionary{{"L", "before"}, {key, plain}}).bytes);
    }
    // Further in, the lines have other tabs.
    EXPECT_EQ(writePropertyList(Dictionary{{"D", Dictionary{{"L", list}}}}).bytes,
              writePropertyList(Dictionary{{"D", Dictionary{{"L", plain}}}}).bytes);
    ASSERT_NE(list.array(), nullptr);
    EXPECT_EQ(list.array()->size(), plain.array()->size());
  }
}

TEST(MappableModel, MappingFromAnotherRecord_TakesItsKeys) {
  USDRate to(0.9, "EUR");
  to.mapping(USDRate(0.5, "GBP"));
  EXPECT_EQ(Mapper<USDRate>::toJSON(to), Value(Dictionary{{"code", "GBP"}, {"rate", 0.5}}));
  to.mapping(*Currency::make("JPY"));
  EXPECT_EQ(Mapper<USDRate>::toJSON(to), Value(Dictionary{{"code", "JPY"}, {"rate", 0.5}}));
}

TEST(USDRate, Currency_IsTheCataloguesOwnRecord) {
  const USDRate euro(0.9, "EUR");
  EXPECT_EQ(euro.currency(), currencyManager().currencyForCode("EUR"));
  EXPECT_NE(euro.currency(), nullptr);
  EXPECT_EQ(USDRate(1, "no such code").currency(), nullptr);
}

TEST(Rate, PrintedForm_AndMembersByName) {
  Rate rate(Currency::make("EUR"), Currency::make("USD"), 1 / 0.9);
  EXPECT_EQ(rate.valueForKey("description"), Value("EUR -> USD = 1.111111"));
  EXPECT_TRUE(rate.setValueForKey("rate", 0.5));
  EXPECT_EQ(rate.valueForKey("rate"), Value(0.5));
  EXPECT_FALSE(rate.setValueForKey("rate", "0.5"));
  EXPECT_FALSE(rate.setValueForKey("src", "USD"));
  EXPECT_EQ(rate.valueForKey("src"), std::nullopt);
  EXPECT_EQ(Rate().description(), " ->  = 0.000000");
}

TEST(ConvertedItem, Invert_ChangesTheArithmeticAlone) {
  const Rate rate(Currency::make("USD"), Currency::make("EUR"), 0.9);
  const ConvertedItem plain(rate, 100, false);
  const ConvertedItem inverted(rate, 100, true);
  EXPECT_EQ(plain.dstAmount.doubleValue(), 100 * 0.9);
  EXPECT_EQ(inverted.dstAmount.doubleValue(), 100 / 0.9);
  EXPECT_EQ(inverted.srcCurrency->code(), "USD");
  EXPECT_EQ(inverted.srcAmount.kind(), NSNumber::Kind::integer);
  EXPECT_EQ(plain.description(), "From 100.0000(USD) To 90.0000(EUR)");
  // 1234567.89 is not a 32-bit float; the nearest one is printed.
  const ConvertedItem large(rate, 1234567.89, false);
  EXPECT_TRUE(large.description().starts_with("From 1234567.8750(USD)"));
  const Rate zero(Currency::make("USD"), Currency::make("EUR"), 0.0);
  EXPECT_TRUE(std::isinf(ConvertedItem(zero, 1, true).dstAmount.doubleValue()));
  EXPECT_TRUE(std::isnan(ConvertedItem(zero, 0, true).dstAmount.doubleValue()));
}

TEST(Converted, ItemForDestination_IsTheFirst) {
  const auto dollar = Currency::make("USD");
  Converted converted;
  EXPECT_FALSE(converted.itemForDstCurrency(dollar).has_value());
  converted.setItems({{Rate(Currency::make("EUR"), dollar, 1.5), 1, false},
                      {Rate(Currency::make("EUR"), dollar, 2.5), 1, false}});
  EXPECT_EQ(converted.itemForDstCurrency(Currency::make("USD"))->rate.doubleValue(), 1.5);
  EXPECT_FALSE(converted.itemForDstCurrency(nullptr).has_value());
  double sum = 0;
  for (const ConvertedItem& item : Converted(converted).items()) sum += item.rate.doubleValue();
  EXPECT_EQ(sum, 1.5 + 2.5) << "the lines outlive a conversion that goes away";
}

static_assert(
    !std::is_constructible_v<ConvertedItem, CurrencyRef, CurrencyRef, NSNumber, NSNumber, bool>);

TEST(StoreSource, RoundTrip_KeepsTheNumbersKind) {
  const Dictionary json{{"amount", 12.5}, {"currency", Dictionary{{"code", "EUR"}}}};
  EXPECT_EQ(Mapper<StoreSource>::toJSON(*StoreSource::make(12.5, Currency::make("EUR"))), json);
  EXPECT_EQ(Mapper<StoreSource>::toJSON(*Mapper<StoreSource>::map(json)), json);
  EXPECT_EQ(StoreSource().amount().kind(), NSNumber::Kind::integer);
  EXPECT_EQ(Mapper<StoreSource>::map(Dictionary{})->currency(), nullptr);
}

// JSON in, the record's own JSON out: what has the wrong type leaves the initial value.
TEST(Response, Reading_TakesWhatHasItsType) {
  const Dictionary none{
      {"serviceMessage", ""}, {"updated", 0}, {"source", ""}, {"count", 0}, {"rates", Array{}}};
  const auto rates = [](const Value& rate) {
    return Dictionary{{"rates", Array{Dictionary{{"code", "EUR"}, {"rate", rate}}}}};
  };
  const std::pair<Dictionary, Dictionary> rows[] = {
      {{}, {}},
      {{{"serviceMessage", 5}, {"count", "3"}, {"source", "x"}}, {{"source", "x"}}},
      {{{"updated", 1.5}, {"other", 1}}, {{"updated", 1.5}}},
      {{{"source", "a\x01"}, {"serviceMessage", "b\nc"}},
       {{"source", "a "}, {"serviceMessage", "b c"}}},
      {{{"rates", Array{Dictionary{}, "a"}}}, {}},
      {{{"rates", Dictionary{}}}, {}},
      {rates(0.9), rates(0.9)},
      {rates("1,08"), rates(1.08)},
      {rates("1.08"), rates(1.08)},
      {rates("none"), rates(0.0)},
      {rates(Value()), rates(0.0)},
      {{{"rates", Array{Dictionary{}}}},
       {{"rates", Array{Dictionary{{"code", ""}, {"rate", 0.0}}}}}}};
  for (const char* locale : {"en_US", "de_DE", "fr_FR"}) {
    Locale::setCurrent(locale);
    for (const auto& [in, out] : rows) {
      Dictionary expected = none;
      for (const auto& [key, value] : out) expected.set(key, value);
      EXPECT_EQ(Mapper<Response>::toJSON(*Mapper<Response>::map(in)), Value(expected)) << locale;
    }
  }
  Locale::setCurrent("");
  EXPECT_EQ(Response().count().kind(), NSNumber::Kind::integer);
}

TEST(NSNumber, OtherKinds_NeverFail) {
  EXPECT_EQ(NSNumber(true).kind(), NSNumber::Kind::boolean);
  EXPECT_EQ(NSNumber(std::numeric_limits<std::uint64_t>::max()).kind(), NSNumber::Kind::real);
  const std::pair<NSNumber, std::int64_t> integers[] = {
      {1e300, std::numeric_limits<std::int64_t>::max()}, {std::nan(""), 0}, {-2.9, -2}};
  for (const auto& [number, integer] : integers) EXPECT_EQ(number.intValue(), integer);
  EXPECT_TRUE(std::isinf(NSNumber(1e300).floatValue()));
  EXPECT_EQ(NSNumber(42).stringValue(), "42");
  EXPECT_EQ(NSNumber("7").kind(), NSNumber::Kind::real);
}

}  // namespace
}  // namespace fexora
