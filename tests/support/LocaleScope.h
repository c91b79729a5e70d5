// Sets the current locale for one scope and returns to the environment's after it.
#pragma once

#include <string_view>

#include "fexora/platform/text/Locale.h"

namespace fexora::test {

class LocaleScope {
 public:
  explicit LocaleScope(std::string_view name) { Locale::setCurrent(name); }
  LocaleScope(const LocaleScope&) = delete;
  LocaleScope& operator=(const LocaleScope&) = delete;
  ~LocaleScope() { Locale::setCurrent(""); }
};

}  // namespace fexora::test
