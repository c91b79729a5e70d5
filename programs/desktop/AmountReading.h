// What a typed text means, in words for the line under the field.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string>

namespace fexora::desktop {

struct AmountReading {
  enum class Kind : std::uint8_t { empty, number, calculation, refused };

  Kind kind = Kind::empty;
  double value = 0;              // finite; of numbers and calculations
  std::optional<double> other;   // with the second reading of each ambiguous number in it
  std::string currency;          // that stands beside the number, or empty
  bool currencyIsGuess = false;  // its sign is that of several
  QString problem;               // of a refused text, one line

  bool hasAmount() const { return kind == Kind::number || kind == Kind::calculation; }
};

// In the current locale. A calculation that is still being typed ("12+") is read as far as it goes.
AmountReading readTyped(const QString& text);

}  // namespace fexora::desktop
