// Numbers as text and back, the same in every locale: for file formats, JSON and log lines.
// Text for people goes through Text (its locale's marks and digits).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// The shortest decimal text that reads back to the same double; "inf", "-inf" and "nan" otherwise.
FEXORA_API std::string shortestText(double value);
FEXORA_API std::string integerText(std::int64_t value);

// Appends to `out`; no allocation beyond the growth of `out`.
FEXORA_API void appendShortestText(std::string& out, double value);
FEXORA_API void appendIntegerText(std::string& out, std::int64_t value);

// The same from `at` on, where there is room for kNumberTextBytes; the answer is where it ends.
inline constexpr std::size_t kNumberTextBytes = 32;
char* writeShortestText(char* at, double value) noexcept;
char* writeIntegerText(char* at, std::int64_t value) noexcept;

// `digits` digits after the point, like printf's %.*f: for the two printed forms of the records.
FEXORA_API std::string fixedText(double value, int digits);

// The whole text as a number, or nothing. A double takes digits with an optional sign, point and
// exponent, "inf", "infinity" and "nan"; too large or too small gives infinity or zero.
FEXORA_API std::optional<double> parseDouble(std::string_view text);
FEXORA_API std::optional<std::int64_t> parseInteger(std::string_view text);

}  // namespace fexora
