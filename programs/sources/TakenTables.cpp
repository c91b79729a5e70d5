#include "programs/sources/TakenTables.h"

#include <utility>

#include "fexora/history/TableText.h"
#include "fexora/platform/text/AsciiCase.h"
#include "fexora/platform/text/NumberText.h"

#include "programs/sources/NamedSources.h"

namespace fexora::sources {
namespace {

// The name by which past rates of such a table are chosen; see PastTables.h.
std::string sourceOf(const std::string& name, const RatesTable& table) {
  if (name == kService || name == "ecb") return name;
  if (table.base == "EUR") return "ecb";
  return ascii::lowercased(table.base);
}

PublishedTable tableOf(const RatesTable& rates, std::string source, Date published) {
  PublishedTable table{dayOfMoment(published.secondsSince1970()), std::move(source), rates.base,
                       rates.figures};
  if (table.figures.empty()) {
    table.base = "USD";
    for (const USDRateRef& rate : rates.rates) {
      table.figures.emplace_back(rate->code(), shortestText(rate->rate().doubleValue()));
    }
  }
  std::erase_if(table.figures, [](const auto& line) {
    return !isTableCode(line.first) || !isFigure(line.second);
  });
  return table;
}

std::vector<PublishedTable> withBundle(std::vector<PublishedTable> tables) {
  RatesTable bundled;
  bundled.rates = bundledUSDRates();
  tables.push_back(tableOf(bundled, "bundled", bundledRatesDay()));
  std::erase_if(tables, [](const PublishedTable& table) { return table.figures.empty(); });
  return tables;
}

}  // namespace

std::vector<PublishedTable> takenTables(const std::string& name,
                                        const std::vector<RatesTable>& tables, Date now) {
  std::vector<PublishedTable> taken;
  taken.reserve(tables.size() + 1);
  for (const RatesTable& table : tables) {
    taken.push_back(tableOf(table, sourceOf(name, table), table.published.value_or(now)));
  }
  return withBundle(std::move(taken));
}

std::vector<PublishedTable> takenTables(const std::vector<std::string>& operands,
                                        const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> taken;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::string name = i < operands.size() ? operands[i] : std::string();
    if (!tables[i].published) continue;
    taken.push_back(tableOf(tables[i], sourceOf(name, tables[i]), *tables[i].published));
  }
  return withBundle(std::move(taken));
}

}  // namespace fexora::sources
