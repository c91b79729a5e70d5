#include "programs/fexora/InputLines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "programs/shared/Failure.h"

namespace fexora::program {

// False at the end.
bool InputLines::fill() {
  if (!endAsked_.awaitInput()) return false;
  ssize_t count = 0;
  do {
    count = ::read(STDIN_FILENO, buffer_.data(), buffer_.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) {
    const std::string after = number_ > 0 ? " after line " + std::to_string(number_) : "";
    throw Failure{Exit::usage, "input",
                  "standard input cannot be read" + after + ": " + std::strerror(errno)};
  }
  at_ = 0;
  end_ = static_cast<std::size_t>(count);
  return count > 0;
}

std::optional<std::string> InputLines::next() {
  std::string line;
  bool hasAny = false;
  while (at_ < end_ || fill()) {
    if (!hasAny) ++number_;
    hasAny = true;
    const char* begin = buffer_.data() + at_;
    const char* end = std::find(begin, static_cast<const char*>(buffer_.data()) + end_, '\n');
    const auto length = static_cast<std::size_t>(end - begin);
    // With the CR of an end, and one more to tell it from a line that goes on.
    line.append(begin, std::min(length, kMostBytes + 2 - line.size()));
    at_ += length;
    if (at_ == end_) continue;
    ++at_;
    break;
  }
  if (!hasAny) return std::nullopt;
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

}  // namespace fexora::program
