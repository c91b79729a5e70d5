#include "programs/sources/Merge.h"

#include <algorithm>

namespace fexora::sources {

std::string shortName(std::string name) {
  if (name.find("://") != std::string::npos) {
    name.resize(std::min(name.find('?'), name.size()));
    while (name.ends_with('/')) name.pop_back();
  }
  return name.substr(name.rfind('/') + 1);  // npos + 1 is 0
}

MergedRates merge(const std::vector<Source>& sources) {
  MergedRates rates;
  for (const Source& source : sources) {
    for (const SourceRate& rate : source.rates) {
      rates.try_emplace(rate.code, MergedRate{rate.rate, &source.name, rate.line});
    }
  }
  return rates;
}

RatesTable tableOf(const Source& source, RatesAnswer::Origin origin) {
  RatesTable table;
  table.source = shortName(source.name);
  table.origin = origin;
  table.base = source.base;
  if (source.isDated) table.published = source.date;
  for (const SourceRate& rate : source.rates) {
    table.rates.push_back(USDRate::make(rate.rate, rate.code));
    if (rate.code != source.base) table.figures.emplace_back(rate.code, rate.figure);
  }
  return table;
}

std::optional<std::string> contradictionIn(const std::vector<Source>& sources) {
  std::vector<RatesTable> tables;
  for (const Source& source : sources) {
    tables.push_back(tableOf(source, RatesAnswer::Origin::file));
    for (const RatesTable& earlier : tables) {
      const auto reason = contradiction(earlier, tables.back());
      if (reason) return earlier.source + ", " + tables.back().source + ": " + reason->sentence();
    }
  }
  return std::nullopt;
}

std::string namesOf(const std::vector<Source>& sources) {
  std::string names;
  for (const Source& source : sources) {
    names += names.empty() ? "" : ", ";
    names += shortName(source.name) + " " + dayText(source.date);
  }
  return names;
}

std::string dayText(Date date) {
  return date.isoText().value_or("").substr(0, 10);
}

}  // namespace fexora::sources
