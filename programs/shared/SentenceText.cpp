#include "programs/shared/SentenceText.h"

#include <algorithm>
#include <string_view>

#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"

namespace fexora::program {
namespace {

using Kind = SentenceProblem::Kind;

constexpr std::size_t kQuotedCharacters = 60;
constexpr double kHundred = 100;

// The text in quotes, its head where it is long.
std::string quoted(const std::string& typed) {
  const auto ends = Text::process().characterEnds(typed);
  const bool isLong = ends.size() > kQuotedCharacters;
  const std::string head = isLong ? typed.substr(0, ends[kQuotedCharacters - 1]) + "…" : typed;
  return std::string("\"").append(head).append("\"");
}

// A number that is read back as this one and no other, as the locale writes it.
std::string plainly(double value) {
  constexpr int kMostDigits = 15;
  return Text::process().formatNumber(value, Locale::current(), {kMostDigits, 0, false});
}

std::string atPlace(const std::string& text, std::size_t place) {
  if (place >= text.size()) return " at its end";
  return " at place " + std::to_string(Text::process().characterCount(text.substr(0, place)) + 1);
}

// What stands between blanks around the place.
std::string wordAt(const std::string& text, std::size_t place) {
  const auto before = text.find_last_of(" \t", place);
  const std::size_t begin = before == text.npos ? 0 : before + 1;
  return text.substr(begin, text.find_first_of(" \t", begin) - begin);
}

Failure failureOf(const std::string& text, const SentenceProblem& problem) {
  const std::string near = nearText(problem.near);
  const std::string word = text.substr(problem.place, problem.length);
  if (problem.kind == Kind::unknownCurrency && problem.place > 0) {
    return {Exit::noCurrency, "currency",
            "there is no currency " + quoted(word) + atPlace(text, problem.place) +
                "; expected a code like USD or a whole name" + near};
  }
  if (problem.kind == Kind::unknownDay) {
    return {Exit::usage, "day", quoted(word) + ": " + std::string(problem.reason)};
  }
  std::string message = quoted(problem.place < text.size() ? wordAt(text, problem.place) : text);
  if (problem.kind == Kind::unknownCurrency) {
    message += " is no finite number and no currency; expected an amount like " + plainly(12.5);
  } else {
    message += " is no amount: " + std::string(problem.reason) + atPlace(text, problem.place);
  }
  return {Exit::usage, "amount", message + near};
}

std::string textOf(const SentenceNotice& notice) {
  using Notice = SentenceNotice::Kind;
  const std::string read = quoted(notice.text) + " was read as ";
  const std::string code = notice.currency != nullptr ? notice.currency->code() : "";
  switch (notice.kind) {
    case Notice::otherReading:
      return read + plainly(notice.value) + "; write " + plainly(notice.other) + " for the other";
    case Notice::region:
      return read + code + ", the currency of the locale";
    case Notice::trade:
      return read + code + ", the most traded currency with that name or sign";
    case Notice::name:
      return read + codeAndName(*notice.currency, true);
    case Notice::hundredths:
    case Notice::hundredthsResult:
      return notice.text +
             (notice.value == kHundred ? " are hundredths of " : " are hundred-millionths of ") +
             code + (notice.kind == Notice::hundredths ? "" : ", in which the result is");
    case Notice::troyOunces:
      return "amounts of " + code + " are in troy ounces";
    case Notice::accounting:
      break;
  }
  return read + plainly(notice.value);
}

// A sign that several share, or an amount with one.
bool endsInSharedSign(const std::string& word) {
  using By = TypedAmount::CurrencyBy;
  const bool isPlain = word.size() > 2 && std::all_of(word.begin(), word.end(), [](char c) {
                         return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z');
                       });
  if (isPlain) return false;
  if (codesOfSign(word).size() > 1) return true;
  const TypedAmount amount = readAmount(word);
  return amount.currencyBy == By::region || amount.currencyBy == By::trade;
}

bool holdsDigit(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string sentenceOf(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    const auto first = word.find_first_not_of(" \t\r\n");
    if (first == word.npos) continue;
    const auto last = word.find_last_not_of(" \t\r\n");
    if (!text.empty()) text += ' ';
    text.append(word, first, last - first + 1);
    if (&word != &words.back() && holdsDigit(text) && endsInSharedSign(word)) text += " =";
  }
  return text;
}

Sentence readWords(const std::vector<std::string>& words) {
  // What a script's variable is that was never set.
  const bool isBlank = !words.empty() && isBlankText(words.front());
  if (isBlank || std::find(words.begin(), words.end(), std::string()) != words.end()) {
    const std::string blank = isBlank ? words.front() : std::string();
    throw Failure{Exit::usage, "amount", quoted(blank) + " is no amount and no currency"};
  }
  const std::string text = sentenceOf(words);
  Sentence sentence = readSentence(text);
  if (sentence.problem) throw failureOf(text, *sentence.problem);
  if (sentence.source == nullptr) {
    throw usageFailure("expected a currency after the amount, as in: fexora 100 USD EUR");
  }
  return sentence;
}

std::vector<std::string> noticeTexts(const Sentence& sentence) {
  std::vector<std::string> texts;
  for (const SentenceNotice& notice : sentence.notices) {
    std::string text = textOf(notice);
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) texts.push_back(text);
  }
  return texts;
}

}  // namespace fexora::program
