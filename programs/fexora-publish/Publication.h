// The rates to publish, put together from the sources and held against the published ones.
#pragma once

#include <string>
#include <vector>

#include "programs/fexora-publish/Options.h"
#include "programs/sources/Merge.h"

namespace fexora::publish {

using sources::MergedRates;
using sources::Source;

// Rejects a source older than --max-age on the day `today`, and one of a day after tomorrow.
void checkAge(const Options& options, const Source& source, Date today);

// Rejects fewer codes than --min-count, none at all, and more than the library reads.
void checkCount(const Options& options, const MergedRates& rates);

// Holds the rates against `published`, the text of the published file, as the library's clients do
// (see rates/AnswerCheck.h), with --max-jump for official money on any one day: rejects what they
// would not take, an official code that has vanished, and a rate that they would leave out.
void checkChange(const Options& options, const std::vector<Source>& sources,
                 const MergedRates& rates, const std::string& published, Date today);

// The rates service's answer. The same rates from the same sources give the same bytes: "updated"
// is the day of the first source, in seconds since 1970, and the rates stand in the order of their
// codes.
std::string answerText(const std::vector<Source>& sources, const MergedRates& rates);

}  // namespace fexora::publish
