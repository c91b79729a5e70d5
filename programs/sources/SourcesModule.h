// What the module "sources" offers to a program that seldom reads any.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/values/Date.h"
#include "fexora/records/Response.h"

namespace fexora::sources {

struct Operand {
  std::string name;                 // as the user knows it: a file, "-" or an address
  std::optional<std::string> text;  // what the address brought
};

// The answer that the sources make together, the first one's day as its date; or, with a null
// answer, why one of them is rejected.
struct Reading {
  std::shared_ptr<Response> answer;
  std::string problem;
};

// Rates that name no day are of the day their file was changed, else of `today`.
using ReadSources = void(const std::vector<Operand>& operands, Date today, Reading& reading);

}  // namespace fexora::sources

extern "C" FEXORA_API fexora::sources::ReadSources fexora_sources_module;
