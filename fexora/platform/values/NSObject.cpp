#include "fexora/platform/values/NSObject.h"

namespace fexora {

NSObject::~NSObject() = default;

std::string NSObject::description() const {
  return "<NSObject>";
}

std::optional<Value> NSObject::valueForKey(std::string_view name) const {
  if (name == "description") return Value(description());
  return std::nullopt;
}

bool NSObject::setValueForKey(std::string_view /*name*/, const Value& /*value*/) {
  return false;
}

std::optional<Value> NSObject::perform(std::string_view /*selector*/, const Array& /*arguments*/) {
  return std::nullopt;
}

}  // namespace fexora
