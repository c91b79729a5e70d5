// Finds currencies by a part of their code or of their name.
#include <algorithm>
#include <limits>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Currencies.h"
#include "programs/fexora/Failure.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/Output.h"

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

}  // namespace

void search(const CommandLine& line) {
  if (line.operands.size() != 1)
    throw usageFailure("search takes one text, as in: fexora search yen");
  const auto found = currencyManager().currenciesForString(
      line.operands[0], line.limit.value_or(std::numeric_limits<std::int64_t>::max()),
      currenciesFromTexts(line.exclude));
  if (line.json) return printJson(found);
  printTable(found);
  if (found.empty()) printMessage("no currency matches \"" + line.operands[0] + "\"");
}

}  // namespace fexora::program
