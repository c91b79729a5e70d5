// Resources out of one folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "fexora/platform/base/Resources.h"

namespace fexora::bench {

class FolderResources final : public Resources {
 public:
  explicit FolderResources(std::string folder) : folder_(std::move(folder)) {}
  std::optional<std::string> path(std::string_view name, std::string_view extension) override {
    return folder_ + "/" + std::string(name) + "." + std::string(extension);
  }

 private:
  std::string folder_;
};

}  // namespace fexora::bench
