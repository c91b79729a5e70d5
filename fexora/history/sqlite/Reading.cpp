#include "fexora/history/sqlite/Reading.h"

#include <algorithm>
#include <map>
#include <utility>

#include "fexora/history/PairInTables.h"
#include "fexora/history/TableText.h"
#include "fexora/history/sqlite/HistorySchema.h"
#include "fexora/platform/base/Limits.h"

namespace fexora {
namespace {

constexpr const char* kNewestFirst =
    "SELECT day, source, base, figures, taken, sum FROM published "
    "WHERE day BETWEEN ?1 AND ?2 ORDER BY day DESC, source DESC";
constexpr const char* kOldestFirst =
    "SELECT day, source, base, figures, taken, sum FROM published "
    "WHERE day BETWEEN ?1 AND ?2 ORDER BY day, source";

constexpr Day kFirstDay = std::chrono::year(1900) / 1 / 1;
constexpr Day kLastDay = std::chrono::year(2199) / 12 / 31;
// Of a series from 1999 to 2030.
constexpr std::size_t kUsualDays = 8192;

// Looks the pairs up that have no rate yet, in one day's tables after the other's.
class DayLookup {
 public:
  DayLookup(std::string_view from, std::span<const std::string> to,
            std::vector<std::optional<PastRate>>& rates)
      : rates_(rates), ranks_(to.size()), open_(to.size()) {
    pairs_.reserve(to.size());
    for (const std::string& code : to) pairs_.emplace_back(from, code);
  }

  bool isDone() const { return open_ == 0; }

  void look(const HistoryRow& row, Day day, int rank) {
    const TableView table{day, row.base, row.figures};
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
      std::optional<PastRate>& rate = rates_[i];
      if (rate && (rate->day != day || ranks_[i] < rank)) continue;
      const auto found = pairs_[i].in(table);
      if (!found) continue;
      if (!rate) --open_;
      rate = PastRate{found->rate, day, std::string(row.source), found->how};
      ranks_[i] = rank;
    }
  }

 private:
  std::vector<PairInTables> pairs_;
  std::vector<std::optional<PastRate>>& rates_;
  std::vector<int> ranks_;  // of the tables that the rates are from
  std::size_t open_;
};

// The source whose days are taken; see RateHistory::between.
template <class Series>
typename Series::iterator chosen(Series& series, const PastQuestion& question) {
  std::size_t most = 0;
  for (const auto& [source, rates] : series) most = std::max(most, rates.size());
  auto best = series.end();
  for (auto at = series.begin(); at != series.end(); ++at) {
    if (2 * at->second.size() <= most) continue;
    if (best == series.end() || rankOf(question, at->first) < rankOf(question, best->first)) {
      best = at;
    }
  }
  return best;
}

}  // namespace

std::size_t ratesOn(Database& database, Day day, std::string_view from,
                    std::span<const std::string> to, const PastQuestion& question,
                    std::vector<std::optional<PastRate>>& rates) {
  day = std::clamp(day, kFirstDay, kLastDay);
  const auto before = std::chrono::days(std::max(question.atMostBefore, 0));
  const std::string first = isoText(std::max(kFirstDay, day - std::min(before, day - kFirstDay)));
  const std::string last = isoText(day);
  Statement rows(database, kNewestFirst);
  rows.bind(1, first).bind(2, last);
  DayLookup lookup(from, to, rates);
  std::size_t damaged = 0;
  Day current{};
  HistoryRow row;
  Day rowDay{};
  while (rows.step()) {
    const int rank = rankOf(question, sourceOf(rows));
    if (rank < 0) continue;
    if (!readRow(rows, row, rowDay)) {
      ++damaged;
      continue;
    }
    if (rowDay != current && lookup.isDone()) break;
    current = rowDay;
    lookup.look(row, rowDay, rank);
  }
  return damaged;
}

std::size_t ratesBetween(Database& database, Day first, Day last, std::string_view from,
                         std::string_view to, const PastQuestion& question,
                         std::vector<DayRate>& rates) {
  if (first > last) return 0;
  first = std::clamp(first, kFirstDay, kLastDay);
  last = std::clamp(last, kFirstDay, kLastDay);
  const std::string begin = isoText(first);
  const std::string end = isoText(last);
  Statement rows(database, kOldestFirst);
  rows.bind(1, begin).bind(2, end);
  const auto days = static_cast<std::size_t>((last - first).count()) + 1;
  const PairInTables pair(from, to);
  std::map<std::string, std::vector<DayRate>, std::less<>> series;
  std::size_t damaged = 0;
  HistoryRow row;
  Day day{};
  while (rows.step()) {
    if (rankOf(question, sourceOf(rows)) < 0) continue;
    if (!readRow(rows, row, day)) {
      ++damaged;
      continue;
    }
    const auto found = pair.in({day, row.base, row.figures});
    if (!found) continue;
    auto at = series.find(row.source);
    if (at == series.end()) {
      at = series.try_emplace(std::string(row.source)).first;
      at->second.reserve(std::min(days, kUsualDays));
    }
    at->second.push_back({day, found->rate, at->first});
  }
  const auto taken = chosen(series, question);
  if (taken == series.end()) return damaged;
  rates = std::move(taken->second);
  if (rates.size() > limits::kHistoryDays) {
    rates.erase(rates.begin(), rates.end() - static_cast<std::ptrdiff_t>(limits::kHistoryDays));
  }
  return damaged;
}

std::size_t tablesOf(Database& database, Day day, std::vector<PublishedTable>& tables) {
  const std::string text = isoText(day);
  Statement rows(database, kOldestFirst);
  rows.bind(1, text).bind(2, text);
  std::size_t damaged = 0;
  HistoryRow row;
  Day rowDay{};
  while (rows.step()) {
    if (!readRow(rows, row, rowDay)) {
      ++damaged;
      continue;
    }
    tables.push_back({rowDay, std::string(row.source), std::string(row.base), {}});
    readTableText(row.figures, tables.back());
  }
  return damaged;
}

std::vector<std::string> replacedLines(Database& database, Day day) {
  const std::string text = isoText(day);
  Statement rows(database,
                 "SELECT day, source, code, figure, taken, until, sum FROM replaced "
                 "WHERE day = ?1 ORDER BY until DESC, source, code");
  rows.bind(1, text);
  std::vector<std::string> lines;
  while (rows.step()) {
    const ReplacedRow row{rows.text(0), rows.text(1),   rows.text(2),
                          rows.text(3), rows.number(4), rows.number(5)};
    if (checksum(row) != rows.number(6)) continue;
    std::string& line = lines.emplace_back(row.day);
    for (const std::string_view column : {row.source, row.code, row.figure}) {
      line.append(" ").append(column);
    }
  }
  return lines;
}

void summarize(Database& database, HistorySummary& summary) {
  const std::string first = isoText(kFirstDay);
  const std::string last = isoText(kLastDay);
  Statement rows(database, kOldestFirst);
  rows.bind(1, first).bind(2, last);
  std::map<std::string, HistorySummary::Line, std::less<>> lines;
  HistoryRow row;
  Day day{};
  while (rows.step()) {
    if (!readRow(rows, row, day)) {
      ++summary.damaged;
      continue;
    }
    HistorySummary::Line& line = lines[std::string(row.source)];
    if (line.tables++ == 0) line.first = day;
    line.last = day;
  }
  for (auto& [source, line] : lines) {
    line.source = source;
    summary.sources.push_back(std::move(line));
  }
}

}  // namespace fexora
