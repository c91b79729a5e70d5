#include "fexora/records/USDRate.h"

#include <functional>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/platform/text/Text.h"
#include "fexora/records/Transforms.h"

namespace fexora {

USDRateRef USDRate::make() {
  return std::make_shared<USDRate>();
}

USDRateRef USDRate::make(NSNumber rate, std::string code) {
  return std::make_shared<USDRate>(rate, std::move(code));
}

std::size_t USDRate::hashValue() const {
  return std::hash<std::string>()(isAscii(code_) ? code_ : Text::process().canonical(code_));
}

void USDRate::mapping(Map& map) {
  // In the order of the keys, in which the dictionary has them.
  map.bind("code", code_);
  map.bind("rate", rate_, NumberTransform());
  if (map.isReading()) makeOneLine(code_, limits::kCodeCharacters);
}

bool USDRate::isEqualTo(const MappableModel& object) const {
  if (code_.empty()) return false;
  const auto* other = dynamic_cast<const USDRate*>(&object);
  return other != nullptr && equalText(Text::process(), code_, other->code_);
}

CurrencyRef USDRate::currency() const {
  return currencyManager().currencyForCode(code_);
}

}  // namespace fexora
