#include "fexora/history/sqlite/SqliteHistory.h"

#include "fexora/history/HistoryFile.h"
#include "fexora/history/sqlite/HistorySchema.h"
#include "fexora/history/sqlite/Keeping.h"
#include "fexora/history/sqlite/Reading.h"
#include "fexora/history/sqlite/TakeOver.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/Log.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

std::string problemOf(const SqliteFault& fault) {
  const std::string history = "the history of rates ";
  switch (fault.kind) {
    case SqliteFault::Kind::busy:
      return history + "is being written by another process";
    case SqliteFault::Kind::damaged:
      return history + "is damaged (" + fault.reason + "); the next refresh begins a new one";
    case SqliteFault::Kind::full:
      return history + "does not fit on the disk";
    case SqliteFault::Kind::readOnly:
      return history + "may not be changed here: " + fault.reason;
    case SqliteFault::Kind::cutShort:
      return history +
             "cannot be read just now: a change of it was cut short, and the next refresh "
             "puts it right";
    case SqliteFault::Kind::moved:
      return history + "was replaced meanwhile";
    case SqliteFault::Kind::other:
      break;
  }
  return history + "cannot be used: " + fault.reason;
}

std::string damagedTables(std::size_t count) {
  return integerText(static_cast<std::int64_t>(count)) +
         (count == 1 ? " table of past rates is damaged and counts as missing"
                     : " tables of past rates are damaged and count as missing");
}

[[noreturn]] void rejectForm(HistoryForm form) {
  if (form == HistoryForm::later) {
    throw SqliteFault{SqliteFault::Kind::other, "it was written by a later version"};
  }
  throw SqliteFault{SqliteFault::Kind::damaged, "it holds something else"};
}

}  // namespace

SqliteHistory::SqliteHistory(std::string folder, Files& files, Log& log)
    : place_(std::move(folder), files), log_(log) {}

void SqliteHistory::sayProblem(const SqliteFault& fault) {
  problem_ = problemOf(fault);
}

bool SqliteHistory::openToRead() {
  if (database_ != nullptr && database_->isMoved()) database_.reset();
  if (database_ != nullptr) return true;
  if (!place_.hasContent()) return false;
  mayWrite_ = place_.mayWrite();
  isSound_ = false;
  auto opened =
      std::make_unique<Database>(place_.realPath(kHistoryFile),
                                 mayWrite_ ? Database::Access::writing : Database::Access::reading);
  const HistoryForm form = historyForm(*opened);
  if (form == HistoryForm::empty) return false;
  if (form != HistoryForm::current) rejectForm(form);
  database_ = std::move(opened);
  return true;
}

void SqliteHistory::read(const Work& work) {
  problem_.clear();
  try {
    if (openToRead()) work(*database_);
  } catch (const SqliteFault& fault) {
    database_.reset();
    sayProblem(fault);
  }
}

void SqliteHistory::openToWrite() {
  if (database_ != nullptr && (!mayWrite_ || database_->isMoved())) database_.reset();
  if (database_ == nullptr) {
    place_.make();
    mayWrite_ = true;
    isSound_ = false;
    database_ =
        std::make_unique<Database>(place_.realPath(kHistoryFile), Database::Access::writing);
  }
  // Of a new file. A table of some hundred rates is 6 KiB.
  database_->run("PRAGMA page_size = 16384");
  database_->run("PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA");
}

void SqliteHistory::writeOnce(const Work& work) {
  openToWrite();
  database_->run("BEGIN IMMEDIATE");
  if (database_->isMoved()) throw SqliteFault{SqliteFault::Kind::moved, {}};
  const HistoryForm form = historyForm(*database_);
  if (form == HistoryForm::empty) {
    makeHistory(*database_);
    takeOver();
  } else if (form != HistoryForm::current) {
    rejectForm(form);
  } else if (!isSound_) {
    Statement check(*database_, "PRAGMA quick_check(1)");
    if (!check.step() || check.text(0) != "ok") {
      throw SqliteFault{SqliteFault::Kind::damaged, "its pages contradict each other"};
    }
  }
  isSound_ = true;
  work(*database_);
  database_->run("COMMIT");
}

