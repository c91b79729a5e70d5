// What a run of digits and marks means (input/TypedAmount.h has the rules).
// Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/input/TypedSymbols.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

// What the marks may mean in a locale, each in the form that typedForm gives.
class TypedMarks {
 public:
  // Beside what the number stands.
  struct Money {
    bool isMoney = false;
    std::optional<int> digits{};  // of the currency's minor unit, where there is one
  };
  TypedMarks(const NumberMarks& locale, Money money) noexcept;

  // With `digits` after it.
  bool canBeDecimal(char32_t mark, std::size_t digits) const noexcept;
  // Whether the number may begin or end with it.
  bool canEnd(char32_t mark) const noexcept;
  bool canGroup(char32_t mark) const noexcept;
  bool isMark(char32_t sign) const noexcept;
  // Whether three digits after a mark are no fraction, since the currency has no smaller unit.
  bool isWhole() const noexcept { return whole_; }
  // What the locale itself says: its decimal mark, without another one for money and beside no
  // currency that has fewer than three digits; and the mark that it groups with.
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
  bool whole_;
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

// `run` is digits, at least one, and marks; `exponent` the power of ten beside them.
NumberReading readNumber(TypedRun run, const TypedMarks& marks, std::string_view exponent = {});

// The number of a run that is "e" or "E", perhaps a sign, and digits, at most nine of them.
std::optional<std::string> exponentOf(TypedRun run);

// How many symbols at the head of what follows a number say that nothing is beyond it: ",-", ".-",
// "/-" and the same with a dash or with two (",--"), not before a digit; 0 for none.
std::size_t evenEnding(TypedRun run) noexcept;

// What a currency's code says about the numbers beside it; nothing for an empty one.
TypedMarks::Money moneyOf(std::string_view code) noexcept;

}  // namespace fexora
