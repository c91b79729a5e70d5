#include "fexora/input/TypedSides.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "fexora/catalogue/EnglishNames.h"
#include "fexora/input/Hundredths.h"
#include "fexora/platform/text/AsciiCase.h"

namespace fexora {
namespace {

bool writes(std::string_view sign, std::string_view code) {
  const auto codes = codesOfSign(sign);
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

}  // namespace

std::string typedCode(std::string_view text) {
  std::string code = ascii::uppercased(text);
  return englishName(code) ? code : std::string();
}

bool endsShortened(TypedRun run) noexcept {
  if (run.size() < 2 || run.back().sign != U'.') return false;
  const char32_t before = run[run.size() - 2].sign;
  return before == U'/' || isTypedLetter(before);
}

bool TypedSides::takeCurrency(TypedRun run) {
  run = trimmed(run);
  second_ = false;
  if (run.empty() || takeOne(run)) return true;
  const auto blank = std::find_if(run.begin(), run.end(),
                                  [](const TypedSymbol& symbol) { return symbol.sign == U' '; });
  const auto length = static_cast<std::size_t>(blank - run.begin());
  if (blank == run.end() || second_) return false;
  const TypedSides before = *this;
  if (takeOne(run.first(length)) && takeOne(trimmed(run.subspan(length)))) return true;
  // Whatever the first half was taken for.
  const bool isSecond = second_;
  *this = before;
  second_ = isSecond;
  return false;
}

bool TypedSides::takeOne(TypedRun run) {
  const std::string text = spelled(run);
  if (takeSign(text) || takeCode(text)) return true;
  // The dot of an abbreviation.
  return endsShortened(run) && takeOne(run.first(run.size() - 1));
}

bool TypedSides::takeSign(const std::string& sign) {
  const auto read = readSign(sign, locale_);
  if (!read) return false;
  // The currency that is there already may say which of the sign's it is.
  second_ = !currency_.empty() && !writes(sign, currency_);
  if (!currency_.empty()) return !second_;
  currency_ = read->code;
  sign_ = sign;
  why_ = read->why;
  return true;
}

bool TypedSides::takeCode(std::string_view text) {
  const auto whole = hundredthsOf(text);
  std::string code = whole ? std::string(*whole) : typedCode(text);
  if (code.empty()) return false;
  if (whole) share_ = kHundredth;
  second_ = !currency_.empty() && currency_ != code && !writes(sign_, code);
  if (second_) return false;
  currency_ = std::move(code);
  sign_.clear();
  return true;
}

bool TypedSides::takeSigned(TypedRun run, std::u32string_view signs) {
  run = trimmed(run);
  if (takeCurrency(run)) return true;
  const auto isSign = [signs](const TypedSymbol& s) { return signs.find(s.sign) != signs.npos; };
  const bool atFront = isSign(run.front());
  if (signed_ || (!atFront && !isSign(run.back()))) return false;
  const char32_t sign = atFront ? run.front().sign : run.back().sign;
  if (!takeCurrency(atFront ? run.subspan(1) : run.first(run.size() - 1))) return false;
  signed_ = true;
  negative_ = sign == U'-';
  return true;
}

std::string_view TypedSides::reason() const noexcept {
  return second_ ? "this is a second currency" : "this is neither a number nor a currency";
}

}  // namespace fexora
