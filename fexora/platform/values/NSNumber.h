// A boxed number: an immutable 16-byte value that remembers what it was made from.
//
// Kinds matter to the store file (a boolean, an integer and a real are written differently) and to
// the settings (an integer setting takes an integer only). Reading a number as another kind never
// fails: see each accessor.
//
// Any thread. Only what takes or gives a text may throw std::bad_alloc; nothing else is thrown.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// An integer that is meant as a number: neither a boolean nor a character, whose code nobody means.
template <class T>
concept PlainInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> &&
                       !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                       !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

class FEXORA_API NSNumber {
 public:
  enum class Kind : std::uint8_t { boolean, integer, real };

  // The integer 0.
  constexpr NSNumber() noexcept : integer_(0), kind_(Kind::integer) {}

  // NOLINTBEGIN(google-explicit-constructor): a number stands wherever a boxed number is taken.
  constexpr NSNumber(std::same_as<bool> auto value) noexcept
      : integer_(value ? 1 : 0), kind_(Kind::boolean) {}

  // An integer that does not fit 64 signed bits becomes a real.
  template <PlainInteger T>
  constexpr NSNumber(T value) noexcept : integer_(0), kind_(Kind::integer) {
    if constexpr (std::is_unsigned_v<T> && sizeof(T) >= sizeof(std::int64_t)) {
      if (value > static_cast<T>(std::numeric_limits<std::int64_t>::max())) {
        real_ = static_cast<double>(value);
        kind_ = Kind::real;
        return;
      }
    }
    integer_ = static_cast<std::int64_t>(value);
  }

  constexpr NSNumber(std::floating_point auto value) noexcept
      : real_(static_cast<double>(value)), kind_(Kind::real) {}

  // The number that a typed text denotes in the current locale, always a real; the point and the
  // comma both serve as decimal mark where the locale's own mark is one of the two. Text that is
  // absent, empty or no number gives 0.0. `maxFractionDigints` bounds the digits kept after the
  // mark (half to even). See platform/text/AmountParsing.h for what counts as a number.
  NSNumber(const char* string, std::optional<int> maxFractionDigints = {});
  NSNumber(const std::string& string, std::optional<int> maxFractionDigints = {})
      : NSNumber(std::optional<std::string_view>(string), maxFractionDigints) {}
  NSNumber(std::optional<std::string_view> string, std::optional<int> maxFractionDigints = {});
  // NOLINTEND(google-explicit-constructor)

  constexpr Kind kind() const noexcept { return kind_; }

  constexpr double doubleValue() const noexcept {
    return kind_ == Kind::real ? real_ : static_cast<double>(integer_);
  }
  // The nearest float; infinite from where that would be beyond the largest one.
  float floatValue() const noexcept;
  // A real is cut towards zero and held to the 64-bit range; not-a-number gives 0.
  std::int64_t intValue() const noexcept;
  constexpr bool boolValue() const noexcept {
    return kind_ == Kind::real ? real_ != 0.0 : integer_ != 0;
  }
  // The shortest text that reads back to the same number, with a point as decimal mark whatever
  // the locale; a boolean gives "1" or "0".
  std::string stringValue() const;

  // The same numeric value, whatever the kinds; not-a-number equals nothing.
  friend bool operator==(const NSNumber& a, const NSNumber& b) noexcept {
    if (a.kind_ == Kind::real || b.kind_ == Kind::real) return a.doubleValue() == b.doubleValue();
    return a.integer_ == b.integer_;
  }

 private:
  union {
    std::int64_t integer_;  // boolean and integer
    double real_;
  };
  Kind kind_;
};

static_assert(sizeof(NSNumber) == 16);

}  // namespace fexora
