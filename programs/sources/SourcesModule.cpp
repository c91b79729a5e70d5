#include "programs/sources/SourcesModule.h"

#include "programs/sources/Merge.h"

namespace fexora::sources {
namespace {

Source read(const Operand& operand, Date today) {
  return operand.text ? readText(operand.name, *operand.text, today)
                      : readSource(operand.name, today);
}

std::shared_ptr<Response> answerOf(const std::vector<Source>& sources) {
  auto answer = std::make_shared<Response>();
  answer->setUpdated(sources.front().date.secondsSince1970());
  answer->setSource(namesOf(sources));
  std::vector<USDRateRef> rates;
  for (const auto& [code, merged] : merge(sources)) {
    rates.push_back(USDRate::make(merged.rate, code));
  }
  answer->setCount(rates.size());
  answer->setRates(std::move(rates));
  return answer;
}

}  // namespace
}  // namespace fexora::sources

void fexora_sources_module(const std::vector<fexora::sources::Operand>& operands,
                           fexora::Date today, fexora::sources::Reading& reading) {
  using namespace fexora::sources;
  try {
    std::vector<Source> sources;
    sources.reserve(operands.size());
    for (const Operand& operand : operands) sources.push_back(read(operand, today));
    reading.answer = answerOf(sources);
  } catch (const SourceProblem& problem) {
    reading.problem = problem.message;
  }
}
