#include "fexora/store/RatesAnswer.h"

#include "fexora/platform/text/OneLine.h"
#include "fexora/store/StoreKeys.h"

namespace fexora {
namespace {

constexpr std::string_view kUpdated = "updated";
constexpr std::string_view kPublished = "published";
constexpr std::string_view kSource = "source";
constexpr std::string_view kOrigin = "origin";
constexpr std::string_view kFile = "file";

const Date* date(const Dictionary& content, std::string_view key) {
  const Value* value = content.find(key);
  return value != nullptr ? value->date() : nullptr;
}

std::string text(const Dictionary& content, std::string_view key) {
  const Value* value = content.find(key);
  return value != nullptr && value->string() != nullptr ? *value->string() : "";
}

}  // namespace

Value RatesAnswer::keptWith(const Date& updated) const {
  Dictionary kept;
  kept.set(kUpdated, updated);
  kept.set(kSource, oneLine(source));
  if (published) kept.set(kPublished, *published);
  kept.set(kOrigin, origin == Origin::file ? kFile : "service");
  return kept;
}

std::optional<RatesAnswer> RatesAnswer::from(const Dictionary& content) {
  const Value* value = content.find(kUDRatesAnswer);
  const Dictionary* kept = value != nullptr ? value->dictionary() : nullptr;
  const Date* updated = date(content, kUDUSDRatesUpdated);
  const Date* same = kept != nullptr ? date(*kept, kUpdated) : nullptr;
  if (updated == nullptr || same == nullptr || *updated != *same) return std::nullopt;
  RatesAnswer answer;
  if (const Date* published = date(*kept, kPublished)) answer.published = *published;
  answer.source = oneLine(text(*kept, kSource));
  if (text(*kept, kOrigin) == kFile) answer.origin = Origin::file;
  return answer;
}

}  // namespace fexora
