// What the answer that brought the kept rates said of them, and its form in the store's dictionary.
//
// It stands under a key of its own and repeats the date of "UDUSDRatesUpdated". It counts only
// while the two agree: rates that were stored by a program that does not know of it never wear its
// date.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fexora/platform/values/Value.h"

namespace fexora {

// A rate that an answer gave and that was not taken: a later answer that says the same confirms it.
struct DoubtedRate {
  std::string code;
  double rate = 0;
  Date published;
};

struct FEXORA_API RatesAnswer {
  enum class Origin : std::uint8_t { service, file };

  std::optional<Date> published;
  // Its own name for itself, kept and read as one line (platform/text/OneLine.h); empty when it
  // gave none.
  std::string source;
  Origin origin = Origin::service;
  std::vector<DoubtedRate> doubted{};

  // Both may throw std::bad_alloc.
  Value keptWith(const Date& updated) const;
  // Nothing when `content` holds none that agrees with its own date of the rates.
  static std::optional<RatesAnswer> from(const Dictionary& content);
};

}  // namespace fexora
