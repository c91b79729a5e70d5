// The managers that the windows work with, and the library's set-up for a window.
#pragma once

#include "fexora/fexora.h"

namespace fexora::desktop {

// Owns nothing; what it names outlives whoever holds it. Main thread.
struct Desk {
  Platform& platform;
  CurrencyManager& catalogue;
  StoreManager& store;
  RateManager& rates;

  Date now() const { return Date(platform.loop->wallSeconds()); }
  // The shared instances, with names from the Unicode CLDR and rates in the store from the first
  // start on. Before anything else asks the library.
  static Desk process();
};

}  // namespace fexora::desktop
