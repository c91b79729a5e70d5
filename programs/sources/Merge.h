// Several sources put together.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "programs/sources/Source.h"

namespace fexora::sources {

struct MergedRate {
  double rate = 0;
  const std::string* source = nullptr;  // its name and the line there, for messages
  std::size_t line = 0;
};

// By code.
using MergedRates = std::map<std::string, MergedRate>;

// Earlier sources win: later ones only add the codes that are missing. The result refers to the
// sources.
MergedRates merge(const std::vector<Source>& sources);

// "eur-reference.xml 2026-09-11, usd.json 2026-09-29", without folders and queries: what an answer
// says as its source.
std::string namesOf(const std::vector<Source>& sources);

// "2026-09-29"
std::string dayText(Date date);

}  // namespace fexora::sources
