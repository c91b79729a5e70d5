// Where the host's localized strings come from: the one thing that gives currencies their names.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API HostStrings {
 public:
  HostStrings() = default;
  HostStrings(const HostStrings&) = delete;
  HostStrings& operator=(const HostStrings&) = delete;
  virtual ~HostStrings();

  // The string for `key`, UTF-8, or nothing when the host has none. Any thread, several at once.
  // Must not throw.
  virtual std::optional<std::string> string(std::string_view key) = 0;

  // The language that the strings are in: Locale::currentLanguage(), unless the host knows better.
  // Any thread. Must not throw.
  virtual std::string language();

  // A number that changes whenever the strings do (another language, another table). Zero: nothing
  // is promised, and no string may be kept from one call to the next. Any thread.
  virtual std::uint64_t generation() = 0;

 protected:
  // A generation that no object of this process has had; never zero.
  static std::uint64_t newGeneration() noexcept;
};

// The string for `key`, or the key itself when the host has none.
FEXORA_API std::string localizedString(HostStrings& strings, std::string_view key);

}  // namespace fexora
