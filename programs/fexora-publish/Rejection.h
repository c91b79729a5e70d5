// Why nothing was published. Thrown inside the program, shown by main.
#pragma once

#include <string>

namespace fexora::publish {

enum class Exit : int {
  done = 0,
  rejected = 2,   // wrong use, a source that cannot be read, or data that may not be published
  notWritten = 4  // the result could not be written
};

struct Rejection {
  Exit exit;
  std::string message;  // one line for people
};

inline Rejection rejection(std::string message) {
  return {Exit::rejected, std::move(message)};
}

}  // namespace fexora::publish
