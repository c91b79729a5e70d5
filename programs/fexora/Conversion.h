// One amount into the currencies that were asked for, from what is at hand, and its two forms.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fexora/fexora.h"

#include "programs/fexora/CommandLine.h"
#include "programs/fexora/PastDay.h"
#include "programs/shared/OtherRates.h"

namespace fexora::program {

struct ConversionLine {
  ConvertedItem item;
  std::optional<RateOrigin> of;  // its rate, when that is not of the store's newest table
  std::optional<PastRate> past;  // where it comes from, when a day was asked for
};

struct Conversion {
  TypedAmount amount;
  CurrencyRef source;
  bool invert = false;
  const char* origin = "store";
  std::optional<PastDay> on;  // whose rates these are
  std::vector<ConversionLine> lines;
  std::vector<std::string> missing;  // codes
  std::string problem;               // says why they are, or empty
  std::vector<std::string> notices;  // a line each
};

// By the store's rates; records the amount in the store, which is saved at once with `sync`, unless
// the line says not to. Throws a Failure, with nothing recorded, when there is no line.
// By those of a past day `on`, if there is one; then nothing is recorded.
Conversion conversionOf(const Sentence& sentence, const CommandLine& line, StoreManager& store,
                        bool sync, const std::optional<PastDay>& on = std::nullopt);

// On standard output; the notices are messages, each of which begins with `place`.
void print(const Conversion& conversion, const CommandLine& line, const StoreManager& store,
           const std::string& place);

}  // namespace fexora::program
