// The day whose rates a conversion takes, as the options and the lines of standard input name it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/fexora.h"

#include "programs/fexora/CommandLine.h"

namespace fexora::program {

// In UTC.
Day today();

struct PastDay {
  Day asked{};  // as it was named
  Day day{};    // the newest that counts: the one before, where that was asked for
  PastQuestion question;
};

// "2024-03-01", "today" or "yesterday". Throws a Failure of kind "usage" that names `option` for
// what is no day and for one to come.
Day dayFromText(std::string_view option, std::string_view typed);
// What the options ask for; nothing without --on and --before. Throws a Failure.
std::optional<PastDay> pastDayOf(const CommandLine& line);
// The same for another day.
PastDay pastDayOf(const CommandLine& line, Day day);
// The sources that --source names.
PastQuestion pastQuestionOf(const CommandLine& line);

// The history in the store's folder, whether there is one or not. Lives as long as the process.
RateHistory& history(StoreManager& store);

// "11 September", with the year when it is not this one.
std::string shownDay(Day day);
// "Friday 11 September", with the year when it is not this one.
std::string weekdayText(Day day);
// Why there is no rate of `last` or before it: what the history holds instead, after "; ".
std::string whatIsKept(RateHistory& rates, Day last);

}  // namespace fexora::program
