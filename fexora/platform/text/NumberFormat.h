// Amounts and rates as people read them: in the current locale, by the user's settings.
//
// A number that the wanted digits would show as zero though it is not gets more of them: what is
// there is never shown as nothing. Any thread.
#pragma once

#include <cstdint>
#include <string>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

class FEXORA_API NumberFormat {
 public:
  // `fraction` digits after the mark (clamped to 0 to 15), with signs between groups of digits if
  // `grouping`: a store's fraction() and seporate(). `rules` outlives it.
  NumberFormat(std::int64_t fraction, bool grouping, Text& rules = Text::process());

  // With the wanted digits; one below 1 gets more where three significant ones need them.
  std::string amount(double value) const;
  // Six significant digits at least.
  std::string rate(double value) const;
  // As many digits as the number has, up to fifteen.
  std::string exact(double value) const;

 private:
  std::string write(double value, int fewest, int most) const;

  int fraction_;
  bool grouping_;
  Text& rules_;
};

}  // namespace fexora
