// What people write about money, as one sentence: "100 usd in eur", "€5", "5k dollars to euros and
// pounds", "usd/eur", "20% of 50 chf", "10 g of gold in usd".
//
// A sentence is an amount with its currency, and the currencies that are asked for after it. All of
// these may be missing, but not both of amount and currency: "usd eur" is one dollar in euros, and
// for "100" the host has to know the currency.
//
// Amounts     what readAmount takes (input/TypedAmount.h), calculations of it
// (input/Calculation.h),
//             and both with words that make them larger (input/NumberWords.h). An amount of money
//             alone in parentheses is negative, as in accounts.
// Currencies  a code in any case; a sign; a whole name, singular or plural, in the language of the
//             host's strings and in English; the whole name of a country; names that people use
//             (catalogue/PopularNames.h); hundredths and coins ("GBp", "cents"), satoshi. Never the
//             beginning of a word. A name that several share is read as a sign is that several
//             share.
// Metals      are troy ounces; g, kg, oz and the like beside one count. Beside anything else they
//             are a problem.
// Between     in, to, into, as, and, =, commas, arrows, a slash or a hyphen between currencies, and
//             the words of the windows' languages. "convert", "rate" and the like are passed over
//             at either end.
//
// What could have been meant otherwise is said by notices. A sentence that is wrong, or has
// anything else in it, has one problem, and nothing is guessed. Names need the text module; codes
// and signs in plain locales open nothing.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/input/SentenceProblem.h"
#include "fexora/input/TypedAmount.h"
#include "fexora/platform/base/Export.h"

namespace fexora {

struct SentenceNotice {
  enum class Kind {
    otherReading,      // `text` was read as `value`; it may be `other`
    region,            // `text` was read as `currency`, of several the one of the locale
    trade,             // the same, the most traded one
    name,              // `text`, a country or a popular name, was read as `currency`
    hundredths,        // `text` are parts of `currency`, of which `value` make one
    hundredthsResult,  // the same of a destination, whose result is in `currency`
    troyOunces,        // amounts of `currency` are troy ounces
    accounting,        // `text` was read as the negative `value`
  };
  Kind kind;
  std::string text;  // as it was written
  CurrencyRef currency;
  double value = 0;
  double other = 0;
};

struct Sentence {
  // Never refused where there is no problem. Its currency is that of `source`.
  TypedAmount amount;
  bool hasAmount = false;  // whether one was written; otherwise it is 1
  bool isCalculation = false;
  std::size_t amountEnd = 0;              // the byte where the amount and its currency end
  CurrencyRef source;                     // null where none was written
  std::vector<CurrencyRef> destinations;  // each once, in order
  // The day whose rates are asked for.
  std::optional<std::chrono::sys_days> day;
  std::vector<SentenceNotice> notices;
  // Whether what was read as currencies are plain words as well, and nothing else speaks for money:
  // "top 10". Somebody who searches for everything means something else.
  bool isDoubtful = false;
  std::optional<SentenceProblem> problem;
};

struct SentenceOptions {
  std::string locale = Locale::current();      // of numbers, and whose region decides
  const CurrencyManager* catalogue = nullptr;  // null: the process's
  Text* rules = nullptr;                       // null: the process's
  bool offers = true;                          // what is near a wrong word
};

// Time grows with the length, which limits::kSentenceBytes bounds. Any thread, as far as the
// catalogue and the host's strings are.
FEXORA_API Sentence readSentence(std::string_view text, const SentenceOptions& options = {});

// Whether nothing is written: blanks of any kind, and what is passed over. Any thread.
FEXORA_API bool isBlankText(std::string_view text);

}  // namespace fexora
