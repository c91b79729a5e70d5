#include "fexora/platform/text/icu/IcuNumbers.h"

#include <algorithm>
#include <cmath>

#include <unicode/uchar.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/text/Decimal.h"
#include "fexora/platform/text/PlainNumbers.h"
#include "fexora/platform/text/icu/IcuLocale.h"
#include "fexora/platform/text/icu/IcuNumberWords.h"
#include "fexora/platform/text/icu/KeptByName.h"

namespace fexora {
namespace {

std::unique_ptr<icu::DecimalFormat> makeFormat(const icu::Locale& locale,
                                               UNumberFormatStyle style) {
  UErrorCode error = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> format(
      icu::NumberFormat::createInstance(locale, style, error));
  auto* const decimal = dynamic_cast<icu::DecimalFormat*>(format.get());
  if (U_FAILURE(error) != 0 || decimal == nullptr) return nullptr;
  format.release();  // NOLINT(bugprone-unused-return-value): the cast pointer takes it over
  return std::unique_ptr<icu::DecimalFormat>(decimal);
}

// The digits as typed, rounded; nothing for an infinite number, which has none.
std::optional<Decimal> roundedDecimal(const icu::Formattable& number, int maximumFractionDigits) {
  UErrorCode error = U_ZERO_ERROR;
  icu::Formattable copy(number);
  const icu::StringPiece digits = copy.getDecimalNumber(error);
  if (U_FAILURE(error) != 0) return std::nullopt;
  auto decimal = Decimal::fromText({digits.data(), static_cast<std::size_t>(digits.size())});
  if (decimal) decimal->round(std::max(maximumFractionDigits, 0));
  return decimal;
}

// Whether only zeros stand before the sign of an exponent. ICU takes an exponent beyond 32 bits for
// infinity, whatever it belongs to.
bool isZeroWithExponent(icu::UnicodeString typed, const icu::DecimalFormat& format) {
  icu::UnicodeString sign = format.getDecimalFormatSymbols()->getConstSymbol(
      icu::DecimalFormatSymbols::kExponentialSymbol);
  const std::int32_t end = typed.foldCase().indexOf(sign.foldCase());
  bool hasZero = false;
  for (std::int32_t at = 0; at < end; at = typed.moveIndex32(at, 1)) {
    const std::int32_t digit = u_charDigitValue(typed.char32At(at));
    if (digit > 0) return false;
    hasZero = hasZero || digit == 0;
  }
  return hasZero;
}

void takeGroups(const icu::DecimalFormat& format, NumberMarks& marks) {
  // Zero, where a locale does not group at all or has one size for all groups.
  if (format.getGroupingSize() > 0) marks.lastGroup = format.getGroupingSize();
  const int others = format.getSecondaryGroupingSize();
  marks.otherGroups = others > 0 ? others : marks.lastGroup;
}

NumberMarks marksOf(const icu::DecimalFormat& format, const icu::Locale& locale) {
  using Symbols = icu::DecimalFormatSymbols;
  const Symbols& symbols = *format.getDecimalFormatSymbols();
  const auto mark = [&symbols](Symbols::ENumberFormatSymbol which) {
    return static_cast<char32_t>(symbols.getConstSymbol(which).char32At(0));
  };
  NumberMarks marks{mark(Symbols::kDecimalSeparatorSymbol), mark(Symbols::kGroupingSeparatorSymbol),
                    mark(Symbols::kMonetarySeparatorSymbol),
                    mark(Symbols::kMonetaryGroupingSeparatorSymbol)};
  takeGroups(format, marks);
  // Urdu in India groups by two in money only.
  const auto money = makeFormat(locale, UNUM_CURRENCY);
  if (money != nullptr && marks.otherGroups == marks.lastGroup) takeGroups(*money, marks);
  return marks;
}

KeptByName<IcuNumbers>& keptNumbers() {
  static NoDestructor<KeptByName<IcuNumbers>> kept;
  return *kept;
}

auto maker(std::string_view localeName) {
  return [localeName] { return std::make_shared<const IcuNumbers>(localeName); };
}

}  // namespace

IcuNumbers::IcuNumbers(std::string_view localeName) {
  icu::Locale locale = numberLocale(localeName);
  parser_ = makeFormat(locale, UNUM_DECIMAL);
  if (parser_ == nullptr) {
    // A name of a known language may still be too long for a format.
    locale = icu::Locale::getUS();
    parser_ = makeFormat(locale, UNUM_DECIMAL);
  }
  locale_ = locale;
  formatter_ = icu::number::NumberFormatter::withLocale(locale);
  if (parser_ == nullptr) return;
  const icu::DecimalFormatSymbols* const symbols = parser_->getDecimalFormatSymbols();
  decimalSeparator_.clear();
  symbols->getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol)
      .toUTF8String(decimalSeparator_);
  marks_ = marksOf(*parser_, locale);
  // A typed point would be taken for a mark between groups where the decimal mark is another sign,
  // and 12.345 read as 12345.
  if (decimalSeparator_ != "." && decimalSeparator_ != ",") parser_->setGroupingUsed(false);
}

std::shared_ptr<const IcuNumbers> IcuNumbers::forLocale(std::string_view localeName) {
  return keptNumbers().get(localeName, maker(localeName));
}

std::string IcuNumbers::decimalSeparator(std::string_view localeName) {
  return keptNumbers().ask(localeName, maker(localeName),
                           [](const IcuNumbers& numbers) { return numbers.decimalSeparator_; });
}

std::optional<double> IcuNumbers::parse(std::string_view text,
                                        std::optional<int> maximumFractionDigits) const {
  if (text.empty() || text.size() > limits::kAmountBytes || parser_ == nullptr) {
    return std::nullopt;
  }
  const auto typed = icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
  icu::Formattable number;
  icu::ParsePosition position(0);
  parser_->parse(typed, number, position);
  if (position.getIndex() != typed.length()) return std::nullopt;
  UErrorCode error = U_ZERO_ERROR;
  const double value = number.getDouble(error);
  if (U_FAILURE(error) != 0 || std::isnan(value)) return std::nullopt;
  if (std::isinf(value) && isZeroWithExponent(typed, *parser_)) return std::copysign(0.0, value);
  const auto rounded =
      maximumFractionDigits ? roundedDecimal(number, *maximumFractionDigits) : std::nullopt;
  return rounded ? std::copysign(rounded->value(), value) : value;
}

const std::vector<NumberWord>& IcuNumbers::words() const {
  std::call_once(wordsMade_, [this] { words_ = shortNumberWords(locale_); });
  return words_;
}

std::string IcuNumbers::format(double value, const NumberStyle& style) const {
  const int most = std::clamp(style.maximumFractionDigits, 0, limits::kFractionDigits);
  const int least = std::clamp(style.minimumFractionDigits, 0, most);
  UErrorCode error = U_ZERO_ERROR;
  const icu::number::FormattedNumber formatted =
      formatter_.precision(icu::number::Precision::minMaxFraction(least, most))
          .roundingMode(UNUM_ROUND_HALFEVEN)
          .grouping(style.grouping ? UNUM_GROUPING_AUTO : UNUM_GROUPING_OFF)
          .sign(UNUM_SIGN_NEGATIVE)
          .formatDouble(value, error);
  std::string out;
  formatted.toString(error).toUTF8String(out);
  return U_SUCCESS(error) != 0 ? out : formatPlainNumber(value, style);
}

}  // namespace fexora
