#include "fexora/history/sqlite/TakeOver.h"

#include <memory>

#include "fexora/history/sqlite/HistorySchema.h"

namespace fexora {
namespace {

// What a damaged file cannot give, it has not.
template <class Made, class... From>
std::unique_ptr<Made> madeIfWhole(From&&... from) {
  try {
    return std::make_unique<Made>(std::forward<From>(from)...);
  } catch (const SqliteFault&) {
    return nullptr;
  }
}

bool nextIfWhole(Statement& rows) {
  try {
    return rows.step();
  } catch (const SqliteFault&) {
    return false;
  }
}

std::size_t takeTables(Database& damaged, const char* sql, Statement& put) {
  const auto rows = madeIfWhole<Statement>(damaged, sql);
  std::size_t count = 0;
  HistoryRow row;
  Day day{};
  while (rows != nullptr && nextIfWhole(*rows)) {
    if (!readRow(*rows, row, day)) continue;
    put.reset();
    put.bind(1, row.day).bind(2, row.source).bind(3, row.base).bind(4, row.figures);
    put.bind(5, row.taken).bind(6, checksum(row));
    // Without a row where the other walk has put it already.
    if (put.step()) ++count;
  }
  return count;
}

void takeReplaced(Database& damaged, Database& into) {
  const auto rows = madeIfWhole<Statement>(
      damaged, "SELECT day, source, code, figure, taken, until, sum FROM replaced");
  Statement put(into, "INSERT INTO replaced VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)");
  while (rows != nullptr && nextIfWhole(*rows)) {
    const ReplacedRow row{rows->text(0), rows->text(1),   rows->text(2),
                          rows->text(3), rows->number(4), rows->number(5)};
    if (checksum(row) != rows->number(6)) continue;
    put.reset();
    put.bind(1, row.day).bind(2, row.source).bind(3, row.code).bind(4, row.figure);
    put.bind(5, row.taken).bind(6, row.until).bind(7, checksum(row));
    put.step();
  }
}

}  // namespace

std::size_t takeTablesOver(const std::string& damagedFile, Database& into) {
  const auto damaged = madeIfWhole<Database>(damagedFile, Database::Access::reading);
  if (damaged == nullptr) return 0;
  Statement put(into,
                "INSERT INTO published VALUES (?1, ?2, ?3, ?4, ?5, ?6) "
                "ON CONFLICT DO NOTHING RETURNING 1");
  // By the tables' own order, not by that of an index that may be damaged by itself.
  std::size_t count = 0;
  for (const char* sql : {"SELECT day, source, base, figures, taken, sum "
                          "FROM published NOT INDEXED ORDER BY rowid",
                          "SELECT day, source, base, figures, taken, sum "
                          "FROM published NOT INDEXED ORDER BY rowid DESC"}) {
    count += takeTables(*damaged, sql, put);
  }
  takeReplaced(*damaged, into);
  return count;
}

}  // namespace fexora
