// The rates to publish, put together from the sources and held against the published ones.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "programs/fexora-publish/Options.h"
#include "programs/fexora-publish/Source.h"

namespace fexora::publish {

struct PublishedRate {
  double rate = 0;
  const std::string* source = nullptr;  // its name and the line there, for messages
  std::size_t line = 0;
};

using PublishedRates = std::map<std::string, PublishedRate>;

// Rejects a source older than --max-age on the day `today`, and one of a day after tomorrow.
void checkAge(const Options& options, const Source& source, Date today);

// Earlier sources win. The result refers to the sources.
PublishedRates merge(const std::vector<Source>& sources);

// Rejects fewer codes than --min-count, none at all, and more than the library reads.
void checkCount(const Options& options, const PublishedRates& rates);

// Rejects a change of more than --max-jump against `published`, the text of the published file.
void checkJump(const Options& options, const PublishedRates& rates, const std::string& published);

// The rates service's answer. The same rates from the same sources give the same bytes: "updated"
// is the day of the first source, in seconds since 1970, and the rates stand in the order of their
// codes.
std::string answerText(const std::vector<Source>& sources, const PublishedRates& rates);

}  // namespace fexora::publish
