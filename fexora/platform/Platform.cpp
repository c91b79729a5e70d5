#include "fexora/platform/Platform.h"

#include "fexora/platform/foundation/NoDestructor.h"
#include "fexora/platform/network/LazyTransport.h"

namespace fexora {
namespace {

// Until a host supplies strings there are none, and every currency is shown by its code.
class NoStrings final : public HostStrings {
 public:
  std::optional<std::string> string(std::string_view /*key*/) override { return std::nullopt; }
  std::uint64_t generation() override { return 1; }
};

HostStrings& noStrings() {
  static NoDestructor<NoStrings> strings;
  return *strings;
}

LazyTransport::Host transportHost() {
  const Platform& platform = Platform::process();
  return {platform.loop, platform.log, platform.files, processNetOptions()};
}

}  // namespace

// Defined here because requests complete on the loop that a host may have set in the record.
Transport& Transport::process() {
  static NoDestructor<LazyTransport> transport(transportHost);
  return *transport;
}

Platform& Platform::process() {
  static Platform platform{&Files::process(),    &FolderWatch::process(),
                           &RunLoop::process(),  &Transport::process(),
                           &Text::process(),     &NotificationCenter::defaultCenter(),
                           &Log::process(),      &noStrings(),
                           &Resources::process()};
  return platform;
}

}  // namespace fexora
