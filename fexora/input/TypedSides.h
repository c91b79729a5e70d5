// What stands beside the number of a typed amount: a currency, and a sign for the number or the
// currency (input/TypedAmount.h has the rules).
// Any thread.
#pragma once

#include <string>
#include <string_view>

#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/input/TypedSymbols.h"

namespace fexora {

class TypedSides {
 public:
  // `locale` outlives this object.
  explicit TypedSides(std::string_view locale) noexcept : locale_(locale) {}

  // Takes a currency, or one and the same twice, as "AUD $", or blanks alone; false, and nothing is
  // taken, for anything else and for a second, other currency.
  bool takeCurrency(TypedRun run);
  // The same with one of `signs` at either end, when no earlier run had one.
  bool takeSigned(TypedRun run, std::u32string_view signs);

  bool isNegative() const noexcept { return negative_; }
  // Empty when there is none.
  const std::string& currency() const noexcept { return currency_; }
  // Whether a code says the currency; otherwise how its sign was read.
  bool byCode() const noexcept { return sign_.empty(); }
  SignReading::Why why() const noexcept { return why_; }
  // What part of the currency the number counts.
  double share() const noexcept { return share_; }

  // Why a run was not taken, for a person.
  std::string_view reason() const noexcept;

 private:
  bool takeOne(TypedRun run);
  bool takeSign(const std::string& sign);
  bool takeCode(std::string_view text);

  std::string_view locale_;
  std::string currency_;
  std::string sign_;
  SignReading::Why why_ = SignReading::Why::only;
  double share_ = 1.0;
  bool negative_ = false;
  bool signed_ = false;
  bool second_ = false;
};

// The code that `text` is in any case; empty when it is none.
std::string typedCode(std::string_view text);

// Whether the run ends with the dot of an abbreviation, as "Rp." and "S/." do and "$." does not.
bool endsShortened(TypedRun run) noexcept;

}  // namespace fexora
