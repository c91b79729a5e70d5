#include "fexora/input/CalculationDetection.h"

#include "fexora/platform/text/Text.h"

namespace fexora {
namespace {

constexpr std::string_view kOperators = "+-*/";

}  // namespace

bool hasCalculation(std::string_view text) {
  if (text.find_first_of(kOperators) == std::string_view::npos) return false;
  if (isAscii(text)) return true;
  for (std::size_t i = 0; i < kOperators.size(); ++i) {
    if (Text::process().contains(text, kOperators.substr(i, 1))) return true;
  }
  return false;
}

bool isCalcOperation(std::string_view text) noexcept {
  // No other text is canonically equivalent to one of the four, so bytes decide.
  return text.size() == 1 && kOperators.find(text.front()) != std::string_view::npos;
}

}  // namespace fexora
