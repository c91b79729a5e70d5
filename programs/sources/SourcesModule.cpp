#include "programs/sources/SourcesModule.h"

#include "programs/sources/Merge.h"

void fexora_sources_module(const std::vector<fexora::sources::Operand>& operands,
                           fexora::sources::Reading& reading) {
  using namespace fexora;
  using namespace fexora::sources;
  try {
    std::vector<RatesTable> tables;
    for (const Operand& operand : operands) {
      const Source source = operand.text ? readText(operand.name, *operand.text, Date())
                                         : readSource(operand.name, Date());
      reading.passedOver += source.passedOver;
      tables.push_back(
          tableOf(source, operand.text ? RatesAnswer::Origin::service : RatesAnswer::Origin::file));
    }
    reading.tables = std::move(tables);
  } catch (const SourceProblem& problem) {
    reading.problem = problem.message;
  }
}
