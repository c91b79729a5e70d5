// A product of printed figures over another one, rounded once.
//
// As many digits as a double bears, fifteen, whatever the figures: what is written out afterwards
// is a rate and not the dust of a division. The figures count as the decimals that they are, not as
// doubles; of one that divides, the first 18 digits. One thread at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API FigureQuotient {
 public:
  // Figures as isFigure() takes them. Their text must stay until value(). At most 70 of each.
  void multiplyBy(std::string_view figure) noexcept { top_.add(figure); }
  void divideBy(std::string_view figure) noexcept { bottom_.add(figure); }

  // A half goes to the even digit. May throw std::bad_alloc.
  double value() const;

 private:
  // A product as digits × 10^exponent, while the digits fit.
  struct Product {
    void add(std::string_view figure) noexcept;

    std::uint64_t digits = 1;
    int exponent = 0;
    bool isExact = true;
    std::size_t count = 0;
    std::array<std::string_view, 70> figures{};
  };

  double slowValue() const;

  Product top_;
  Product bottom_;
};

}  // namespace fexora
