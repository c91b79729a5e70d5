// QuantLib's manager of exchange rates, given the world's rates to the dollar. It keys currencies
// by a number below 1000, so that larger worlds are left out.
#include <cctype>

#include <ql/currencies/exchangeratemanager.hpp>
#include <ql/exchangerate.hpp>
#include <ql/settings.hpp>
#include <ql/time/date.hpp>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

using QuantLib::ExchangeRate;
using QuantLib::ExchangeRateManager;

constexpr std::size_t kMost = 900;
constexpr int kBatch = 20;

class MadeUp : public QuantLib::Currency {
 public:
  MadeUp(const std::string& code, int number)
      : Currency(code, code, number, code, "", 100, QuantLib::Rounding(), "%2% %1$.2f") {}
};

using Currencies = std::vector<QuantLib::Currency>;

Currencies currenciesOf(const World& world) {
  Currencies currencies;
  ExchangeRateManager& manager = ExchangeRateManager::instance();
  manager.clear();
  for (std::size_t i = 0; i < world.codes.size(); ++i) {
    currencies.push_back(MadeUp(world.codes[i], static_cast<int>(i) + 1));
    if (i > 0) manager.add(ExchangeRate(currencies[0], currencies[i], world.values[i]));
  }
  currencies.push_back(MadeUp("none", static_cast<int>(world.codes.size()) + 1));
  return currencies;
}

double lookUp(const QuantLib::Currency& from, const QuantLib::Currency& to) {
  static const QuantLib::Date today(1, QuantLib::January, 2026);
  try {
    return ExchangeRateManager::instance().lookup(from, to, today).rate();
  } catch (const std::exception&) {
    return 0;
  }
}

const Peers<PairJob> manager([](Race& race, const PairJob& job) {
  const std::size_t n = job.world.codes.size();
  if (n > kMost) return;
  const auto currencies = std::make_shared<Currencies>(currenciesOf(job.world));
  const auto each = [currencies](std::size_t from, std::size_t to) {
    double sum = 0;
    for (int i = 0; i < kBatch; ++i) sum += lookUp((*currencies)[from], (*currencies)[to]);
    return sum;
  };
  race.add(
      "QuantLib's manager, from the dollar", [=] { return each(0, n / 2); }, kBatch);
  race.add(
      "QuantLib's manager, across", [=] { return each(n / 3, n / 2); }, kBatch);
  race.add(
      "QuantLib's manager, miss", [=] { return each(n / 3, n); }, kBatch);
});

}  // namespace
}  // namespace fexora::bench
