#include "programs/fexora/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "fexora/platform/text/OneLine.h"

#include "programs/shared/JsonText.h"

namespace fexora::program {
namespace {

bool write(std::FILE* stream, std::string line) {
  line += '\n';
  return std::fwrite(line.data(), 1, line.size(), stream) == line.size() &&
         std::fflush(stream) == 0;
}

}  // namespace

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
