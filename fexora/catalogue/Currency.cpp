#include "fexora/catalogue/Currency.h"

#include <functional>
#include <utility>

#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

CurrencyRef Currency::make() {
  return std::make_shared<Currency>();
}

CurrencyRef Currency::make(std::string code) {
  return std::make_shared<Currency>(std::move(code));
}

Currency::Currency(const Currency& other)
    : MappableModel(other), std::enable_shared_from_this<Currency>(other), code_(other.code_) {}

Currency& Currency::operator=(const Currency& other) {
  if (this != &other) {
    MappableModel::operator=(other);
    setCode(other.code_);
  }
  return *this;
}

void Currency::setCode(std::string code) {
  if (codeChanges_ != nullptr && code != code_) {
    codeChanges_->fetch_add(1, std::memory_order_release);
  }
  code_ = std::move(code);
}

std::size_t Currency::hashValue() const {
  return std::hash<std::string>()(isAscii(code_) ? code_ : Text::process().canonical(code_));
}

std::string Currency::description() const {
  return code_;
}

void Currency::mapping(Map& map) {
  std::string code = code_;
  map.bind("code", code);
  if (!map.isReading()) return;
  makeOneLine(code, limits::kCodeCharacters);
  setCode(std::move(code));
}

bool Currency::isEqualTo(const MappableModel& object) const {
  if (code_.empty()) return false;
  const auto* other = dynamic_cast<const Currency*>(&object);
  return other != nullptr && equalText(Text::process(), code_, other->code_);
}

}  // namespace fexora
