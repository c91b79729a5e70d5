#include "programs/sources/Merge.h"

namespace fexora::sources {

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
    names += source.name.substr(source.name.rfind('/') + 1);  // npos + 1 is 0
    names += " " + dayText(source.date);
  }
  return names;
}

std::string dayText(Date date) {
  return date.isoText().value_or("").substr(0, 10);
}

}  // namespace fexora::sources
