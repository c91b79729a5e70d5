#include "programs/fexora/HistoryImport.h"

#include <algorithm>
#include <iterator>

#include "fexora/platform/network/ShownAddress.h"

#include "programs/fexora/FromSources.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/shared/Failure.h"
#include "programs/shared/JsonText.h"
#include "programs/shared/PastSources.h"

namespace fexora::program {
namespace {

// Adds the operand's tables; how many keys were passed over.
std::size_t addTables(const std::string& operand, std::vector<PublishedTable>& tables) {
  sources::PastOperand source{operand, std::nullopt};
  const bool isWeb = isAddress(operand);
  const auto step =
      isWeb ? std::optional(sources::SourceStep{operand, {operand}, true}) : pastStep(operand);
  if (step) source = {shownAddress(step->addresses.front()), textFrom(*step)};
  PastTablesRead read = readPastTables(source);
  if (!read.problem.empty()) {
    throw Failure{Exit::network, "source", read.problem + "; nothing was kept"};
  }
  std::move(read.tables.begin(), read.tables.end(), std::back_inserter(tables));
  return read.passedOver;
}

std::string counted(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

void printKept(const CommandLine& line, const std::vector<PublishedTable>& tables, const Kept& kept,
               std::size_t passedOver) {
  if (line.json) {
    JsonText json;
    const auto number = [&](const char* key, std::size_t count) {
      json.key(key).integer(static_cast<std::int64_t>(count));
    };
    json.beginObject();
    number("read", tables.size());
    number("tables", kept.tables);
    number("figures", kept.figures);
    number("corrected", kept.corrected);
    number("passedOver", passedOver);
    return printLine(json.endObject().text());
  }
  printLine(counted(tables.size(), "day", "days") + " read, " + std::to_string(kept.tables) +
            " of them new, with " + counted(kept.figures, "new figure", "new figures"));
}

void tell(const Kept& kept, std::size_t passedOver) {
  if (!kept.notice.empty()) printMessage("warning: " + kept.notice);
  if (passedOver > 0) {
    printMessage(counted(passedOver, "key is no currency code and was",
                         "keys are no currency codes and were") +
                 " passed over");
  }
  if (kept.corrected == 0) return;
  printMessage(counted(kept.corrected, "figure was corrected by its source:",
                       "figures were corrected by their source:"));
  for (const std::string& correction : kept.corrections) printMessage("  " + correction);
  if (kept.corrections.size() < kept.corrected) printMessage("  and more");
}

}  // namespace

void importHistory(const CommandLine& line, StoreManager& store) {
  std::vector<PublishedTable> tables;
  std::size_t passedOver = 0;
  for (const std::string& operand : line.past) passedOver += addTables(operand, tables);
  for (const std::string& operand : line.operands) passedOver += addTables(operand, tables);
  if (tables.empty()) {
    throw Failure{Exit::network, "source", "there are no rates of any day in it; nothing was kept"};
  }
  const Kept kept = history(store).keep(tables, Platform::process().loop->wallSeconds());
  if (!kept.problem.empty()) {
    throw Failure{Exit::notWritten, "history", kept.problem + "; nothing was kept"};
  }
  printKept(line, tables, kept, passedOver);
  tell(kept, passedOver);
}

}  // namespace fexora::program
