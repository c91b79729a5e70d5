// Transforms (see mapping/TransformType.h) for JSON values whose type varies: a number that may
// arrive as text, and a text that may arrive as a number. Any thread.
#pragma once

#include <optional>
#include <string>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/values/NSNumber.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API NumberTransform {
 public:
  // A number stays as it is; a text is read as a typed amount (platform/text/AmountParsing.h), so
  // one that is no number gives 0.0; nothing for any other value.
  std::optional<NSNumber> transformFromJSON(const Value* value) const;
  // Its argument.
  std::optional<NSNumber> transformToJSON(std::optional<NSNumber> value) const;
};

class FEXORA_API StringTrasform {
 public:
  // A text stays as it is; a number gives its stringValue; nothing for any other value.
  std::optional<std::string> transformFromJSON(const Value* value) const;
  // Its argument.
  std::optional<std::string> transformToJSON(std::optional<std::string> value) const;
};

}  // namespace fexora
