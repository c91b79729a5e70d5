// Shows how the rate of a pair moved, and which past days are kept.
#include <algorithm>
#include <map>

#include <unistd.h>

#include "fexora/platform/text/NumberText.h"

#include "programs/fexora/Commands.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/fexora/Store.h"
#include "programs/fexora/TextPlot.h"
#include "programs/shared/Currencies.h"

namespace fexora::program {
namespace {

struct Span {
  Day first = std::chrono::year(1900) / 1 / 1;
  Day last{};
};

struct Series {
  CurrencyRef source;
  CurrencyRef destination;
  std::vector<DayRate> rates;

  const DayRate& lowest() const { return *std::min_element(rates.begin(), rates.end(), less); }
  const DayRate& highest() const { return *std::max_element(rates.begin(), rates.end(), less); }
  static bool less(const DayRate& a, const DayRate& b) { return a.rate < b.rate; }
};

Span spanOf(const CommandLine& line) {
  Span span;
  span.last = line.until.empty() ? dayFromText("--until", "today") + std::chrono::days(1)
                                 : dayFromText("--until", line.until);
  if (!line.since.empty()) span.first = dayFromText("--since", line.since);
  if (span.first > span.last) throw usageFailure("--since is after --until");
  return span;
}

std::string sizeText(std::uint64_t bytes) {
  constexpr std::uint64_t kKibi = 1024;
  if (bytes < kKibi * kKibi) return std::to_string((bytes + kKibi - 1) / kKibi) + " KiB";
  return fixedText(static_cast<double>(bytes) / (kKibi * kKibi), 1) + " MiB";
}

void printSummaryJson(const HistorySummary& kept) {
  JsonText json;
  json.beginObject().key("sources").beginArray();
  for (const HistorySummary::Line& line : kept.sources) {
    json.beginObject().key("source").string(line.source).key("first").string(isoText(line.first));
    json.key("last").string(isoText(line.last));
    json.key("tables").integer(static_cast<std::int64_t>(line.tables)).endObject();
  }
  json.endArray().key("bytes").integer(static_cast<std::int64_t>(kept.bytes));
  json.key("damaged").integer(static_cast<std::int64_t>(kept.damaged));
  printLine(json.endObject().text());
}

void printSummary(const CommandLine& line, RateHistory& rates) {
  const HistorySummary kept = rates.summary();
  if (!kept.problem.empty()) throw Failure{Exit::notWritten, "history", kept.problem};
  if (line.json) return printSummaryJson(kept);
  if (kept.sources.empty()) {
    return printLine("no past days are kept yet: fexora refresh --history ecb brings them");
  }
  std::size_t widest = 0;
  for (const auto& source : kept.sources) widest = std::max(widest, source.source.size());
  for (const HistorySummary::Line& source : kept.sources) {
    std::string row = source.source;
    row.resize(widest + 2, ' ');
    row += isoText(source.first) + " to " + isoText(source.last) + "  " +
           std::to_string(source.tables) + (source.tables == 1 ? " day" : " days");
    printLine(row);
  }
  printLine(sizeText(kept.bytes));
  if (kept.damaged > 0) {
    printLine(std::to_string(kept.damaged) +
              " damaged, which count as missing until they are kept again");
  }
}

void addExtreme(JsonText& json, const char* key, const DayRate& rate) {
  json.key(key).beginObject().key("day").string(isoText(rate.day));
  json.key("rate").number(rate.rate).endObject();
}

void printJson(const Series& series) {
  JsonText json;
  json.beginObject().key("source").string(series.source->code());
  json.key("destination").string(series.destination->code());
  json.key("since").string(isoText(series.rates.front().day));
  json.key("until").string(isoText(series.rates.back().day));
  json.key("days").integer(static_cast<std::int64_t>(series.rates.size()));
  addExtreme(json, "lowest", series.lowest());
  addExtreme(json, "highest", series.highest());
  json.key("rates").beginArray();
  for (const DayRate& rate : series.rates) {
    json.beginObject().key("day").string(isoText(rate.day)).key("rate").number(rate.rate);
    json.key("source").string(rate.source).endObject();
  }
  printLine(json.endArray().endObject().text());
}

// By day the rates of each series, null where it has none.
std::map<Day, std::vector<const DayRate*>> byDay(const std::vector<Series>& all) {
  std::map<Day, std::vector<const DayRate*>> days;
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (const DayRate& rate : all[i].rates) {
      auto& row = days[rate.day];
      row.resize(all.size());
      row[i] = &rate;
    }
  }
  return days;
}

std::string sourcesOf(const std::vector<const DayRate*>& row) {
  std::vector<std::string> names;
  for (const DayRate* rate : row) {
    if (rate == nullptr) continue;
    if (std::find(names.begin(), names.end(), rate->source) == names.end()) {
      names.push_back(rate->source);
    }
  }
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

void printRows(const std::vector<Series>& all, bool isCsv) {
  if (isCsv) {
    std::string head = "day";
    for (const Series& series : all) head += "," + series.destination->code();
    printLine(head + ",source");
  }
  const char* const between = isCsv ? "," : "  ";
  for (const auto& [day, row] : byDay(all)) {
    std::string text = isoText(day);
    for (const DayRate* rate : row) {
      text += between;
      text += rate != nullptr ? shortestText(rate->rate) : isCsv ? "" : "-";
    }
    printLine(isCsv ? text + "," + sourcesOf(row) : text);
  }
}

void printPlot(const Series& series, const StoreManager& store) {
  const NumberFormat format(store.fraction(), store.seporate());
  const DayRate& first = series.rates.front();
  const DayRate& last = series.rates.back();
  printLine("1 " + series.source->code() + " in " + series.destination->code() + ", " +
            shownDay(first.day) + " to " + shownDay(last.day));
  printLine("");
  for (const std::string& row : textPlot(series.rates, terminalForm())) printLine(row);
  printLine("");
  const auto row = [&](const char* name, const DayRate& rate) {
    return "  " + std::string(name) + format.rate(rate.rate) + "  " + shownDay(rate.day);
  };
  printLine(row("first    ", first));
  printLine(row("lowest   ", series.lowest()));
  printLine(row("highest  ", series.highest()));
  const double percent = (last.rate / first.rate - 1) * 100;
  printLine(row("last     ", last) + "   " + (percent < 0 ? "" : "+") +
            Text::process().formatNumber(percent, Locale::current(), {2, 2, true}) + " %");
  printLine(std::to_string(series.rates.size()) +
            (series.rates.size() == 1 ? " day, from " : " days, from ") + first.source);
}

std::vector<Series> seriesOf(const CommandLine& line, RateHistory& rates) {
  if (line.operands.size() < 2) {
    throw usageFailure("history takes two currencies or none, as in: fexora history USD EUR");
  }
  const Span span = spanOf(line);
  const PastQuestion question = pastQuestionOf(line);
  const std::vector<CurrencyRef> pair = currenciesFromTexts(line.operands);
  std::vector<Series> all;
  for (auto destination = pair.begin() + 1; destination != pair.end(); ++destination) {
    Series series{pair.front(), *destination, {}};
    series.rates = rates.between(span.first, span.last, series.source->code(),
                                 series.destination->code(), question);
    all.push_back(std::move(series));
  }
  if (all.empty()) throw usageFailure("a currency and itself have no history");
  return all;
}

}  // namespace

Exit history(const CommandLine& line) {
  if (line.operands.empty() && !(line.since.empty() && line.until.empty())) {
    throw usageFailure("--since and --until go with two currencies, as in: fexora history USD EUR");
  }
  StoreManager& store = openStore(false);
  RateHistory& rates = history(store);
  if (line.operands.empty()) {
    printSummary(line, rates);
    return Exit::done;
  }
  std::vector<Series> all = seriesOf(line, rates);
  if (!rates.problem().empty()) printMessage(rates.problem());
  std::vector<std::string> missing;
  for (const Series& series : all) {
    if (series.rates.empty()) missing.push_back(series.destination->code());
  }
  std::string problem;
  if (!missing.empty()) {
    problem = "there is no past rate from " + all.front().source->code() + " to " +
              listed(missing) + " in these days" + whatIsKept(rates, spanOf(line).last);
  }
  if (missing.size() == all.size()) throw Failure{Exit::noCurrency, "rate", problem};
  const bool isPlot = line.plot || (!line.csv && !line.json && isatty(STDOUT_FILENO) != 0);
  if (!isPlot && !line.json) printRows(all, line.csv);
  for (const Series& series : all) {
    if (series.rates.empty()) continue;
    if (line.json) printJson(series);
    if (isPlot) printPlot(series, store);
  }
  if (!problem.empty()) printMessage(problem);
  return missing.empty() ? Exit::done : Exit::noCurrency;
}

}  // namespace fexora::program
