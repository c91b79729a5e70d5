#include "programs/search/Query.h"

namespace fexora::search {
namespace {

// Longer texts are no amounts.
constexpr std::size_t kMostBytes = 200;

bool isPair(const Sentence& sentence) {
  using By = TypedAmount::CurrencyBy;
  const By by = sentence.amount.currencyBy;
  // Only codes and signs leave no notices.
  return !sentence.destinations.empty() && (by == By::code || by == By::sign) &&
         sentence.notices.empty();
}

}  // namespace

std::optional<Sentence> sentenceIn(const std::string& query) {
  if (query.size() > kMostBytes) return std::nullopt;
  SentenceOptions options;
  options.offers = false;
  Sentence sentence = readSentence(query, options);
  const bool isMoney = !sentence.problem && sentence.source != nullptr && !sentence.isDoubtful &&
                       !sentence.day && (sentence.hasAmount || isPair(sentence));
  return isMoney ? std::optional(std::move(sentence)) : std::nullopt;
}

}  // namespace fexora::search
