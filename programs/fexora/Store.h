// The shared store as the commands use it.
#pragma once

#include <optional>
#include <string>

#include "fexora/fexora.h"

#include "programs/shared/JsonText.h"

namespace fexora::program {

// The process's store, with a warning on standard error when its file could not be read. `saves`:
// the command ends with requireSaved.
StoreManager& openStore(bool saves = true);
// For what means nothing without a container folder: throws a Failure when there is none.
StoreManager& openStoreInFolder();

// Throws a Failure when the last save did not reach the file.
void requireSaved(StoreManager& store);

// When the store's rates were stored, and how old they are by the wall clock: since the day that
// they are of, or since the storing where that is not known.
struct RatesDate {
  std::optional<std::string> updated;  // UTC, like 2026-09-29T00:00:00Z
  std::optional<double> ageSeconds;
};
RatesDate ratesDate();
// Adds "updated" and "age_seconds".
void addRatesDate(JsonText& json, const RatesDate& date);

// Adds "rates", an object of what is known of the store's rates.
void addFreshness(JsonText& json);
// The same in words: "rates of 29 September, bundled, 57 days old: fexora refresh", without the
// advice when it would bring nothing newer.
std::string ratesLine();
// That for standard output: in colour there when the rates are old and it is a terminal.
std::string shownRatesLine();

}  // namespace fexora::program
