// The rates of past days: tables as they were published, kept by day and source in one file that
// the processes of a container share.
//
// A table is kept as its source printed it, figure by figure, in the source's own base: an
// accountant finds the bank's 0.85815 again and not the 0.8581499999999999 that two quotients of
// dollar rates make of it. Tables of several sources stand beside each other, and no rate mixes
// two of them or two days.
//
// The file is "rates.sqlite" in ".fexora-history", a folder of its own in the container, which
// wakes no watcher of the store. Nothing is opened, made or loaded before the first call that needs
// it; what only reads makes no file. What another process keeps is seen by the next call. A table
// that does not have the checksum that it was kept with counts as missing, until it is kept again.
//
// One thread at a time, any one: a call may wait for the disk and, up to
// limits::kHistoryWaitSeconds, for another process. A window calls it on a thread of its own.
// Nothing here throws but std::bad_alloc, which changes nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/history/PastRate.h"
#include "fexora/history/PublishedTable.h"
#include "fexora/platform/base/Export.h"

namespace fexora {

class Files;
class Log;

// What keeping tables came to.
struct Kept {
  std::string problem;        // one line for people; set: nothing was kept, and all is as it was
  std::size_t tables = 0;     // new ones
  std::size_t figures = 0;    // in them, and new ones in tables that were there
  std::size_t corrected = 0;  // figures that the same source had printed otherwise for that day
  // The first limits::kHistoryCorrections of them: "GBP 2024-03-01: 0.85 instead of 0.86".
  std::vector<std::string> corrections;
  std::string notice;  // one line for people: a damaged history was kept aside and begun anew
};

struct HistorySummary {
  std::string problem;  // why nothing can be read; empty also where there is no file yet
  struct Line {
    std::string source;
    Day first{};
    Day last{};
    std::size_t tables = 0;
  };
  std::vector<Line> sources;
  std::uint64_t bytes = 0;
  std::size_t damaged = 0;  // tables that fail their checksum, and so count as missing
};

class FEXORA_API RateHistory {
 public:
  RateHistory() = default;
  RateHistory(const RateHistory&) = delete;
  RateHistory& operator=(const RateHistory&) = delete;
  virtual ~RateHistory();

  // Keeps all of them or none, on the disk when it returns. A table of a day and source that is
  // there already adds its codes to it, and its figures count instead of the older ones; those of a
  // day that is more than one before `now` (seconds since 1970) are kept aside then, with the
  // moment of the change (see replacedOf). The same table again changes nothing. A table with a
  // figure that is no finite positive decimal, without a base or with another one than before, or
  // of a day more than one ahead of `now` is a problem, as are more than limits::kHistoryTables at
  // once.
  virtual Kept keep(std::span<const PublishedTable> tables, double now) = 0;

  // The rate of a pair on a day: of the newest table at or before it, within `question`, that has
  // both codes, or leads to both by ratios of law that held on its own day. Nothing where there is
  // none; before the first table there never is one. A code and itself is no pair.
  virtual std::optional<PastRate> on(Day day, std::string_view from, std::string_view to,
                                     const PastQuestion& question) = 0;
  // The same for many destinations in one walk, in their order: what a currency costs that today's
  // answer lacks.
  virtual std::vector<std::optional<PastRate>> on(Day day, std::string_view from,
                                                  std::span<const std::string> to,
                                                  const PastQuestion& question) = 0;
  // One rate a published day, oldest first, no day made up. limits::kHistoryDays at most, the
  // newest. All of one source: of those that have more than half as many of the days as the one
  // that has most, the one that is wanted most.
  virtual std::vector<DayRate> between(Day first, Day last, std::string_view from,
                                       std::string_view to, const PastQuestion& question) = 0;

  // Every table of that day as it was printed, by source; the figures by code.
  virtual std::vector<PublishedTable> published(Day day) = 0;
  // Figures that were printed otherwise before, newest change first: "2024-03-01 ecb GBP 0.86".
  virtual std::vector<std::string> replacedOf(Day day) = 0;
  virtual HistorySummary summary() = 0;
  // Why the last call could not read or keep all of it: busy, full, damaged, of a later version,
  // read-only with a change that was cut short. One line, empty when it could.
  virtual const std::string& problem() const = 0;
};

// The history of a container: SQLite, opened by the private module "history" on first need.
// Whatever `files` refuses (see Files::mayChange) is not written. Both outlive it. Where the module
// is missing it has nothing and keeps nothing, and says so.
FEXORA_API std::unique_ptr<RateHistory> rateHistory(const std::string& containerPath, Files& files,
                                                    Log& log);

}  // namespace fexora
