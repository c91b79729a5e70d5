// Where the library's own resource files lie.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API Resources {
 public:
  Resources() = default;
  Resources(const Resources&) = delete;
  Resources& operator=(const Resources&) = delete;
  virtual ~Resources();

  // The path at which the resource `name`.`extension` belongs, whether or not a file is there;
  // nothing where the library has no place of its own (linked statically). Any thread.
  virtual std::optional<std::string> path(std::string_view name, std::string_view extension) = 0;

  // The library's own, "resources/" of its private folder, which lies beside the shared library in
  // the build and the installed tree alike; and the one that the process uses: see
  // Platform::process().
  static Resources& builtIn();
  static Resources& process();
};

}  // namespace fexora
