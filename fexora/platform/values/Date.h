// A moment: seconds since 1970-01-01T00:00:00Z as a double, leap seconds not counted.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API Date {
 public:
  constexpr Date() noexcept = default;
  constexpr explicit Date(double secondsSince1970) noexcept : seconds_(secondsSince1970) {}

  constexpr double secondsSince1970() const noexcept { return seconds_; }

  // "2026-09-29T00:00:00Z", whole seconds (cut towards the past). A moment outside the years 1 to
  // 9999, or one that is not finite, has no such text.
  std::optional<std::string> isoText() const;
  // Reads that form back; nothing for any other text or for a day that the calendar lacks.
  static std::optional<Date> fromIsoText(std::string_view text);

  friend constexpr auto operator<=>(const Date&, const Date&) noexcept = default;
  friend constexpr bool operator==(const Date&, const Date&) noexcept = default;

 private:
  double seconds_ = 0.0;
};

}  // namespace fexora
