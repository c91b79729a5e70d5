// What the module "sources" offers to programs that seldom read any.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "fexora/platform/base/Export.h"
#include "fexora/store/KeptRates.h"

namespace fexora::sources {

struct Operand {
  std::string name;                 // as the user knows it: a file, "-" or the name of a source
  std::optional<std::string> text;  // what an address brought
};

// The table of each source, in their order; or, without any, why one of them is rejected. Files are
// of origin `file`, texts of origin `service`.
struct Reading {
  std::vector<RatesTable> tables;
  std::string problem;
  std::size_t passedOver = 0;  // keys that are no code
};

// Rates that name no day are of an unknown one.
using ReadSources = void(const std::vector<Operand>& operands, Reading& reading);

}  // namespace fexora::sources

extern "C" FEXORA_API fexora::sources::ReadSources fexora_sources_module;
