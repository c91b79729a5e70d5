#include "fexora/catalogue/CurrencyNames.h"

#include <utility>

#include "fexora/catalogue/EnglishNames.h"
#include "fexora/platform/text/Locale.h"

namespace fexora {
namespace {

bool isEnglish(std::string_view language) {
  return language == "C" || language == "POSIX" || language.substr(0, language.find('_')) == "en";
}

std::optional<std::string> tableName(std::string_view code) {
  const auto name = englishName(code);
  return name ? std::optional<std::string>(*name) : std::nullopt;
}

}  // namespace

CurrencyNames::CurrencyNames(Text& text, std::string language)
    : text_(text), language_(std::move(language)) {}

std::string CurrencyNames::language() {
  {
    const std::lock_guard lock(mutex_);
    if (!language_.empty()) return language_;
  }
  return Locale::currentLanguage();
}

std::optional<std::string> CurrencyNames::string(std::string_view key) {
  const std::string asked = language();
  if (isEnglish(asked)) {
    if (auto name = tableName(key)) return name;
  }
  if (auto name = text_.currencyName(key, asked)) return name;
  return tableName(key);
}

std::uint64_t CurrencyNames::generation() {
  // The count first: a change that comes in between is seen at the next call.
  const std::uint64_t changes = Locale::changes();
  Seen now{changes, language()};
  const std::lock_guard lock(mutex_);
  if (now != seen_) {
    seen_ = std::move(now);
    generation_ = newGeneration();
  }
  return generation_;
}

void CurrencyNames::setLanguage(std::string language) {
  const std::lock_guard lock(mutex_);
  if (language == language_) return;
  language_ = std::move(language);
  // Names may have been read meanwhile, and the language be set back before anybody asks.
  generation_ = newGeneration();
}

}  // namespace fexora
