// The form of the history's file, version 1: what is in it, how it is made and how it is told from
// others. docs/file-formats.md has it for people.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "fexora/history/PublishedTable.h"
#include "fexora/history/sqlite/Database.h"

namespace fexora {

enum class HistoryForm : std::uint8_t {
  empty,    // nothing was ever written: to be made
  current,  // ours
  later,    // of a later version: neither read nor written
  foreign,  // none of ours: damaged, or put there by somebody else
};

// Throws a SqliteFault, as all that asks the file.
HistoryForm historyForm(Database& database);
// In a transaction.
void makeHistory(Database& database);

// One row of "published".
struct HistoryRow {
  std::string_view day;
  std::string_view source;
  std::string_view base;
  std::string_view figures;
  std::int64_t taken = 0;
};

// One row of "replaced".
struct ReplacedRow {
  std::string_view day;
  std::string_view source;
  std::string_view code;
  std::string_view figure;
  std::int64_t taken = 0;
  std::int64_t until = 0;
};

// CRC-32 over all columns as text, day, source, base, taken and figures, with a NUL between them.
std::int64_t checksum(const HistoryRow& row);
// In the order of the columns.
std::int64_t checksum(const ReplacedRow& row);

// A row of the columns "day, source, base, figures, taken, sum"; false when its checksum is another
// one, or its day is none.
bool readRow(Statement& statement, HistoryRow& row, Day& day);
// The source of such a row, before it is known to be whole: SQLite has not gone for its figures
// yet, so that rows which nobody asks for are passed over soon.
std::string_view sourceOf(Statement& statement);

}  // namespace fexora
