#include "programs/fexora/FromSources.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "programs/fexora/Output.h"
#include "programs/fexora/Waiting.h"
#include "programs/shared/Failure.h"
#include "programs/shared/FreshRates.h"

namespace fexora::program {

bool isAddress(const std::string& operand) {
  return operand.starts_with("http://") || operand.starts_with("https://");
}

std::string textFrom(const sources::SourceStep& step) {
  bool ended = false;
  std::optional<std::string> text;
  RatesProblem problem;
  Transfer::Progress received;
  FreshRates fresh(rateManager(), storeManager());
  fresh.setProgress([&](const Transfer::Progress& now) { received = now; });
  fresh.fetch(step, [&](std::optional<std::string> answer, const RatesProblem& why) {
    text = std::move(answer);
    problem = why;
    ended = true;
  });
  waitFor(step, received, ended);
  if (text) return *std::move(text);
  throw Failure{Exit::network, kindOf(problem.error), problem.error.message};
}

std::vector<RatesTable> tablesFromSources(const std::vector<std::string>& operands) {
  if (std::count(operands.begin(), operands.end(), "-") > 1) {
    throw usageFailure("--from -: standard input can be read once only");
  }
  std::vector<std::pair<std::string, std::optional<std::string>>> named;
  for (const std::string& operand : operands) {
    const auto step = sources::stepFor(operand, kTrelbyRatesURL);
    if (!step.addresses.empty()) {
      named.emplace_back(operand, textFrom(step));
    } else if (isAddress(operand)) {
      named.emplace_back(shownAddress(operand), textFrom({operand, {operand}, true}));
    } else {
      named.emplace_back(operand, std::nullopt);
    }
  }
  std::string problem;
  std::size_t passedOver = 0;
  auto tables = readTables(named, problem, passedOver);
  if (!tables) throw Failure{Exit::network, "source", problem};
  if (passedOver > 0) {
    printMessage(std::to_string(passedOver) + " keys that are no currency code were passed over");
  }
  return *std::move(tables);
}

}  // namespace fexora::program
