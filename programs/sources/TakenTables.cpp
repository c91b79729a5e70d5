#include "programs/sources/TakenTables.h"

#include <algorithm>

#include "fexora/platform/text/AsciiCase.h"

#include "programs/sources/NamedSources.h"

namespace fexora::sources {
namespace {

// The name by which past rates of such a table are chosen; see PastTables.h.
std::string sourceOf(const std::string& name, const RatesTable& table) {
  if (name == kService || name == "ecb") return name;
  if (table.base == "EUR") return "ecb";
  return ascii::lowercased(table.base);
}

}  // namespace

std::vector<PublishedTable> takenTables(const std::vector<std::string>& names,
                                        const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> taken;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::string& name = names[std::min(i, names.size() - 1)];
    if (!tables[i].published) continue;
    taken.push_back(takenTable(tables[i], sourceOf(name, tables[i]), *tables[i].published));
  }
  RatesTable bundled;
  bundled.rates = bundledUSDRates();
  taken.push_back(takenTable(bundled, "bundled", bundledRatesDay()));
  std::erase_if(taken, [](const PublishedTable& table) { return table.figures.empty(); });
  return taken;
}

std::string nameInHistory(std::string_view name) {
  return std::string(name == "exchange-api" ? "usd" : name);
}

}  // namespace fexora::sources
