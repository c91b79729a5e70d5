#include "programs/search/Answers.h"

#include <cmath>
#include <optional>

#include "programs/search/Query.h"
#include "programs/shared/PairFinder.h"
#include "programs/shared/RatesText.h"
#include "programs/shared/Selection.h"

namespace fexora::search {
namespace {

using program::PairFinder;

std::vector<CurrencyRef> destinationsOf(const program::Request& request,
                                        const StoreManager& store) {
  if (!request.destinations.empty()) return request.destinations;
  return program::linesOf(store.loadCurrencies(), *request.source);
}

std::string ageOf(const PairFinder::Found& found) {
  if (!found.of) return program::ratesText(rateManager().freshness());
  Freshness other;
  other.published = found.of->published;
  other.source = found.of->source;
  other.origin = found.of->origin;
  return program::ratesText(other);
}

std::string textOf(const program::Request& request, const PairFinder::Found& found,
                   const NumberFormat& format) {
  const Rate& rate = found.rate;
  std::string text = format.exact(request.amount.value) + " " + request.source->code() + ", 1 " +
                     request.source->code() + " = " + format.rate(rate.rate().doubleValue()) + " " +
                     rate.dst()->code() + ", " + ageOf(found);
  for (const std::string& note : request.amount.notes) text += "; " + note;
  for (const std::string& note : request.notes) text += "; " + note;
  return text;
}

}  // namespace

std::vector<Answer> answersTo(const std::string& query, const StoreManager& store) {
  const auto request = requestIn(query);
  if (!request) return {};
  const PairFinder rates(rateManager(), store);
  const NumberFormat format(store.fraction(), store.seporate());
  const NumberFormat plain(store.fraction(), false);
  std::vector<Answer> answers;
  for (const CurrencyRef& destination : destinationsOf(*request, store)) {
    if (answers.size() == kMostAnswers) break;
    const auto found = rates.find(request->source, destination);
    if (!found) continue;
    const double amount = request->amount.value * found->rate.rate().doubleValue();
    if (!std::isfinite(amount)) continue;
    answers.push_back({plain.exact(request->amount.value) + " " + request->source->code() + " " +
                           destination->code(),
                       format.amount(amount) + " " + destination->code(),
                       textOf(*request, *found, format), plain.amount(amount)});
  }
  return answers;
}

}  // namespace fexora::search
