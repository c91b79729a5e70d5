// Where the rates of past days come from that nobody has kept: sources with a name, and what their
// texts hold.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/fexora.h"

#include "programs/sources/NamedSources.h"
#include "programs/sources/PastTables.h"

namespace fexora::program {

// "ecb": the reference rates of the European Central Bank since 4 January 1999; "ecb-90": of the
// last ninety days. Nothing for any other name. Named step and where to ask, by the environment
// before what is built in.
std::optional<sources::SourceStep> pastStep(std::string_view name);

struct PastTablesRead {
  std::string problem;         // set: one line for people, and there are no tables
  std::size_t passedOver = 0;  // keys that are no currency code
  std::vector<PublishedTable> tables;
};
// Files are read here. Any thread.
PastTablesRead readPastTables(const sources::PastOperand& operand);

}  // namespace fexora::program
