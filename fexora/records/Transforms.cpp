#include "fexora/records/Transforms.h"

#include "fexora/platform/mapping/TransformType.h"

namespace fexora {

static_assert(TransformType<NumberTransform, NSNumber>);
static_assert(TransformType<StringTrasform, std::string>);

std::optional<NSNumber> NumberTransform::transformFromJSON(const Value* value) const {
  if (value == nullptr) return std::nullopt;
  if (const std::string* text = value->string()) return NSNumber(std::string_view(*text));
  if (const NSNumber* number = value->number()) return *number;
  return std::nullopt;
}

std::optional<NSNumber> NumberTransform::transformToJSON(std::optional<NSNumber> value) const {
  return value;
}

std::optional<std::string> StringTrasform::transformFromJSON(const Value* value) const {
  if (value == nullptr) return std::nullopt;
  if (const std::string* text = value->string()) return *text;
  if (const NSNumber* number = value->number()) return number->stringValue();
  return std::nullopt;
}

std::optional<std::string> StringTrasform::transformToJSON(std::optional<std::string> value) const {
  return value;
}

}  // namespace fexora
