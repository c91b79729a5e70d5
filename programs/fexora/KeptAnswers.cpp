#include "programs/fexora/KeptAnswers.h"

#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/sources/TakenTables.h"

namespace fexora::program {
namespace {

double now() {
  return Platform::process().loop->wallSeconds();
}

void keep(const std::vector<PublishedTable>& tables) {
  const Kept kept = history(storeManager()).keep(tables, now());
  if (!kept.notice.empty()) printMessage("warning: " + kept.notice);
  if (!kept.problem.empty()) {
    printMessage("warning: the rates are not kept for later: " + kept.problem);
  }
}

}  // namespace

void keepTables(const std::string& name, const std::vector<RatesTable>& tables) {
  keep(sources::takenTables(name, tables, Date(now())));
}

void keepSources(const std::vector<std::string>& operands, const std::vector<RatesTable>& tables) {
  keep(sources::takenTables(operands, tables));
}

}  // namespace fexora::program
