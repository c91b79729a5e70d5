// Why a command ends without having done its work. Thrown inside the program, shown by main.
#pragma once

#include <string>

namespace fexora::program {

enum class Exit : int {
  done = 0,
  noCurrency = 1,  // no such currency, or no rate
  usage = 2,       // wrong use, or an amount that is no number
  network = 3,     // network or service
  notWritten = 4   // what had to be written was not, or the folder cannot be used
};

struct Failure {
  Exit exit;
  const char* kind;     // a stable word for programs
  std::string message;  // one line for people
};

// Wrong use of the program.
inline Failure usageFailure(std::string message) {
  return {Exit::usage, "usage", std::move(message)};
}

}  // namespace fexora::program