// What is still whole of the file that this process has just put aside.
void SqliteHistory::takeOver() {
  if (aside_.empty()) return;
  const std::size_t tables = takeTablesOver(place_.realPath(aside_), *database_);
  notice_ =
      "the history of rates was damaged: it is kept as " + aside_ + ", and a new one is begun";
  if (tables == 0) return;
  notice_ +=
      " with the tables of it that are whole: " + integerText(static_cast<std::int64_t>(tables));
}

// Puts the damaged file that is open aside; false, with a problem, where that cannot be.
bool SqliteHistory::beginAnew() {
  try {
    if (const auto name = place_.putAside(*database_)) aside_ = *name;
    database_.reset();
    return true;
  } catch (const SqliteFault& fault) {
    database_.reset();
    sayProblem(fault);
    return false;
  }
}

bool SqliteHistory::write(const Work& work) {
  problem_.clear();
  notice_.clear();
  aside_.clear();
  // Damaged, and while it was put aside another process began anew: the third time is the one.
  constexpr int kTimes = 3;
  for (int i = 1;; ++i) {
    try {
      writeOnce(work);
      return true;
    } catch (const SqliteFault& fault) {
      sayProblem(fault);
      if (database_ != nullptr) database_->rollBack();
      // A damaged head, too, may say that nobody should write.
      const bool isBad = fault.kind == SqliteFault::Kind::damaged ||
                         (fault.kind == SqliteFault::Kind::readOnly && place_.isWritable());
      const bool isDamaged = isBad && database_ != nullptr;
      const bool again = isDamaged || fault.kind == SqliteFault::Kind::moved;
      if (!again || i == kTimes) {
        database_.reset();
        return false;
      }
      if (!isDamaged) {
        database_.reset();
      } else if (!beginAnew()) {
        return false;
      }
    } catch (...) {
      if (database_ != nullptr) database_->rollBack();
      throw;
    }
  }
}

Kept SqliteHistory::keep(std::span<const PublishedTable> tables, double now) {
  Kept kept;
  kept.problem = problem_ = faultOf(tables, now);
  if (!problem_.empty() || tables.empty()) return kept;
  const bool isDone = write([&](Database& database) {
    kept = {};
    Keeping(database, now, kept).keep(tables);
  });
  if (isDone) {
    problem_.clear();
  } else {
    kept = {};
    kept.problem = problem_;
    notice_.clear();
  }
  kept.notice = notice_;
  if (!notice_.empty()) log_.write(notice_);
  return kept;
}

std::optional<PastRate> SqliteHistory::on(Day day, std::string_view from, std::string_view to,
                                          const PastQuestion& question) {
  const std::string one(to);
  return on(day, from, {&one, 1}, question).front();
}

std::vector<std::optional<PastRate>> SqliteHistory::on(Day day, std::string_view from,
                                                       std::span<const std::string> to,
                                                       const PastQuestion& question) {
  std::vector<std::optional<PastRate>> rates(to.size());
  read([&](Database& database) {
    const std::size_t damaged = ratesOn(database, day, from, to, question, rates);
    if (damaged > 0) problem_ = damagedTables(damaged);
  });
  return rates;
}

std::vector<DayRate> SqliteHistory::between(Day first, Day last, std::string_view from,
                                            std::string_view to, const PastQuestion& question) {
  std::vector<DayRate> rates;
  read([&](Database& database) {
    const std::size_t damaged = ratesBetween(database, first, last, from, to, question, rates);
    if (damaged > 0) problem_ = damagedTables(damaged);
  });
  return rates;
}

std::vector<PublishedTable> SqliteHistory::published(Day day) {
  std::vector<PublishedTable> tables;
  read([&](Database& database) {
    const std::size_t damaged = tablesOf(database, day, tables);
    if (damaged > 0) problem_ = damagedTables(damaged);
  });
  return tables;
}

std::vector<std::string> SqliteHistory::replacedOf(Day day) {
  std::vector<std::string> lines;
  read([&](Database& database) { lines = replacedLines(database, day); });
  return lines;
}

HistorySummary SqliteHistory::summary() {
  HistorySummary summary;
  read([&](Database& database) { summarize(database, summary); });
  summary.bytes = place_.bytes();
  summary.problem = problem_;
  return summary;
}

}  // namespace fexora
