// Published tables of past days, for the history: one a file, or the years of the European Central
// Bank's in one, read in pieces.
//
// Figures come as they were printed, in the source's own base, and so does the source's name: "ecb"
// for the bank's reference rates (XML, or CSV with a line a day), the base in lower case for daily
// tables in JSON ("usd"), "service" for the answer of a rates service. A key that is no currency
// code is passed over and counted; anything else that cannot be used rejects the file, with the
// line. Rates that name no day are rejected.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "fexora/history/PublishedTable.h"
#include "fexora/platform/base/Export.h"

namespace fexora::sources {

struct PastOperand {
  std::string name;                 // as the user knows it: a file, "-" or an address
  std::optional<std::string> text;  // what the address brought
};

struct PastReading {
  std::string problem;         // set: the operand is rejected, and what was handed out is void
  std::size_t passedOver = 0;  // keys that are no code
};

// Called with table after table, each once.
using TakeTable = std::function<void(PublishedTable table)>;
using ReadPastTables = void(const PastOperand& operand, const TakeTable& take,
                            PastReading& reading);

// The three forms. They throw a SourceProblem (Source.h).
// The text in pieces: the next one, empty at the end.
using NextPiece = std::function<std::string_view()>;
void readEuroDays(const std::string& name, const NextPiece& next, const TakeTable& take,
                  PastReading& reading);
void readEuroLines(const std::string& name, const NextPiece& next, const TakeTable& take,
                   PastReading& reading);
void readDailyJson(const std::string& name, std::string text, const TakeTable& take,
                   PastReading& reading);

}  // namespace fexora::sources

extern "C" FEXORA_API fexora::sources::ReadPastTables fexora_past_tables;
