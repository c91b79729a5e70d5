// How fresh the kept rates are, so that a host can say it beside every amount.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "fexora/store/StoreManager.h"

namespace fexora {

// When rates count as what, in seconds of age.
struct FreshnessPolicy {
  double freshFor = 26.0 * 3600;     // a service that publishes daily, and two hours of grace
  double oldFrom = 7.0 * 24 * 3600;  // by the calendar
  bool countsWeekends = false;       // for `freshFor`: Saturdays and Sundays (UTC) count
  double futureGrace = 24.0 * 3600;  // what a publication may lie ahead of the clock
};

struct Freshness {
  enum class Origin : std::uint8_t { none, bundled, service, file };
  // `none`: there are no rates. `old` too where nobody knows their age.
  enum class State : std::uint8_t { none, fresh, stale, old };

  std::optional<Date> published;  // as the answer said; nothing when it did not
  std::optional<Date> stored;     // by this process or the other: "UDUSDRatesUpdated"
  std::string source;             // the answer's own name for where its rates are from, or empty
  Origin origin = Origin::none;   // none also for rates of which nothing has been said
  State state = State::none;
};

// The store's rates at `now`. The age counts from the publication, and from the storing where that
// is not known: rates can then be older than they look; those of an answer that did not tell its
// day are stale at best. A publication further ahead than the
// policy's grace is stale: one of two clocks is wrong. Main thread; may throw std::bad_alloc.
FEXORA_API Freshness freshnessOf(const StoreManager& store, const FreshnessPolicy& policy,
                                 const Date& now);

// The names of the cases ("fresh"), for files and JSON.
FEXORA_API const char* text(Freshness::Origin origin) noexcept;
FEXORA_API const char* text(Freshness::State state) noexcept;

}  // namespace fexora
