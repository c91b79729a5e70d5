// Rates from files and addresses in any form that is published.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// Whether the operand is an address and not a file.
bool isAddress(const std::string& operand);

// The answer that the sources make together; addresses are asked one after the other, with the
// bounds of a request for rates. Throws a Failure of kind "source", or of the request's. Main
// thread.
std::shared_ptr<Response> answerFromSources(const std::vector<std::string>& operands);

}  // namespace fexora::program
