#include "fexora/rates/PairRates.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <random>
#include <span>

#include <gtest/gtest.h>

#include "tests/support/TestCatalogue.h"

namespace fexora {
namespace {

// The pair rates as a plain list, worked out step by step.
std::vector<Rate> referencePairs(const CurrencyManager& catalogue,
                                 const std::vector<USDRateRef>& usdRates,
                                 const std::vector<CurrencyRef>& selection) {
  std::vector<USDRateRef> used;
  for (const auto& rate : usdRates) {
    const auto currency = catalogue.currencyForCode(rate->code());
    const bool chosen = currency != nullptr &&
                        std::any_of(selection.begin(), selection.end(), [&](const auto& one) {
                          return one != nullptr && *one == *currency;
                        });
    if (chosen) used.push_back(rate);
  }
  std::vector<Rate> pairs;
  for (const auto& a : used) {
    const auto dollar = catalogue.currencyForCode("USD");
    const auto own = catalogue.currencyForCode(a->code());
    if (dollar == nullptr || own == nullptr || *dollar == *own) continue;
    pairs.emplace_back(dollar, own, a->rate());
    pairs.emplace_back(own, dollar, 1.0 / a->rate().doubleValue());
    for (const auto& b : used) {
      if (b->code() == a->code()) continue;
      pairs.emplace_back(own, catalogue.currencyForCode(b->code()),
                         b->rate().doubleValue() / a->rate().doubleValue());
    }
  }
  return pairs;
}

std::uint64_t bits(NSNumber number) {
  const double value = number.doubleValue();
  return value != value ? 1 : std::bit_cast<std::uint64_t>(value);
}

void expectSame(const Rate& a, const Rate& b) {
  EXPECT_EQ(a.src().get(), b.src().get());
  EXPECT_EQ(a.dst().get(), b.dst().get());
  EXPECT_EQ(bits(a.rate()), bits(b.rate())) << b.description();
}

// Every answer of the sequence against a walk over the plain list.
void expectLikeReference(const CurrencyManager& catalogue, const std::vector<USDRateRef>& usdRates,
                         const std::vector<CurrencyRef>& selection) {
  const auto reference = referencePairs(catalogue, usdRates, selection);
  const PairRates pairs(catalogue, knownRates(catalogue, usdRates), selection);
  ASSERT_EQ(pairs.size(), reference.size());
  std::size_t index = 0;
  for (const Rate& pair : pairs) expectSame(pair, reference[index++]);
  EXPECT_EQ(index, reference.size());
  for (const auto& src : catalogue.currencies()) {
    std::vector<ConvertedItem> lines;
    for (const Rate& pair : reference) {
      if (*pair.src() == *src) lines.emplace_back(pair, 3.5, false);
    }
    const auto items = pairs.convert(*src, 3.5, false);
    ASSERT_EQ(items.size(), lines.size()) << src->code();
    for (std::size_t i = 0; i < items.size(); ++i) {
      EXPECT_EQ(items[i].dstCurrency, lines[i].dstCurrency);
      EXPECT_EQ(bits(items[i].dstAmount), bits(lines[i].dstAmount));
    }
    for (const bool invert : {false, true}) {
      // Room for all of them, and for all but one.
      std::vector<double> amounts(lines.size() + 1, -1);
      ASSERT_EQ(pairs.convertInto(amounts, *src, 3.5, invert), lines.size());
      for (std::size_t i = 0; i < lines.size(); ++i) {
        const ConvertedItem line(Rate(lines[i].srcCurrency, lines[i].dstCurrency, lines[i].rate),
                                 3.5, invert);
        EXPECT_EQ(bits(amounts[i]), bits(line.dstAmount)) << src->code() << i;
      }
      EXPECT_EQ(amounts.back(), -1);
      amounts.assign(amounts.size(), -1);
      const std::size_t few = lines.empty() ? 0 : lines.size() - 1;
      EXPECT_EQ(pairs.convertInto(std::span(amounts).first(few), *src, 3.5, invert), lines.size());
      EXPECT_EQ(amounts[few], -1);
    }
    for (const auto& dst : catalogue.currencies()) {
      const auto first = std::find_if(reference.begin(), reference.end(), [&](const Rate& pair) {
        return *pair.src() == *src && *pair.dst() == *dst;
      });
      const auto found = pairs.find(*src, *Currency::make(dst->code()));
      ASSERT_EQ(found.has_value(), first != reference.end()) << src->code() << dst->code();
      if (found) expectSame(*found, *first);
    }
  }
}

TEST(PairRates, WorkedExample_SixPairsInOrder) {
  auto& catalogue = currencyManager();
  const std::vector<USDRateRef> rates = {USDRate::make(0.9, "EUR"), USDRate::make(0.8, "GBP"),
                                         USDRate::make(110, "JPY")};
  const std::vector<CurrencyRef> selection = {Currency::make("EUR"), Currency::make("GBP"),
                                              Currency::make("USD"), nullptr};
  const PairRates pairs(catalogue, knownRates(catalogue, rates), selection);
  std::string texts;
  for (const Rate& pair : pairs) texts += pair.src()->code() + pair.dst()->code() + " ";
  EXPECT_EQ(texts, "USDEUR EURUSD EURGBP USDGBP GBPUSD GBPEUR ");
  EXPECT_EQ(pairs[5].rate().doubleValue(), 0.9 / 0.8);
  EXPECT_FALSE(pairs.find(*Currency::make("EUR"), *Currency::make("EUR")));
  EXPECT_FALSE(pairs.find(*Currency::make("EUR"), *Currency::make("JPY")));
  EXPECT_TRUE(pairs.convert(*Currency::make("JPY"), 1, false).empty());
  EXPECT_TRUE(pairs.convert(*Currency::make(), 1, false).empty());
}

TEST(PairRates, RandomLists_AgreeWithThePlainLoop) {
  // A code that stands twice, an empty one and one without ASCII.
  const std::vector<std::string> codes = {"EUR", "USD", "GBP", "EUR", "", "JPY", "\u00C5", "BTC"};
  test::TestCatalogue withDollar(codes);
  test::TestCatalogue without({"EUR", "GBP"});
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::vector<NSNumber> numbers = {
      0.9, 0.0, -0.0, 1, kInfinity, std::numeric_limits<double>::quiet_NaN(), 1e-9, 1e300, true};
  std::mt19937 random(20261124);  // NOLINT(cert-msc51-cpp): the same run every time
  for (int round = 0; round < 400; ++round) {
    std::vector<USDRateRef> rates;
    for (auto count = random() % 9; count-- > 0;) {
      const auto& code = random() % 9 == 0 ? "XXX" : codes[random() % codes.size()];
      rates.push_back(USDRate::make(numbers[random() % numbers.size()], code));
    }
    std::vector<CurrencyRef> selection;
    for (auto count = random() % 9; count-- > 0;) {
      selection.push_back(Currency::make(codes[random() % codes.size()]));
    }
    for (auto* const made : {&withDollar, &without}) {
      expectLikeReference(made->manager(), rates, selection);
    }
    if (testing::Test::HasFailure()) FAIL() << "round " << round;
  }
}

}  // namespace
}  // namespace fexora
