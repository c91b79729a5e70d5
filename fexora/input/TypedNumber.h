// What a run of digits and marks means (input/TypedAmount.h has the rules).
// Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "fexora/input/TypedSymbols.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

// What the marks may mean in a locale, each in the form that typedForm gives.
class TypedMarks {
 public:
  // `money`: beside a currency.
  TypedMarks(const NumberMarks& locale, bool money) noexcept;

  // With `digits` after it.
  bool canBeDecimal(char32_t mark, std::size_t digits) const noexcept;
  // Whether the number may begin or end with it.
  bool canEnd(char32_t mark) const noexcept;
  bool canGroup(char32_t mark) const noexcept;
  bool isMark(char32_t sign) const noexcept;
  // What the locale itself says: its decimal mark, without another one for money; and the mark
  // that it groups with.
  bool isSurelyDecimal(char32_t mark) const noexcept { return sure_ && mark == decimal_; }
  bool isLocalesGrouping(char32_t mark) const noexcept { return mark == grouping_; }

  // Digits of the group before the decimal mark, and of each further one.
  std::size_t lastGroup() const noexcept { return lastGroup_; }
  std::size_t otherGroups() const noexcept { return otherGroups_; }

 private:
  char32_t decimal_;
  char32_t grouping_;
  char32_t moneyGrouping_;
  bool sure_;
  std::size_t lastGroup_;
  std::size_t otherGroups_;
};

struct NumberReading {
  double value = 0.0;
  std::optional<double> other;  // the second reading of an ambiguous one
  std::string_view reason;      // why it is no number; empty for a number
  std::size_t place = 0;        // with a reason
};

// One mark where it may be both, read with it as decimal mark and as one between groups.
NumberReading readOpen(double decimal, double grouped, char32_t mark, const TypedMarks& marks);

// `run` is digits, at least one, and marks.
NumberReading readNumber(TypedRun run, const TypedMarks& marks);

}  // namespace fexora
