// A host's .strings file: what was read, written out plainly, reads the same.
#include <string>

#include "fexora/platform/foundation/StringsFile.h"

#include "fuzz/Target.h"

namespace fexora::fuzz {
namespace {

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + "\"";
}

void run(std::string_view bytes) {
  const StringTableResult read = parseStringsFile(bytes);
  require(read.table.has_value() == read.error.empty(), "a refusal has a reason, a table none");
  if (!read.table) return;
  std::string written;
  for (const auto& [key, text] : *read.table) written += quoted(key) + "=" + quoted(text) + ";\n";
  const StringTableResult again = parseStringsFile(written);
  require(again.table == read.table, "a table that is written out reads the same");
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
