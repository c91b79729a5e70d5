// The value of a JSON text, for tests that look at answers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/json/simdjson/JsonDocument.h"

namespace fexora::test {

// Read as a member of an object of its own; nothing when the text is no JSON.
inline std::optional<Value> jsonRoot(std::string_view text) {
  const JsonDocument document("{\"root\":" + std::string(text) + "}");
  if (document.object() == nullptr) return std::nullopt;
  Value scratch;
  const Value* root = document.object()->find("root", scratch);
  return root != nullptr ? std::optional(*root) : std::nullopt;
}

}  // namespace fexora::test
