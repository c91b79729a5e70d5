#include "programs/fexora/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "programs/fexora/JsonText.h"

namespace fexora::program {
namespace {

constexpr std::size_t kMessageCharacters = 500;

bool write(std::FILE* stream, std::string line) {
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), stream) == line.size() &&
         std::fflush(stream) == 0;
}

}  // namespace

// One line, whatever the message quotes from the outside; cut between characters.
std::string oneLine(std::string_view message) {
  std::string line;
  std::size_t characters = 0;
  for (const char c : message) {
    const auto byte = static_cast<unsigned char>(c);
    const bool continues = (byte & 0xC0U) == 0x80U;
    if (!continues && ++characters > kMessageCharacters) break;
    line += byte < 0x20 || byte == 0x7F ? ' ' : c;
  }
  return line;
}

void printLine(std::string_view line) {
  if (write(stdout, std::string(line))) return;
  throw Failure{Exit::notWritten, "output",
                std::string("standard output does not take the result: ") + std::strerror(errno)};
}

void printMessage(std::string_view message) {
  write(stderr, oneLine("fexora: " + std::string(message)));
}

void printFailure(const Failure& failure, bool json) {
  printMessage(failure.message);
  if (!json) return;
  JsonText text;
  text.beginObject().key("error").beginObject();
  text.key("kind").string(failure.kind).key("message").string(oneLine(failure.message));
  text.endObject().endObject();
  write(stdout, text.text());
}

}  // namespace fexora::program
