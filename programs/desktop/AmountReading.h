// What a typed text means, in words for the line under the field.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::desktop {

struct AmountReading {
  enum class Kind : std::uint8_t { empty, number, calculation, refused };

  Kind kind = Kind::empty;
  double value = 0;                       // finite; of numbers and calculations
  std::optional<double> other;            // with the second reading of each ambiguous number in it
  std::string currency;                   // that was written with the amount, or empty
  std::vector<CurrencyRef> destinations;  // that were asked for after it
  QString notice;                         // what was read in one of several ways, or empty
  QString problem;                        // of a refused text, one line
  QString amountText;                     // the text without the destinations
  std::optional<Day> day;                 // whose rates are asked for

  bool hasAmount() const { return kind == Kind::number || kind == Kind::calculation; }
};

// The text as one sentence (fexora/input/Sentence.h) in the current locale. A calculation that is
// still being typed ("12+") is read as far as it goes. A day that is yet to come is refused.
AmountReading readTyped(const QString& text);

}  // namespace fexora::desktop
