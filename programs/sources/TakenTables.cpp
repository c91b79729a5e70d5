#include "programs/sources/TakenTables.h"

#include <utility>

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

std::vector<PublishedTable> withBundle(std::vector<PublishedTable> tables) {
  RatesTable bundled;
  bundled.rates = bundledUSDRates();
  tables.push_back(takenTable(bundled, "bundled", bundledRatesDay()));
  std::erase_if(tables, [](const PublishedTable& table) { return table.figures.empty(); });
  return tables;
}

}  // namespace

std::vector<PublishedTable> takenTables(const std::string& name,
                                        const std::vector<RatesTable>& tables, Date now) {
  std::vector<PublishedTable> taken;
  taken.reserve(tables.size() + 1);
  for (const RatesTable& table : tables) {
    taken.push_back(takenTable(table, sourceOf(name, table), now));
  }
  return withBundle(std::move(taken));
}

std::vector<PublishedTable> takenTables(const std::vector<std::string>& operands,
                                        const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> taken;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::string name = i < operands.size() ? operands[i] : std::string();
    if (!tables[i].published) continue;
    taken.push_back(takenTable(tables[i], sourceOf(name, tables[i]), *tables[i].published));
  }
  return withBundle(std::move(taken));
}

}  // namespace fexora::sources
