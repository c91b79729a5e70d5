// A compiled gettext catalogue: refused with a reason, or a table of UTF-8 texts within a bound.
#include "fexora/platform/foundation/GettextStrings.h"
#include "fexora/platform/foundation/Limits.h"
#include "fexora/platform/foundation/Utf8.h"

#include "fuzz/Target.h"

namespace fexora::fuzz {
namespace {

void run(std::string_view bytes) {
  const StringTableResult read = parseGettextCatalogue(bytes);
  require(read.table.has_value() == read.error.empty(), "a refusal has a reason, a table none");
  if (!read.table) return;
  std::size_t size = 0;
  for (const auto& [key, text] : *read.table) {
    size += key.size() + text.size();
    require(isUtf8(key) && isUtf8(text), "texts are UTF-8");
    require(!key.empty() && !text.empty(), "an entry has a key and a text");
    const std::string both = key + text;
    require(both.find('\0') == std::string::npos, "of a plural only the singular is kept");
    require(key.find('\4') == std::string::npos, "messages with a context are left out");
  }
  require(size <= limits::kStringsFileBytes, "a table is bounded");
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
