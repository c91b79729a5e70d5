// What keeping tables does to the history's file, within a transaction of the caller's.
#pragma once

#include <span>
#include <string>

#include "fexora/history/RateHistory.h"
#include "fexora/history/sqlite/Database.h"
#include "fexora/history/sqlite/HistorySchema.h"

namespace fexora {

// Why the tables are not kept, as one line; empty: they may be.
std::string faultOf(std::span<const PublishedTable> tables, double now);

// Throws a SqliteFault or std::bad_alloc; then the transaction is to be rolled back.
class Keeping {
 public:
  Keeping(Database& database, double now, Kept& kept);

  void keep(std::span<const PublishedTable> tables);

 private:
  void keep(const PublishedTable& table);
  // What there is already for the table's day and source; `row` refers to find_.
  bool find(const std::string& day, const PublishedTable& table, HistoryRow& row);
  PublishedTable merged(const PublishedTable& table, const HistoryRow& old);
  void replace(const HistoryRow& old, std::string_view code, std::string_view figure);

  std::int64_t now_;
  Day settled_;  // days up to here are no longer corrected by every answer of a service
  Kept& kept_;
  Statement find_;
  Statement put_;
  Statement replace_;
};

}  // namespace fexora
