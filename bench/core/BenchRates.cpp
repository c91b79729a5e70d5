// Deriving, looking up and converting, against the least work that the same answer takes.
#include <unordered_map>

#include "fexora/rates/PairRates.h"

#include "bench/core/Bench.h"
#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

constexpr int kBatch = 200;
constexpr int kConversions = 10;

void raceDerivation(const World& world) {
  const std::size_t n = world.codes.size();
  std::vector<std::string_view> codes(world.codes.begin(), world.codes.end());
  const auto& catalogue = currencyManager();
  Race race("derivation after rates arrive", n);
  race.add("n codes put in an index, n doubles copied", [&, n] {
    std::unordered_map<std::string_view, std::uint32_t> index;
    index.reserve(n);
    for (std::uint32_t i = 0; i < n; ++i) index.emplace(codes[i], i);
    const std::vector<double> copy(world.values);
    return static_cast<double>(index.size()) + copy.back();
  });
  race.add("known rates and pair rates", [&] {
    const PairRates pairs(catalogue, knownRates(catalogue, world.records), catalogue.currencies());
    return static_cast<double>(pairs.size());
  });
  if (n <= 1000) {
    race.add("a plain list of the pairs", [&, n] {
      std::vector<Rate> list;
      for (std::size_t i = 1; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
          if (i == j) continue;
          list.emplace_back(catalogue.currencies()[i], catalogue.currencies()[j],
                            world.values[j] / world.values[i]);
        }
      }
      return list.back().rate().doubleValue();
    });
  }
  race.run();
}

void racePairs(const World& world, const PairRates& pairs) {
  const std::size_t n = world.codes.size();
  const auto& currencies = currencyManager().currencies();
  std::unordered_map<std::string, double> index;
  for (std::size_t i = 0; i < n; ++i) index.emplace(world.codes[i], world.values[i]);
  const auto at = [n](int i, std::size_t step) { return (static_cast<std::size_t>(i) * step) % n; };
  Race race("one pair looked up", n);
  race.add(
      "two hash look-ups by code and a division",
      [&] {
        double sum = 0;
        for (int i = 0; i < kBatch; ++i) {
          sum += index.find(world.codes[at(i, 7)])->second /
                 index.find(world.codes[at(i, 13)])->second;
        }
        return sum;
      },
      kBatch);
  race.add(
      "from records to a Rate, hit",
      [&] {
        double sum = 0;
        for (int i = 0; i < kBatch; ++i) {
          const auto rate = pairs.find(*currencies[at(i, 7)], *currencies[at(i, 13)]);
          if (rate) sum += rate->rate().doubleValue();
        }
        return sum;
      },
      kBatch);
  const auto stranger = Currency::make("none");
  race.add(
      "from records to a Rate, miss",
      [&] {
        double sum = 0;
        for (int i = 0; i < kBatch; ++i) {
          sum += pairs.find(*currencies[at(i, 7)], *stranger) ? 1 : 0;
        }
        return sum;
      },
      kBatch);
  const PairJob job{world};
  Peers<PairJob>::enter(race, job);
  race.run();
}

// Room of the caller's: what the arithmetic costs.
void raceAmounts(const World& world, const PairRates& pairs) {
  const std::size_t n = world.codes.size();
  const auto& currencies = currencyManager().currencies();
  std::vector<double> amounts(n);
  Race race("one amount into an array", n);
  race.add(
      "dst[i] = a * r[i]",
      [&] {
        double amount = 3.5;
        for (int round = 0; round < kBatch; ++round) {
          for (std::size_t i = 0; i < n; ++i) amounts[i] = amount * world.values[i];
          amount += amounts[1] * 1e-9;
        }
        return amount;
      },
      kBatch);
  race.add(
      "dst[i] = a * (r[i] / s)",
      [&] {
        double amount = 3.5;
        for (int round = 0; round < kBatch; ++round) {
          for (std::size_t i = 0; i < n; ++i) {
            amounts[i] = amount * (world.values[i] / world.values[1]);
          }
          amount += amounts[1] * 1e-9;
        }
        return amount;
      },
      kBatch);
  const auto enter = [&](const char* name, std::size_t from) {
    race.add(
        name,
        [&, from] {
          double amount = 3.5;
          for (int round = 0; round < kBatch; ++round) {
            pairs.convertInto(amounts, *currencies[from], amount, false);
            amount += amounts[1] * 1e-9;
          }
          return amount;
        },
        kBatch);
  };
  enter("convertInto, from the dollar", 0);
  enter("convertInto, from the euro", 1);
  race.run();
}

// What a line is made of, without anything around it.
struct BareLine {
  CurrencyRef src;
  CurrencyRef dst;
  NSNumber rate;
  NSNumber amount;
  NSNumber converted;
};

void raceConversion(const World& world, const PairRates& pairs) {
  const std::size_t n = world.codes.size();
  const auto& currencies = currencyManager().currencies();
  const CurrencyRef& euro = currencies[1];
  Race race("one amount into all", n);
  race.add(
      "a list of the same records",
      [&] {
        double sum = 0;
        for (int round = 0; round < kConversions; ++round) {
          std::vector<BareLine> lines;
          lines.reserve(n);
          for (std::size_t i = 0; i < n; ++i) {
            const double rate = world.values[i] / world.values[1];
            lines.push_back({euro, currencies[i], rate, 3.5, 3.5 * rate});
          }
          sum += lines.back().converted.doubleValue();
        }
        return sum;
      },
      kConversions);
  race.add(
      "items",
      [&] {
        double sum = 0;
        for (int round = 0; round < kConversions; ++round) {
          sum += pairs.convert(*euro, 3.5, false).back().dstAmount.doubleValue();
        }
        return sum;
      },
      kConversions);
  const ConversionJob job{world};
  Peers<ConversionJob>::enter(race, job);
  race.run();
}

}  // namespace

void benchRates(const World& world) {
  const auto& catalogue = currencyManager();
  const PairRates pairs(catalogue, knownRates(catalogue, world.records), catalogue.currencies());
  raceDerivation(world);
  racePairs(world, pairs);
  raceAmounts(world, pairs);
  raceConversion(world, pairs);
}

}  // namespace fexora::bench
