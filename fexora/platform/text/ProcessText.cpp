#include "fexora/platform/text/ProcessText.h"

#include <utility>

#include "fexora/platform/text/AsciiText.h"
#include "fexora/platform/text/Locale.h"
#include "fexora/platform/text/PlainNumbers.h"

namespace fexora {

ProcessText::ProcessText(std::function<Text*()> open) : open_(std::move(open)) {}

Text* ProcessText::module() {
  // Each text asks: a flag is read in less than call_once takes to find that it is done.
  if (!isOpened_.load(std::memory_order_acquire)) {
    std::call_once(opened_, [this] { module_ = open_(); });
    isOpened_.store(true, std::memory_order_release);
  }
  return module_;
}

std::string ProcessText::lowercased(std::string_view text) {
  Text* const unicode = isAscii(text) ? nullptr : module();
  return unicode != nullptr ? unicode->lowercased(text) : ascii::lowercased(text);
}

std::string ProcessText::folded(std::string_view text) {
  Text* const unicode = isAscii(text) ? nullptr : module();
  return unicode != nullptr ? unicode->folded(text) : ascii::lowercased(text);
}

std::string ProcessText::canonical(std::string_view text) {
  Text* const unicode = isAscii(text) ? nullptr : module();
  return unicode != nullptr ? unicode->canonical(text) : std::string(text);
}

std::size_t ProcessText::characterCount(std::string_view text) {
  Text* const unicode = isAscii(text) ? nullptr : module();
  return unicode != nullptr ? unicode->characterCount(text) : ascii::characterCount(text);
}

std::vector<std::size_t> ProcessText::characterEnds(std::string_view text) {
  Text* const unicode = isAscii(text) ? nullptr : module();
  return unicode != nullptr ? unicode->characterEnds(text) : ascii::characterEnds(text);
}

bool ProcessText::contains(std::string_view whole, std::string_view part) {
  Text* const unicode = isAscii(whole) && isAscii(part) ? nullptr : module();
  return unicode != nullptr ? unicode->contains(whole, part) : ascii::contains(whole, part);
}

std::string ProcessText::decimalSeparator(std::string_view locale) {
  Text* const data = Locale::hasPlainNumbers(locale) ? nullptr : module();
  return data != nullptr ? data->decimalSeparator(locale) : ".";
}

NumberMarks ProcessText::numberMarks(std::string_view locale) {
  Text* const data = Locale::hasPlainNumbers(locale) ? nullptr : module();
  return data != nullptr ? data->numberMarks(locale) : NumberMarks();
}

std::optional<double> ProcessText::parseNumber(std::string_view text, std::string_view locale,
                                               std::optional<int> maximumFractionDigits) {
  const bool plain = Locale::hasPlainNumbers(locale) && isAscii(text);
  Text* const data = plain ? nullptr : module();
  return data != nullptr ? data->parseNumber(text, locale, maximumFractionDigits)
                         : parsePlainNumber(text, maximumFractionDigits);
}

std::string ProcessText::formatNumber(double value, std::string_view locale,
                                      const NumberStyle& style) {
  Text* const data = Locale::hasPlainNumbers(locale) ? nullptr : module();
  return data != nullptr ? data->formatNumber(value, locale, style)
                         : formatPlainNumber(value, style);
}

std::optional<std::string> ProcessText::currencyName(std::string_view code,
                                                     std::string_view locale) {
  Text* const data = module();
  return data != nullptr ? data->currencyName(code, locale) : std::nullopt;
}

std::vector<std::string> ProcessText::currencyPlurals(std::string_view code,
                                                      std::string_view locale) {
  Text* const data = module();
  return data != nullptr ? data->currencyPlurals(code, locale) : std::vector<std::string>();
}

std::vector<NumberWord> ProcessText::numberWords(std::string_view locale) {
  Text* const data = Locale::hasPlainNumbers(locale) ? nullptr : module();
  return data != nullptr ? data->numberWords(locale) : std::vector<NumberWord>();
}

std::vector<std::string> ProcessText::regionNames(std::string_view region,
                                                  std::string_view locale) {
  Text* const data = module();
  return data != nullptr ? data->regionNames(region, locale) : std::vector<std::string>();
}

std::vector<std::string> ProcessText::locales() {
  Text* const text = module();
  return text != nullptr ? text->locales() : std::vector<std::string>();
}

}  // namespace fexora
