#include "fexora/history/sqlite/Keeping.h"

#include "fexora/history/TableText.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {

std::string faultOf(std::span<const PublishedTable> tables, double now) {
  if (tables.size() > limits::kHistoryTables) {
    return "more than " + integerText(static_cast<std::int64_t>(limits::kHistoryTables)) +
           " tables of past rates at once";
  }
  const Day latest = dayOfMoment(now) + std::chrono::days(1);
  for (const PublishedTable& table : tables) {
    std::string fault = tableFault(table);
    if (!fault.empty()) return fault;
    if (table.day > latest) {
      return "the table of " + isoText(table.day) + " from " + table.source +
             ": its day is yet to come";
    }
  }
  return {};
}

Keeping::Keeping(Database& database, double now, Kept& kept)
    : now_(static_cast<std::int64_t>(now)),
      settled_(dayOfMoment(now) - std::chrono::days(2)),
      kept_(kept),
      find_(database,
            "SELECT day, source, base, figures, taken, sum FROM published "
            "WHERE day = ?1 AND source = ?2"),
      put_(database, "INSERT OR REPLACE INTO published VALUES (?1, ?2, ?3, ?4, ?5, ?6)"),
      replace_(database, "INSERT INTO replaced VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)") {}

void Keeping::keep(std::span<const PublishedTable> tables) {
  for (const PublishedTable& table : tables) keep(table);
}

bool Keeping::find(const std::string& day, const PublishedTable& table, HistoryRow& row) {
  find_.reset();
  find_.bind(1, day).bind(2, table.source);
  Day ignored{};
  return find_.step() && readRow(find_, row, ignored);
}

void Keeping::keep(const PublishedTable& table) {
  const std::string day = isoText(table.day);
  HistoryRow old;
  const bool isThere = find(day, table, old);
  const std::string figures = isThere ? tableText(merged(table, old)) : tableText(table);
  if (isThere && figures == old.figures) return;
  if (!isThere) ++kept_.tables;
  const HistoryRow row{day, table.source, table.base, figures, now_};
  if (!isThere) kept_.figures += countFigures(figures);
  // The row that is asked may not be replaced meanwhile.
  find_.reset();
  put_.reset();
  put_.bind(1, row.day).bind(2, row.source).bind(3, row.base).bind(4, row.figures);
  put_.bind(5, row.taken).bind(6, checksum(row));
  put_.step();
}

PublishedTable Keeping::merged(const PublishedTable& table, const HistoryRow& old) {
  if (table.base != old.base) {
    throw SqliteFault{SqliteFault::Kind::other, "the table of " + std::string(old.day) + " from " +
                                                    table.source + " quotes " + table.base +
                                                    " instead of " + std::string(old.base)};
  }
  PublishedTable both = table;
  const std::string text = tableText(table);
  PublishedTable before;
  readTableText(old.figures, before);
  std::size_t common = 0;
  for (auto& line : before.figures) {
    const std::string_view figure = figureOf(text, line.first);
    if (figure.empty()) {
      both.figures.push_back(std::move(line));
      continue;
    }
    ++common;
    if (figure != line.second) replace(old, line.first, figure);
  }
  kept_.figures += countFigures(text) - common;
  return both;
}

// The figure of a code that is kept so far gives way to another one.
void Keeping::replace(const HistoryRow& old, std::string_view code, std::string_view figure) {
  const std::string_view before = figureOf(old.figures, code);
  const auto day = dayFromIsoText(old.day);
  if (!day || *day > settled_) return;
  ++kept_.corrected;
  if (kept_.corrections.size() < limits::kHistoryCorrections) {
    std::string& line = kept_.corrections.emplace_back(code);
    line.append(" ").append(old.day).append(": ").append(figure).append(" instead of ");
    line.append(before);
  }
  const ReplacedRow row{old.day, old.source, code, before, old.taken, now_};
  replace_.reset();
  replace_.bind(1, row.day).bind(2, row.source).bind(3, row.code).bind(4, row.figure);
  replace_.bind(5, row.taken).bind(6, row.until).bind(7, checksum(row));
  replace_.step();
}

}  // namespace fexora
