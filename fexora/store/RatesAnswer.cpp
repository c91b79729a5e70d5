#include "fexora/store/RatesAnswer.h"

#include "fexora/platform/text/OneLine.h"
#include "fexora/store/AnswerKeys.h"
#include "fexora/store/StoreKeys.h"

namespace fexora {
namespace {

constexpr std::string_view kUpdated = "updated";
constexpr std::string_view kDoubted = "doubted";
constexpr std::string_view kRate = "rate";

const Date* date(const Dictionary& content, std::string_view key) {
  const Value* value = content.find(key);
  return value != nullptr ? value->date() : nullptr;
}

Value keptDoubts(const std::vector<DoubtedRate>& doubted) {
  Dictionary kept;
  for (const DoubtedRate& each : doubted) {
    kept.set(each.code, Dictionary{{std::string(kRate), each.rate},
                                   {std::string(kAnswerPublished), each.published}});
  }
  return kept;
}

std::vector<DoubtedRate> doubtsFrom(const Dictionary& content) {
  std::vector<DoubtedRate> doubted;
  const Value* value = content.find(kDoubted);
  const Dictionary* kept = value != nullptr ? value->dictionary() : nullptr;
  if (kept == nullptr) return doubted;
  for (const auto& [code, each] : *kept) {
    const Dictionary* entry = each.dictionary();
    const Value* rate = entry != nullptr ? entry->find(kRate) : nullptr;
    const Date* published = entry != nullptr ? date(*entry, kAnswerPublished) : nullptr;
    if (rate == nullptr || rate->number() == nullptr || published == nullptr) continue;
    doubted.push_back({code, rate->number()->doubleValue(), *published});
  }
  return doubted;
}

}  // namespace

Value RatesAnswer::keptWith(const Date& updated) const {
  Dictionary kept;
  kept.set(kUpdated, updated);
  kept.set(kAnswerSource, oneLine(source));
  if (published) kept.set(kAnswerPublished, *published);
  kept.set(kAnswerOrigin, origin == Origin::file ? kAnswerFile : "service");
  if (!doubted.empty()) kept.set(kDoubted, keptDoubts(doubted));
  return kept;
}

std::optional<RatesAnswer> RatesAnswer::from(const Dictionary& content) {
  const Value* value = content.find(kUDRatesAnswer);
  const Dictionary* kept = value != nullptr ? value->dictionary() : nullptr;
  const Date* updated = date(content, kUDUSDRatesUpdated);
  const Date* same = kept != nullptr ? date(*kept, kUpdated) : nullptr;
  if (updated == nullptr || same == nullptr || *updated != *same) return std::nullopt;
  RatesAnswer answer;
  if (const Date* published = date(*kept, kAnswerPublished)) answer.published = *published;
  if (const auto* source = answerText(*kept, kAnswerSource)) answer.source = oneLine(*source);
  const std::string* origin = answerText(*kept, kAnswerOrigin);
  if (origin != nullptr && *origin == kAnswerFile) answer.origin = Origin::file;
  answer.doubted = doubtsFrom(*kept);
  return answer;
}

}  // namespace fexora
