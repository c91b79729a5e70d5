// How a conversion is shown: a table for people, an object for programs.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "fexora/platform/text/NumberText.h"

#include "programs/fexora/Conversion.h"
#include "programs/fexora/Names.h"
#include "programs/fexora/NumberColumn.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/JsonText.h"
#include "programs/shared/RatesText.h"
#include "programs/shared/ShownNames.h"

namespace fexora::program {
namespace {

void addReading(JsonText& json, const TypedAmount& reading) {
  const bool isExact = reading.kind == TypedAmount::Kind::exact;
  json.key("reading").beginObject().key("kind").string(isExact ? "exact" : "ambiguous");
  json.key("value").number(reading.value).key("other").numberOrNull(reading.other).endObject();
}

void addItem(JsonText& json, const ConversionLine& line, bool names) {
  const ConvertedItem& item = line.item;
  json.beginObject().key("currency").string(item.dstCurrency->code());
  json.key("rate").number(item.rate.doubleValue());
  json.key("amount").number(item.dstAmount.doubleValue());
  if (names) json.key("name").string(nameOf(*item.dstCurrency));
  if (line.of) {
    json.key("published")
        .stringOrNull(line.of->published ? line.of->published->isoText() : std::nullopt);
    const bool isBundled = line.of->origin == Freshness::Origin::bundled;
    json.key("source").string(isBundled ? "bundled" : line.of->source);
  }
  if (line.past) {
    json.key("day").string(isoText(line.past->day)).key("source").string(line.past->source);
    json.key("how").string(text(line.past->how));
  }
  json.endObject();
}

void addTexts(JsonText& json, const char* key, const std::vector<std::string>& texts) {
  json.key(key).beginArray();
  for (const std::string& text : texts) json.string(text);
  json.endArray();
}

void printJson(const Conversion& conversion, bool names) {
  JsonText json;
  json.beginObject().key("amount").number(conversion.amount.value);
  json.key("source").string(conversion.source->code());
  json.key("invert").boolean(conversion.invert);
  if (conversion.on) json.key("on").string(isoText(conversion.on->asked));
  addRatesDate(json, conversion.on ? RatesDate() : ratesDate());
  json.key("origin").string(conversion.origin);
  if (!conversion.on) addFreshness(json);
  addReading(json, conversion.amount);
  json.key("items").beginArray();
  for (const ConversionLine& line : conversion.lines) addItem(json, line, names);
  json.endArray();
  addTexts(json, "missing", conversion.missing);
  addTexts(json, "notices", conversion.notices);
  printLine(json.endObject().text());
}

// Rounded amounts show the digits of what they are rounded to; nothing for others.
std::optional<int> roundedDigits(const ConversionLine& line, const Conversion& conversion,
                                 const CommandLine& options) {
  const Currency& of = conversion.invert ? *conversion.source : *line.item.dstCurrency;
  const CurrencyFacts* facts = currencyFacts(of.code());
  return options.rounded && facts != nullptr ? facts->digits : std::nullopt;
}

std::string shownAmount(const ConversionLine& line, const Conversion& conversion,
                        const CommandLine& options, const StoreManager& store) {
  const auto digits = roundedDigits(line, conversion, options);
  return NumberFormat(digits ? *digits : store.fraction(), store.seporate())
      .amount(line.item.dstAmount.doubleValue());
}

// All its digits, without an exponent.
std::string digitsOf(double value) {
  std::array<char, 512> text;  // the smallest double has 326 characters
  return {
      text.data(),
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr};
}

// For a script: whatever the locale and the settings are.
void printNumbers(const Conversion& conversion, const CommandLine& options) {
  for (const ConversionLine& line : conversion.lines) {
    const double value = line.item.dstAmount.doubleValue();
    const auto digits = roundedDigits(line, conversion, options);
    printLine(digits ? fixedText(value, *digits) : digitsOf(value));
  }
}

std::string remarks(const ConversionLine& line) {
  std::string text;
  if (!std::isfinite(line.item.dstAmount.doubleValue())) text += "   (no finite number)";
  if (line.of) text += "   (" + rateText(*line.of) + ")";
  if (line.past) {
    const PastRate::How how = line.past->how;
    text += "   (rate of " + weekdayText(line.past->day) + ", " + line.past->source;
    text += how == PastRate::How::printed   ? ", as printed)"
            : how == PastRate::How::crossed ? ", crossed)"
                                            : ", by law)";
  }
  return text;
}

void printTable(const Conversion& conversion, const CommandLine& options,
                const StoreManager& store) {
  const bool names = showsNames(options);
  const NumberFormat format(store.fraction(), store.seporate());
  NumberColumn amounts;
  NumberColumn rates;
  for (const ConversionLine& line : conversion.lines) {
    amounts.add(shownAmount(line, conversion, options, store));
    rates.add(format.rate(line.item.rate.doubleValue()));
  }
  const std::string& source = conversion.source->code();
  printLine(format.exact(conversion.amount.value) + (conversion.invert ? " of each, in " : " ") +
            codeAndName(*conversion.source, names) + (conversion.invert ? ":" : " ="));
  for (std::size_t i = 0; i < conversion.lines.size(); ++i) {
    const Currency& currency = *conversion.lines[i].item.dstCurrency;
    const std::string& code = currency.code();
    std::string row = "  ";
    row.append(amounts.aligned(i)).append(" ");
    if (conversion.invert) row.append(source).append(" for ");
    row.append(code).append("   (1 ").append(source).append(" = ");
    row.append(rates.aligned(i)).append(" ").append(code).append(")");
    row.append(remarks(conversion.lines[i]));
    // At the end, since names are of any width and may run from right to left.
    if (names) row.append("   ").append(nameOf(currency));
    printLine(row);
  }
  if (!conversion.on) return printLine(shownRatesLine());
  const PastDay& on = *conversion.on;
  printLine((on.day == on.asked ? "at the rates of " : "at the rates before ") +
            weekdayText(on.asked) + (on.day == today() ? "" : ", not today's"));
}

}  // namespace

void print(const Conversion& conversion, const CommandLine& line, const StoreManager& store,
           const std::string& place) {
  if (line.json) {
    printJson(conversion, asksForNames(line));
  } else if (line.plain) {
    printNumbers(conversion, line);
  } else {
    printTable(conversion, line, store);
  }
  for (const std::string& notice : conversion.notices) printMessage(place + notice);
  if (!conversion.problem.empty()) printMessage(place + conversion.problem);
}

}  // namespace fexora::program
