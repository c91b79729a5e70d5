// Sentences about money. The input is a line with a locale's name and the text; the text's bytes
// also choose a sentence of pieces that people write. What a sentence says it read, written out
// plainly and read again, means the same.
#include "fexora/input/Sentence.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <string>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/PlainNumbers.h"

#include "fuzz/Target.h"

namespace fexora::fuzz {
namespace {

// With so many digits that a mark before them is no open one.
std::string plainly(const Sentence& sentence) {
  std::string text = formatPlainNumber(sentence.amount.value, {limits::kFractionDigits, 4, false});
  if (sentence.source != nullptr) text += " " + sentence.source->code();
  for (const CurrencyRef& each : sentence.destinations) text += " = " + each->code();
  return text;
}

SentenceOptions optionsOf(std::string_view text, std::string_view locale) {
  // What is near takes longer than all the rest.
  constexpr std::size_t kOffering = 16;
  SentenceOptions options;
  options.locale = locale;
  options.offers = text.size() % kOffering == 0;
  return options;
}

void checkProblem(const Sentence& sentence, std::string_view text) {
  const SentenceProblem& problem = *sentence.problem;
  require(problem.kind != SentenceProblem::Kind::none, "a problem is one");
  require(problem.place + problem.length <= text.size(), "the place lies in the text");
  require(!problem.reason.empty(), "a problem has a reason");
  require(sentence.source == nullptr && sentence.notices.empty(), "what is wrong is nothing");
}

void checkText(std::string_view text, std::string_view locale) {
  const Sentence sentence = readSentence(text, optionsOf(text, locale));
  if (sentence.problem) return checkProblem(sentence, text);
  const TypedAmount& amount = sentence.amount;
  require(amount.kind != TypedAmount::Kind::refused, "there is an amount");
  require(std::isfinite(amount.value) && std::isfinite(amount.other.value_or(0)),
          "every reading is finite");
  require(amount.other.has_value() == (amount.kind == TypedAmount::Kind::ambiguous),
          "two readings are ambiguous");
  require((sentence.source != nullptr) == !amount.currency.empty(), "the amount has the source");
  require(sentence.source == nullptr || sentence.source->code() == amount.currency,
          "the amount has the source's code");
  require(sentence.amountEnd <= text.size(), "the amount ends in the text");
  const TypedAmount alone = readAmount(text, locale);
  require(alone.kind == TypedAmount::Kind::refused || sentence.isCalculation ||
              alone.value == amount.value ||
              std::signbit(alone.value) != std::signbit(amount.value),
          "an amount alone is what readAmount reads");
  // In English, where each of its numbers has the decimal point.
  const Sentence again = readSentence(plainly(sentence), optionsOf(text, "en_US"));
  require(!again.problem, "what was read can be written and read");
  const double value = again.amount.value;
  require(value == amount.value || again.amount.other == amount.value ||
              std::fabs(value - amount.value) <= 1e-15 * std::fabs(amount.value),
          "the amount means the same");
  require(again.source == sentence.source, "the source means the same");
  require(again.destinations == sentence.destinations, "the destinations mean the same");
}

// Pieces in any order.
std::string written(std::string_view bytes) {
  constexpr const char* kPieces[] = {
      "100",   "1,234", "1.234,5", "5",    "0.5",     "1e3",     "-",     "+",      "*",   "/",
      "^",     "%",     "(",       ")",    "usd",     "EUR",     "$",     "€",      "kr",  "£",
      "k",     "M",     "million", "lakh", "Mio.",    "万",      "of",    "von",    "in",  "to",
      "and",   ",",     "=",       "→",    "euro",    "dollars", "franc", "poland", "uk",  "quid",
      "cents", "GBp",   "pence",   "g",    "kg",      "oz",      "gold",  "XAU",    "try", "top",
      "rate",  "?",     ",-",      "/-",   "Rp.",     "S/.",     "円",    "ドル",   "を",  "دولار",
      "إلى",   "١٢٣",   "satoshi", "Rs",   "bitcoin", "1INCH",   "½",     "'",      "&",   "won"};
  constexpr std::size_t kMost = 12;
  std::seed_seq seed(bytes.begin(), bytes.end());
  std::mt19937 random(seed);  // NOLINT(cert-msc51-cpp): seeded by the input
  std::string text;
  for (auto count = 1 + random() % kMost; count > 0; --count) {
    text += kPieces[random() % std::size(kPieces)];
    if (random() % 3 != 0) text += ' ';
  }
  return text;
}

void run(std::string_view input) {
  const auto locale = takeLine(input);
  checkText(input, locale);
  checkText(written(input), locale);
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
