#include "programs/fexora/HistoryImport.h"

#include <array>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/Library.h"
#include "fexora/platform/network/ShownAddress.h"

#include "programs/fexora/FromSources.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/shared/Failure.h"
#include "programs/shared/JsonText.h"
#include "programs/sources/PastTables.h"

namespace fexora::program {
namespace {

struct NamedPast {
  std::string_view name;
  const char* variable;  // of the environment, that names another address
  const char* address;
};

// Of the European Central Bank: since 4 January 1999, and the last ninety days.
constexpr std::array<NamedPast, 2> kNamed = {{
    {"ecb", "FEXORA_SOURCES_ECB_HISTORY",
     "https://www.ecb.europa.eu/stats/eurofxref/eurofxref-hist.xml"},
    {"ecb-90", "FEXORA_SOURCES_ECB_90",
     "https://www.ecb.europa.eu/stats/eurofxref/eurofxref-hist-90d.xml"},
}};

std::string addressOf(const std::string& operand) {
  for (const NamedPast& named : kNamed) {
    if (operand == named.name) return environment(named.variable).value_or(named.address);
  }
  return isAddress(operand) ? operand : std::string();
}

sources::ReadPastTables& module() {
  std::string reason;
  void* const entry = moduleEntry("sources", "fexora_past_tables", reason);
  if (entry == nullptr) {
    throw Failure{Exit::network, "source", "files of past rates cannot be read: " + reason};
  }
  return *reinterpret_cast<sources::ReadPastTables*>(entry);
}

// Adds the operand's tables; how many keys were passed over.
std::size_t addTables(const std::string& operand, std::vector<PublishedTable>& tables) {
  sources::PastOperand source{operand, std::nullopt};
  if (const std::string address = addressOf(operand); !address.empty()) {
    source = {shownAddress(address), textFrom({operand, {address}, operand == address})};
  }
  sources::PastReading reading;
  const auto take = [&tables](PublishedTable table) { tables.push_back(std::move(table)); };
  module()(source, take, reading);
  if (!reading.problem.empty()) {
    throw Failure{Exit::network, "source", reading.problem + "; nothing was kept"};
  }
  return reading.passedOver;
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
