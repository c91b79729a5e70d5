#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/c.h"
#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/catalogue/MinorUnit.h"
#include "fexora/history/PublishedTable.h"
#include "fexora/input/Sentence.h"

#include "c/calls/Checked.h"

using namespace fexora::c;

namespace {

using fexora::CurrencyFacts;
using fexora::CurrencyKind;
using fexora::Rounding;
using fexora::Text;

constexpr std::int64_t kFound = 50;
constexpr int kMostDigits = 15;

std::string localeOf(const char* locale) {
  return locale != nullptr ? std::string(locale) : fexora::Locale::current();
}

// The facts of a code in any case.
Outcome factsOf(const char* code, const CurrencyFacts*& facts) {
  if (code == nullptr) return misuse("no code is given");
  const std::uint32_t place = Codes::all().place(code);
  facts = fexora::currencyFacts(place != Codes::kNone ? Codes::all()[place] : code);
  if (facts != nullptr) return {};
  std::uint32_t none = 0;
  Outcome outcome = Codes::all().find(code, none);
  return outcome.isOk() ? Outcome{FEXORA_NO_CURRENCY, "nothing is known of this currency"}
                        : outcome;
}

Outcome problemOf(std::string_view text, const fexora::SentenceProblem& problem) {
  constexpr std::size_t kQuoted = 60;
  std::string word(kQuoted + 1, '\0');
  putText(text.substr(std::min(problem.place, text.size()), problem.length), word.data(),
          word.size());
  std::string message = std::string("\"") + word.c_str() + "\": " + std::string(problem.reason);
  for (const auto& near : problem.near) {
    message += (&near == &problem.near.front() ? "; near: " : ", ") + near->code();
  }
  const bool isCurrency = problem.kind == fexora::SentenceProblem::Kind::unknownCurrency;
  return {isCurrency ? FEXORA_NO_CURRENCY : FEXORA_NO_AMOUNT, std::move(message)};
}

int32_t kindOf(CurrencyKind kind) {
  switch (kind) {
    case CurrencyKind::official:
      return FEXORA_KIND_OFFICIAL;
    case CurrencyKind::local:
      return FEXORA_KIND_LOCAL;
    case CurrencyKind::metal:
      return FEXORA_KIND_METAL;
    case CurrencyKind::crypto:
      return FEXORA_KIND_CRYPTO;
    case CurrencyKind::withdrawn:
      return FEXORA_KIND_WITHDRAWN;
  }
  return FEXORA_KIND_OFFICIAL;
}

bool roundingOf(int mode, Rounding& rounding) {
  switch (mode) {
    case FEXORA_ROUND_HALF_EVEN:
      rounding = Rounding::halfEven;
      return true;
    case FEXORA_ROUND_HALF_UP:
      rounding = Rounding::halfUp;
      return true;
    case FEXORA_ROUND_UP:
      rounding = Rounding::up;
      return true;
    case FEXORA_ROUND_DOWN:
      rounding = Rounding::down;
      return true;
    case FEXORA_ROUND_CASH:
      rounding = Rounding::cash;
      return true;
    default:
      return false;
  }
}

}  // namespace

int fexora_read(const char* text, const char* locale, fexora_reading* reading, size_t size,
                fexora_error* error) {
  return answered(error, [&] {
    if (text == nullptr) return misuse("no text is given");
    const fexora::Sentence read =
        fexora::readSentence(text, {localeOf(locale), &searchedCatalogue()});
    if (read.problem) return problemOf(text, *read.problem);
    fexora_reading found{};
    found.amount = read.amount.value;
    found.other = read.amount.other.value_or(std::nan(""));
    if (read.source != nullptr) found.from = kept(read.source->code());
    for (const auto& destination : read.destinations) {
      if (found.to_count < std::size(found.to))
        found.to[found.to_count] = kept(destination->code());
      ++found.to_count;
    }
    if (read.day) putText(fexora::isoText(*read.day), found.day, sizeof found.day);
    return give(found, reading, size);
  });
}

int fexora_get_facts(const char* code, fexora_facts* facts, size_t size, fexora_error* error) {
  return answered(error, [&] {
    const CurrencyFacts* known = nullptr;
    Outcome outcome = factsOf(code, known);
    if (!outcome.isOk()) return outcome;
    fexora_facts found{};
    found.kind = kindOf(known->kind);
    found.digits = known->digits.value_or(-1);
    found.customary_digits = known->customaryDigits.value_or(-1);
    found.cash_half_down = known->cashHalfDown ? 1 : 0;
    found.cash_step = known->cashStep;
    found.code = kept(known->code);
    found.signs = kept(known->signs.text());
    found.regions = kept(known->regions.text());
    found.successor = kept(known->successor);
    found.units = known->units;
    found.successor_units = known->successorUnits;
    found.last_day = kept(known->lastDay);
    return give(found, facts, size);
  });
}

int fexora_search(const char* text, const char** codes, size_t capacity, size_t* count,
                  fexora_error* error) {
  return answered(error, [&] {
    if (text == nullptr) return misuse("no text is given");
    std::vector<const char*> found;
    for (const auto& one : searchedCatalogue().rankedCurrencies(text, kFound, {})) {
      found.push_back(kept(one->code()));
    }
    return giveCodes(found, codes, capacity, count);
  });
}

int fexora_name(const char* code, const char* language, char* name, size_t capacity, size_t* length,
                fexora_error* error) {
  return answered(error, [&] {
    std::uint32_t place = 0;
    Outcome outcome = Codes::all().find(code, place);
    if (!outcome.isOk()) return outcome;
    const std::string known = Codes::all()[place];
    fexora::CurrencyNames names(Text::process(), language != nullptr ? language : "");
    return giveText(names.string(known).value_or(known), name, capacity, length);
  });
}

int fexora_round(double amount, const char* code, int mode, double* rounded, fexora_error* error) {
  return answered(error, [&] {
    Rounding rounding{};
    if (rounded == nullptr || !roundingOf(mode, rounding)) {
      return misuse("no place for the result, or no such rounding");
    }
    const CurrencyFacts* facts = nullptr;
    Outcome outcome = factsOf(code, facts);
    if (outcome.isOk()) *rounded = fexora::roundedToMinorUnit(amount, *facts, rounding);
    return outcome;
  });
}

int fexora_format(double amount, int digits, int grouping, const char* locale, char* text,
                  size_t capacity, size_t* length, fexora_error* error) {
  return answered(error, [&] {
    if (digits < 0 || digits > kMostDigits) return misuse("digits are 0 to 15");
    const fexora::NumberStyle style{digits, digits, grouping != 0};
    return giveText(Text::process().formatNumber(amount, localeOf(locale), style), text, capacity,
                    length);
  });
}
