// What turns a JSON value into a field's value and back.
//
// A transform is any small class with
//   std::optional<Object> transformFromJSON(const Value* value);   // null: no value
//   std::optional<JSON> transformToJSON(std::optional<Object> value);
// where JSON is something that a Value can hold.
#pragma once

#include <concepts>
#include <optional>

#include "fexora/platform/values/Value.h"

namespace fexora {

template <class T, class Object>
concept TransformType = requires(T transform, const Value* json, std::optional<Object> object) {
  { transform.transformFromJSON(json) } -> std::same_as<std::optional<Object>>;
  { *transform.transformToJSON(object) } -> std::convertible_to<Value>;
};

}  // namespace fexora
