// Several sources put together.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fexora/rates/AnswerCheck.h"

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

// As the library takes it, undated where the source is.
RatesTable tableOf(const Source& source, RatesAnswer::Origin origin);

// Two sources that say of one code what cannot both be: a line for people, which names them.
// Nothing when all agree.
std::optional<std::string> contradictionIn(const std::vector<Source>& sources);

// "eur-reference.xml 2026-09-11, usd.json 2026-09-29", without folders and queries: what an answer
// says as its source.
std::string namesOf(const std::vector<Source>& sources);

// The last part of a path; of an address without its query, and its host where it has no path.
std::string shortName(std::string name);

// "2026-09-29"
std::string dayText(Date date);

}  // namespace fexora::sources
