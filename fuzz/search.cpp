// The search over a catalogue and names of the fuzzer's choice, compared with the plain one of the
// tests. The input is a line with the query, a line with the limit and the places of currencies to
// exclude, then a line a currency: code, tab, name.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "fexora/catalogue/CurrencySearch.h"
#include "fexora/platform/plist/PlistText.h"

#include "fuzz/SlowSearch.h"
#include "fuzz/Target.h"
#include "tests/support/TestCatalogue.h"

namespace fexora::fuzz {
namespace {

using Strings = std::map<std::string, std::string, std::less<>>;

// The codes in order, and the names of those that have one.
std::pair<std::vector<std::string>, Strings> currenciesIn(std::string_view lines) {
  std::pair<std::vector<std::string>, Strings> result;
  constexpr std::size_t kMost = 40;
  while (!lines.empty() && result.first.size() < kMost) {
    const auto line = takeLine(lines);
    const auto tab = line.find('\t');
    std::string code(line.substr(0, tab));
    if (!isPlistText(code)) continue;  // no catalogue could hold it
    if (tab != std::string_view::npos) result.second.emplace(code, line.substr(tab + 1));
    result.first.push_back(std::move(code));
  }
  return result;
}

std::vector<CurrencyRef> excluded(std::string_view places, const std::vector<CurrencyRef>& from) {
  std::vector<CurrencyRef> list;
  for (const char c : places) {
    const auto place = static_cast<std::size_t>(static_cast<std::uint8_t>(c)) % 64U;
    list.push_back(place < from.size() ? from[place] : nullptr);
  }
  return list;
}

void run(std::string_view input) {
  const auto query = takeLine(input);
  const auto choices = takeLine(input);
  auto [codes, names] = currenciesIn(input);
  if (codes.empty()) return;
  test::TestCatalogue catalogue(codes);
  catalogue.desktop.strings.setTable(std::move(names));
  const CurrencyManager& manager = catalogue.manager();
  const int limit = smallNumber(choices, 20);
  const auto exclude =
      excluded(choices.empty() ? choices : choices.substr(1), manager.currencies());
  const test::SlowSearch slow(manager.currencies(), catalogue.desktop.platform);
  const auto found = manager.currenciesForString(query, limit, exclude);
  require(found == slow.run(query, limit, exclude), "the search finds what the plain one finds");
  require(found == manager.currenciesForString(query, limit, exclude), "and finds it again");
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
