// Reading and writing numbers in the decimal style of one locale.
//
// Making one costs some microseconds, so it is made once for each locale and kept. Immutable once
// made: any thread, several at once.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/decimfmt.h>
#include <unicode/numberformatter.h>

#include "fexora/platform/text/Text.h"

namespace fexora {

class IcuNumbers {
 public:
  explicit IcuNumbers(std::string_view localeName);

  // The kept one of a locale.
  static std::shared_ptr<const IcuNumbers> forLocale(std::string_view localeName);
  // The kept one's: each amount that is read asks for it.
  static std::string decimalSeparator(std::string_view localeName);

  const NumberMarks& marks() const noexcept { return marks_; }
  // Made at the first call.
  const std::vector<NumberWord>& words() const;
  std::optional<double> parse(std::string_view text,
                              std::optional<int> maximumFractionDigits) const;
  std::string format(double value, const NumberStyle& style) const;

 private:
  std::string decimalSeparator_ = ".";
  NumberMarks marks_;
  icu::Locale locale_;
  mutable std::once_flag wordsMade_;
  mutable std::vector<NumberWord> words_;
  std::unique_ptr<icu::DecimalFormat> parser_;  // null where ICU's data cannot be had
  icu::number::LocalizedNumberFormatter formatter_;
};

}  // namespace fexora
