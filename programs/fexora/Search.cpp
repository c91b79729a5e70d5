// Finds currencies as people look for them, or by a part of their code or name.
#include <algorithm>
#include <limits>
#include <string>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Output.h"
#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"
#include "programs/shared/Words.h"

namespace fexora::program {
namespace {

void printJson(const std::vector<CurrencyRef>& found) {
  JsonText json;
  json.beginObject().key("matches").beginArray();
  for (const CurrencyRef& currency : found) {
    json.beginObject().key("code").string(currency->code());
    json.key("name").string(nameOf(*currency)).endObject();
  }
  printLine(json.endArray().endObject().text());
}

void printTable(const std::vector<CurrencyRef>& found) {
  std::size_t widest = 0;
  for (const CurrencyRef& currency : found) widest = std::max(widest, currency->code().size());
  for (const CurrencyRef& currency : found) {
    const std::string& code = currency->code();
    printLine(code + std::string(widest - code.size() + 2, ' ') + nameOf(*currency));
  }
}

std::vector<CurrencyRef> find(const CommandLine& line, const std::string& text) {
  const std::int64_t limit = line.limit.value_or(std::numeric_limits<std::int64_t>::max());
  const auto excluded = currenciesFromTexts(line.exclude);
  return line.plain ? currencyManager().currenciesForString(text, limit, excluded)
                    : currencyManager().rankedCurrencies(text, limit, excluded);
}

}  // namespace

void search(const CommandLine& line) {
  if (line.operands.empty()) throw usageFailure("search takes a text, as in: fexora search yen");
  const std::string text = joined(line.operands);
  const auto found = find(line, text);
  if (found.empty()) {
    throw Failure{Exit::noCurrency, "currency",
                  "no currency matches \"" + text + "\"" +
                      nearText(nearCurrencies(currencyManager(), text, 3))};
  }
  if (line.json) return printJson(found);
  printTable(found);
}

}  // namespace fexora::program
