// What the store's dictionary calls the parts of an answer that it keeps.
#pragma once

#include <string>
#include <string_view>

#include "fexora/platform/values/Value.h"

namespace fexora {

inline constexpr std::string_view kAnswerPublished = "published";
inline constexpr std::string_view kAnswerSource = "source";
inline constexpr std::string_view kAnswerOrigin = "origin";
inline constexpr std::string_view kAnswerFile = "file";  // of the origin

// The text under a key; null where there is none.
inline const std::string* answerText(const Dictionary& content, std::string_view key) {
  const Value* value = content.find(key);
  return value != nullptr ? value->string() : nullptr;
}

}  // namespace fexora
