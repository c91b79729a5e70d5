// keep_c FOLDER: a history of one table, for those that read it.
#include <array>

#include <fexora/fexora.h>

#include "fexora/platform/files/ContainerFolder.h"

int main(int count, char** words) {
  using namespace fexora;
  if (count != 2 || namedFolder(Files::process(), words[1]).path.empty()) return 2;
  const std::array<PublishedTable, 1> tables = {
      {{*dayFromIsoText("2024-03-01"), "ecb", "EUR", {{"USD", "1.0813"}, {"GBP", "0.85600"}}}}};
  const auto history = rateHistory(words[1], Files::process(), Log::process());
  return history->keep(tables, RunLoop::process().wallSeconds()).problem.empty() ? 0 : 1;
}
