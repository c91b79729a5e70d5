#include "programs/sources/Merge.h"

#include <algorithm>

namespace fexora::sources {

namespace {

// The last part of a path; of an address without its query, and its host where it has no path.
std::string shortName(std::string name) {
  if (name.find("://") != std::string::npos) {
    name.resize(std::min(name.find('?'), name.size()));
    while (name.ends_with('/')) name.pop_back();
  }
  return name.substr(name.rfind('/') + 1);  // npos + 1 is 0
}

}  // namespace

MergedRates merge(const std::vector<Source>& sources) {
  MergedRates rates;
  for (const Source& source : sources) {
    for (const SourceRate& rate : source.rates) {
      rates.try_emplace(rate.code, MergedRate{rate.rate, &source.name, rate.line});
    }
  }
  return rates;
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
