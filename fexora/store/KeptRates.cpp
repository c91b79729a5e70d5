#include "fexora/store/KeptRates.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <unordered_set>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/store/AnswerKeys.h"
#include "fexora/store/StoreKeys.h"

namespace fexora {
namespace {

constexpr std::string_view kRatesKey = "rates";

// Known codes are; what a host gives may be anything.
bool isPlain(const std::string& code) {
  return std::all_of(code.begin(), code.end(), [](char c) { return c > ' ' && c <= '~'; });
}

// "EUR 0.85\nGBP 0.75\n": a dictionary a rate would cost each start of each process.
std::string textOf(const std::vector<USDRateRef>& rates) {
  std::string text;
  for (const USDRateRef& rate : rates) {
    const double value = rate != nullptr ? rate->rate().doubleValue() : 0;
    if (value > 0 && isPlain(rate->code()))
      text.append(rate->code()).append(" ").append(shortestText(value)).append("\n");
  }
  return text;
}

std::vector<USDRateRef> ratesIn(std::string_view text) {
  std::vector<USDRateRef> rates;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const auto blank = line.rfind(' ');
    if (blank == std::string_view::npos) continue;
    const auto rate = parseDouble(line.substr(blank + 1));
    if (rate && *rate > 0)
      rates.push_back(USDRate::make(*rate, std::string(line.substr(0, blank))));
  }
  return rates;
}

std::optional<RatesTable> tableIn(const Value& kept) {
  const Dictionary* content = kept.dictionary();
  const std::string* rates = content != nullptr ? answerText(*content, kRatesKey) : nullptr;
  if (rates == nullptr) return std::nullopt;
  RatesTable table;
  table.rates = ratesIn(*rates);
  const Value* published = content->find(kAnswerPublished);
  if (published != nullptr && published->date() != nullptr) table.published = *published->date();
  if (const std::string* source = answerText(*content, kAnswerSource)) table.source = *source;
  const std::string* origin = answerText(*content, kAnswerOrigin);
  if (origin != nullptr && *origin == kAnswerFile) table.origin = RatesAnswer::Origin::file;
  return table;
}

double momentOf(const RatesTable& table) {
  return table.published ? table.published->secondsSince1970()
                         : -std::numeric_limits<double>::infinity();
}

}  // namespace

std::vector<RatesTable> keptTables(const Dictionary& content) {
  std::vector<RatesTable> tables;
  const Value* value = content.find(kUDRatesKept);
  const Array* kept = value != nullptr ? value->array() : nullptr;
  if (kept == nullptr) return tables;
  for (const Value& each : *kept) {
    if (tables.size() == limits::kKeptTables) break;
    if (auto table = tableIn(each)) tables.push_back(*std::move(table));
  }
  return tables;
}

std::vector<RatesTable> tablesBeside(const std::vector<USDRateRef>& rates,
                                     std::vector<RatesTable> tables) {
  std::stable_sort(tables.begin(), tables.end(), [](const RatesTable& a, const RatesTable& b) {
    return momentOf(a) > momentOf(b);
  });
  std::unordered_set<std::string_view> codes;
  const auto add = [&](std::string_view code, std::size_t place) {
    // The tables of one source have the same codes in the same order.
    if (place < rates.size() && rates[place]->code() == code) return false;
    if (codes.empty()) {
      for (const USDRateRef& rate : rates) codes.insert(rate->code());
    }
    return codes.insert(code).second;
  };
  std::vector<RatesTable> beside;
  for (RatesTable& table : tables) {
    bool isNew = false;
    for (std::size_t place = 0; place < table.rates.size(); ++place) {
      const USDRateRef& rate = table.rates[place];
      if (rate != nullptr) isNew = add(rate->code(), place) || isNew;
    }
    if (isNew && beside.size() < limits::kKeptTables) beside.push_back(std::move(table));
  }
  return beside;
}

void keepTables(Dictionary& content, const std::vector<RatesTable>& tables) {
  Array kept;
  for (const RatesTable& table : tables) {
    Dictionary each{{std::string(kRatesKey), textOf(table.rates)},
                    {std::string(kAnswerSource), oneLine(table.source)}};
    if (table.published) each.set(kAnswerPublished, *table.published);
    each.set(kAnswerOrigin, table.origin == RatesAnswer::Origin::file ? kAnswerFile : "service");
    kept.emplace_back(std::move(each));
  }
  if (kept.empty()) {
    content.remove(kUDRatesKept);
  } else {
    content.set(kUDRatesKept, std::move(kept));
  }
}

}  // namespace fexora
