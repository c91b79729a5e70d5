#include "programs/fexora/KeptAnswers.h"

#include <algorithm>

#include "fexora/history/TableText.h"
#include "fexora/platform/text/NumberText.h"

#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/sources/NamedSources.h"

namespace fexora::program {
namespace {

Date now() {
  return Date(Platform::process().loop->wallSeconds());
}

// The name by which past rates of such a table are chosen; see PastTables.h.
std::string sourceOf(const std::string& name, const RatesTable& table) {
  if (name == sources::kService || name == "ecb") return name;
  if (table.base == "EUR") return "ecb";
  std::string base = table.base;
  std::transform(base.begin(), base.end(), base.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return base;
}

// As it was printed; what no table takes is left out.
PublishedTable tableOf(const RatesTable& rates, std::string source) {
  const double moment = rates.published.value_or(now()).secondsSince1970();
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

PublishedTable bundledTable() {
  RatesTable bundled;
  bundled.rates = bundledUSDRates();
  bundled.published = bundledRatesDay();
  return tableOf(bundled, "bundled");
}

void keep(std::vector<PublishedTable> tables) {
  tables.push_back(bundledTable());
  std::erase_if(tables, [](const PublishedTable& table) { return table.figures.empty(); });
  const Kept kept = history(storeManager()).keep(tables, now().secondsSince1970());
  if (!kept.notice.empty()) printMessage("warning: " + kept.notice);
  if (!kept.problem.empty()) {
    printMessage("warning: the rates are not kept for later: " + kept.problem);
  }
}

}  // namespace

void keepTables(const std::string& name, const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> published;
  for (const RatesTable& table : tables) {
    published.push_back(tableOf(table, sourceOf(name, table)));
  }
  keep(std::move(published));
}

void keepSources(const std::vector<std::string>& operands, const std::vector<RatesTable>& tables) {
  std::vector<PublishedTable> published;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::string name = i < operands.size() ? operands[i] : std::string();
    // Of an unknown day nothing can be said later.
    if (tables[i].published) published.push_back(tableOf(tables[i], sourceOf(name, tables[i])));
  }
  keep(std::move(published));
}

}  // namespace fexora::program
