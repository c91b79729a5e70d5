#include "programs/search/Query.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "programs/shared/Currencies.h"
#include "programs/shared/Failure.h"
#include "programs/shared/ShownNames.h"

namespace fexora::search {
namespace {

using Words = std::vector<std::string>;

// Longer texts are no amounts, and looking at each costs time by the square of its words.
constexpr std::size_t kMostWords = 12;
constexpr std::size_t kMostBytes = 200;

Words wordsOf(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\n";
  Words words;
  for (auto at = text.find_first_not_of(kBlanks); at != std::string_view::npos;) {
    const auto end = std::min(text.find_first_of(kBlanks, at), text.size());
    words.emplace_back(text.substr(at, end - at));
    at = text.find_first_not_of(kBlanks, end);
  }
  return words;
}

std::string joined(const Words& words, std::size_t from, std::size_t to) {
  std::string text;
  for (std::size_t i = from; i < to; ++i) text.append(i == from ? "" : " ").append(words[i]);
  return text;
}

// Digits of any script: those beyond ASCII are told apart by who reads the amount.
bool mayHoldNumber(std::string_view query) {
  return query.size() <= kMostBytes && std::any_of(query.begin(), query.end(), [](char c) {
           return (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
         });
}

bool isAmount(const std::string& text) {
  try {
    program::amountFromText(text);
    return true;
  } catch (const program::Failure&) {
    return false;
  }
}

// The end of the longest run of words from `from` on that `takes`; `from` when there is none.
template <class Takes>
std::size_t longestRun(const Words& words, std::size_t from, Takes takes) {
  for (std::size_t end = words.size(); end > from; --end) {
    if (takes(joined(words, from, end))) return end;
  }
  return from;
}

// The amount and then each currency in words of its own, as on a command line; nothing when there
// is something else.
std::optional<Words> operandsIn(const Words& words) {
  std::size_t at = longestRun(words, 0, isAmount);
  if (at == 0) return std::nullopt;
  // Read with the amount it would be a code.
  if (at > 1 && program::isHundredth(words[at - 1])) --at;
  Words operands = {joined(words, 0, at)};
  while (at < words.size()) {
    if (program::isFiller(words[at])) {
      ++at;
      continue;
    }
    const std::size_t end = longestRun(words, at, program::namesCurrency);
    if (end == at) return std::nullopt;
    operands.push_back(joined(words, at, end));
    at = end;
  }
  return operands;
}

// Whether the text is a code, or whole words of the currency's name.
bool isWholeName(const std::string& text, const Currency& currency) {
  if (program::findCurrency(text) != nullptr || !codesOfSign(text).empty()) return true;
  const Words name = wordsOf(Text::process().folded(program::nameOf(currency)));
  const Words typed = wordsOf(Text::process().folded(text));
  return std::all_of(typed.begin(), typed.end(), [&](const std::string& word) {
    return std::find(name.begin(), name.end(), word) != name.end();
  });
}

}  // namespace

std::optional<program::Request> requestIn(const std::string& query) {
  if (!mayHoldNumber(query)) return std::nullopt;
  const Words words = wordsOf(query);
  if (words.empty() || words.size() > kMostWords) return std::nullopt;
  const auto operands = operandsIn(words);
  if (!operands) return std::nullopt;
  try {
    program::Request request = program::requestOf(*operands, operands->front());
    const bool isAlone = operands->size() == 2 && request.destinations.empty();
    if (isAlone && !isWholeName(operands->back(), *request.source)) return std::nullopt;
    return request;
  } catch (const program::Failure&) {
    return std::nullopt;
  }
}

}  // namespace fexora::search
