// What the program prints: results on standard output, messages on standard error.
#pragma once

#include <string>
#include <string_view>

#include "programs/shared/Failure.h"

namespace fexora::program {

// One result line; throws a Failure when standard output does not take it.
void printLine(std::string_view line);

// "fexora: message" in one line of at most 500 characters.
void printMessage(std::string_view message);

// The message, and with `json` the error as an object on standard output.
void printFailure(const Failure& failure, bool json);

}  // namespace fexora::program
