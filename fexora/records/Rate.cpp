#include "fexora/records/Rate.h"

#include "fexora/platform/text/NumberText.h"
#include "fexora/records/CodeOf.h"

namespace fexora {

std::string Rate::description() const {
  return codeOf(src_) + " -> " + codeOf(dst_) + " = " +
         fixedText(static_cast<double>(rate_.floatValue()), 6);
}

std::optional<Value> Rate::valueForKey(std::string_view name) const {
  if (name == "rate") return Value(rate_);
  return NSObject::valueForKey(name);
}

bool Rate::setValueForKey(std::string_view name, const Value& value) {
  if (name != "rate" || value.number() == nullptr) return NSObject::setValueForKey(name, value);
  setRate(*value.number());
  return true;
}

}  // namespace fexora
