#include "fexora/history/TakenTable.h"

#include <utility>

#include "fexora/history/TableText.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {

PublishedTable takenTable(const RatesTable& rates, std::string source, Date otherwise) {
  const Date published = rates.published.value_or(otherwise);
  PublishedTable table{dayOfMoment(published.secondsSince1970()), std::move(source), rates.base,
                       rates.figures};
  if (table.figures.empty()) {
    table.base = "USD";
    for (const USDRateRef& rate : rates.rates) {
      if (rate == nullptr) continue;
      table.figures.emplace_back(rate->code(), shortestText(rate->rate().doubleValue()));
    }
  }
  std::erase_if(table.figures, [](const auto& line) {
    return !isTableCode(line.first) || !isFigure(line.second);
  });
  return table;
}

}  // namespace fexora
