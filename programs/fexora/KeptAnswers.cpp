#include "programs/fexora/KeptAnswers.h"

#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/sources/TakenTables.h"

namespace fexora::program {
void keepTables(const std::vector<std::string>& names, const std::vector<RatesTable>& tables) {
  const double now = Platform::process().loop->wallSeconds();
  const Kept kept = history(storeManager()).keep(sources::takenTables(names, tables), now);
  if (!kept.notice.empty()) printMessage("warning: " + kept.notice);
  if (!kept.problem.empty()) {
    printMessage("warning: the rates are not kept for later: " + kept.problem);
  }
}

}  // namespace fexora::program
