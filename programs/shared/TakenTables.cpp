#include "programs/shared/TakenTables.h"

#include <utility>

#include "fexora/history/TableText.h"
#include "fexora/platform/text/AsciiCase.h"
#include "fexora/platform/text/NumberText.h"

#include "programs/sources/NamedSources.h"

namespace fexora::program {
namespace {

// The name by which past rates of such a table are chosen; see PastTables.h.
std::string sourceOf(const std::string& name, const RatesTable& table) {
  if (name == sources::kService || name == "ecb") return name;
  if (table.base == "EUR") return "ecb";
  return ascii::lowercased(table.base);
}

PublishedTable tableOf(const RatesTable& rates, std::string source) {
  const Date now(Platform::process().loop->wallSeconds());
  const double moment = rates.published.value_or(now).secondsSince1970();
  PublishedTable table{dayOfMoment(moment), std::move(source), rates.base, rates.figures};
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
  bundled.published = bundledRatesDay();
  tables.push_back(tableOf(bundled, "bundled"));
  std::erase_if(tables, [](const PublishedTable& table) { return table.figures.empty(); });
  return tables;
}

}  // namespace

std::vector<PublishedTable> takenTables(const std::string& name,
                                        const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> taken;
  taken.reserve(tables.size() + 1);
  for (const RatesTable& table : tables) taken.push_back(tableOf(table, sourceOf(name, table)));
  return withBundle(std::move(taken));
}

std::vector<PublishedTable> takenTables(const std::vector<std::string>& operands,
                                        const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> taken;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::string name = i < operands.size() ? operands[i] : std::string();
    if (tables[i].published) taken.push_back(tableOf(tables[i], sourceOf(name, tables[i])));
  }
  return withBundle(std::move(taken));
}

}  // namespace fexora::program
