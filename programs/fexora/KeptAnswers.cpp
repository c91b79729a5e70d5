#include "programs/fexora/KeptAnswers.h"

#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/shared/TakenTables.h"

namespace fexora::program {
namespace {

void keep(const std::vector<PublishedTable>& tables) {
  const Kept kept = history(storeManager()).keep(tables, Platform::process().loop->wallSeconds());
  if (!kept.notice.empty()) printMessage("warning: " + kept.notice);
  if (!kept.problem.empty()) {
    printMessage("warning: the rates are not kept for later: " + kept.problem);
  }
}

}  // namespace

void keepTables(const std::string& name, const std::vector<RatesTable>& tables) {
  keep(takenTables(name, tables));
}

void keepSources(const std::vector<std::string>& operands, const std::vector<RatesTable>& tables) {
  keep(takenTables(operands, tables));
}

}  // namespace fexora::program
