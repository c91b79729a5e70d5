#include "programs/search/Answers.h"

#include <cmath>
#include <optional>

#include "programs/search/Query.h"
#include "programs/shared/PairFinder.h"
#include "programs/shared/RatesText.h"
#include "programs/shared/Selection.h"
#include "programs/shared/SentenceText.h"

namespace fexora::search {
namespace {

using program::PairFinder;

std::vector<CurrencyRef> destinationsOf(const Sentence& sentence, const StoreManager& store) {
  if (!sentence.destinations.empty()) return sentence.destinations;
  return program::linesOf(store.loadCurrencies(), *sentence.source);
}

std::string ageOf(const PairFinder::Found& found) {
  if (!found.of) return program::ratesText(rateManager().freshness());
  Freshness other;
  other.published = found.of->published;
  other.source = found.of->source;
  other.origin = found.of->origin;
  return program::ratesText(other);
}

std::string textOf(const Sentence& sentence, const PairFinder::Found& found,
                   const NumberFormat& format) {
  const Rate& rate = found.rate;
  std::string text = format.exact(sentence.amount.value) + " " + sentence.source->code() + ", 1 " +
                     sentence.source->code() + " = " + format.rate(rate.rate().doubleValue()) +
                     " " + rate.dst()->code() + ", " + ageOf(found);
  for (const std::string& notice : program::noticeTexts(sentence)) text += "; " + notice;
  return text;
}

}  // namespace

std::vector<Answer> answersTo(const std::string& query, const StoreManager& store) {
  const auto sentence = sentenceIn(query);
  if (!sentence) return {};
  const PairFinder rates(rateManager(), store);
  const NumberFormat format(store.fraction(), store.seporate());
  const NumberFormat plain(store.fraction(), false);
  std::vector<Answer> answers;
  for (const CurrencyRef& destination : destinationsOf(*sentence, store)) {
    if (answers.size() == kMostAnswers) break;
    const auto found = rates.find(sentence->source, destination);
    if (!found) continue;
    const double amount = sentence->amount.value * found->rate.rate().doubleValue();
    if (!std::isfinite(amount)) continue;
    answers.push_back({plain.exact(sentence->amount.value) + " " + sentence->source->code() + " " +
                           destination->code(),
                       format.amount(amount) + " " + destination->code(),
                       textOf(*sentence, *found, format), plain.amount(amount)});
  }
  return answers;
}

}  // namespace fexora::search
