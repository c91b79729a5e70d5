// libqalculate, with the rates that it brings.
#include <libqalculate/qalculate.h>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

constexpr std::size_t kCatalogue = 339;

Calculator& calculator() {
  static Calculator* const made = [] {
    auto* const calculator = new Calculator;  // for the process's life, as the library wants it
    calculator->loadExchangeRates();
    calculator->loadGlobalDefinitions();
    calculator->loadLocalDefinitions();
    return calculator;
  }();
  return *made;
}

std::vector<Unit*> currencies() {
  std::vector<Unit*> found;
  for (Unit* const unit : calculator().units) {
    if (unit->isCurrency()) found.push_back(unit);
  }
  return found;
}

double convert(double amount, Unit* from, Unit* to) {
  MathStructure value(amount);
  value *= from;
  return calculator().convert(value, to).size() > 0 ? 1.0 : 0.0;
}

const Peers<PairJob> pair([](Race& race, const PairJob& job) {
  if (job.world.codes.size() != kCatalogue) return;
  Unit* const dollar = calculator().getActiveUnit("USD");
  Unit* const pound = calculator().getActiveUnit("GBP");
  race.add("libqalculate", [=] { return convert(1, dollar, pound); });
});

const Peers<ConversionJob> all([](Race& race, const ConversionJob& job) {
  if (job.world.codes.size() != kCatalogue) return;
  const std::vector<Unit*> units = currencies();
  Unit* const euro = calculator().getActiveUnit("EUR");
  race.add("libqalculate, its " + std::to_string(units.size()) + " currencies", [=] {
    double sum = 0;
    for (Unit* const unit : units) sum += convert(3.5, euro, unit);
    return sum;
  });
});

}  // namespace
}  // namespace fexora::bench
