// The history of rates in an SQLite file.
//
// At rest there is one file, whatever was cut short before (rollback journal, synchronous EXTRA):
// what was kept is on the disk, and a copy of the file is a backup. A reader makes no files.
#pragma once

#include <functional>
#include <memory>

#include "fexora/history/RateHistory.h"
#include "fexora/history/sqlite/HistoryPlace.h"

namespace fexora {

class SqliteHistory final : public RateHistory {
 public:
  SqliteHistory(std::string folder, Files& files, Log& log);

  Kept keep(std::span<const PublishedTable> tables, double now) override;
  std::optional<PastRate> on(Day day, std::string_view from, std::string_view to,
                             const PastQuestion& question) override;
  std::vector<std::optional<PastRate>> on(Day day, std::string_view from,
                                          std::span<const std::string> to,
                                          const PastQuestion& question) override;
  std::vector<DayRate> between(Day first, Day last, std::string_view from, std::string_view to,
                               const PastQuestion& question) override;
  std::vector<PublishedTable> published(Day day) override;
  std::vector<std::string> replacedOf(Day day) override;
  HistorySummary summary() override;
  const std::string& problem() const override { return problem_; }

 private:
  using Work = std::function<void(Database& database)>;

  // Calls `work` with the open file, unless there is none or it cannot be read.
  void read(const Work& work);
  // Calls `work` in a transaction; false, with a problem, when it has not come to the disk. Of a
  // damaged file, it is called once more with a new one.
  bool write(const Work& work);
  void writeOnce(const Work& work);
  bool beginAnew();
  void takeOver();

  // Whether there is a file of ours, open.
  bool openToRead();
  void openToWrite();
  void sayProblem(const SqliteFault& fault);

  HistoryPlace place_;
  Log& log_;
  std::unique_ptr<Database> database_;
  bool mayWrite_ = false;
  bool isSound_ = false;  // by a check of this process, or made by it
  std::string problem_;
  std::string notice_;
  std::string aside_;  // what the write that is going on has put aside
};

}  // namespace fexora
