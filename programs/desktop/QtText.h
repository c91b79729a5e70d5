// Texts of the library as Qt's and back, and what is shown of a currency.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "fexora/fexora.h"

namespace fexora::desktop {

inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A text from outside in one line, cut where it is very long.
QString lineOf(std::string_view text);

inline QString codeOf(const Currency& currency) {
  return toQt(currency.code());
}

// The name in the person's language, or the code.
QString nameOf(const Currency& currency);

// The sign that English writes, or empty where people write the code.
QString signOf(const Currency& currency);

// Where it is used, in the person's language: "Switzerland, Liechtenstein", three places at most.
QString placesOf(const Currency& currency);

// "replaced by EUR" for a withdrawn currency, "withdrawn" without a successor, else empty.
QString remarkOf(const Currency& currency);

// An amount with the digits that the person has set, as the terminal shows it. One too long for a
// line is a power of ten, "8.803×10³⁰⁷".
QString amountText(double value, const StoreManager& store);

// All digits that a number has, up to fifteen, for reading: a power of ten likewise.
QString exactText(double value, bool grouping = false);

// The number as a person may type it and the library reads it back: no signs between groups, and as
// many digits as it takes, since not every locale reads a power.
QString plainNumber(double value);

// With exactly so many digits after the mark, and marks between groups of the others.
QString fixedText(double value, int digits);

// "+1.98 %"
QString percentText(double percent);

// "968", begun kilobytes of an answer.
QString kilobytesText(std::uint64_t bytes);

// The text keeps its order of signs wherever it stands, as in "1 USD = 0.88 EUR".
QString leftToRight(const QString& text);

}  // namespace fexora::desktop
