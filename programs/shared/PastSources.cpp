#include "programs/shared/PastSources.h"

#include <array>
#include <utility>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/Library.h"

namespace fexora::program {
namespace {

struct NamedPast {
  std::string_view name;
  const char* variable;  // of the environment, that names another address
  const char* address;
};

constexpr std::array<NamedPast, 2> kNamed = {{
    {"ecb", "FEXORA_SOURCES_ECB_HISTORY",
     "https://www.ecb.europa.eu/stats/eurofxref/eurofxref-hist.xml"},
    {"ecb-90", "FEXORA_SOURCES_ECB_90",
     "https://www.ecb.europa.eu/stats/eurofxref/eurofxref-hist-90d.xml"},
}};

}  // namespace

std::optional<sources::SourceStep> pastStep(std::string_view name) {
  for (const NamedPast& named : kNamed) {
    if (name != named.name) continue;
    return sources::SourceStep{std::string(name),
                               {environment(named.variable).value_or(named.address)}};
  }
  return std::nullopt;
}

PastTablesRead readPastTables(const sources::PastOperand& operand) {
  PastTablesRead read;
  void* const entry = moduleEntry("sources", "fexora_past_tables", read.problem);
  if (entry == nullptr) {
    read.problem = "files of past rates cannot be read: " + read.problem;
    return read;
  }
  sources::PastReading reading;
  reinterpret_cast<sources::ReadPastTables*>(entry)(
      operand, [&read](PublishedTable table) { read.tables.push_back(std::move(table)); }, reading);
  read.passedOver = reading.passedOver;
  read.problem = std::move(reading.problem);
  if (!read.problem.empty()) read.tables.clear();
  return read;
}

}  // namespace fexora::program
