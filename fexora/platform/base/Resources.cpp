#include "fexora/platform/base/Resources.h"

#include "fexora/platform/base/Library.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora {
namespace {

class LibraryResources final : public Resources {
 public:
  std::optional<std::string> path(std::string_view name, std::string_view extension) override {
    auto path = libraryFolder();
    if (!path) return std::nullopt;
    path->append("/" FEXORA_PRIVATE_FOLDER "/resources/")
        .append(name)
        .append(".")
        .append(extension);
    return path;
  }
};

}  // namespace

Resources::~Resources() = default;

Resources& Resources::builtIn() {
  static NoDestructor<LibraryResources> resources;
  return *resources;
}

}  // namespace fexora
