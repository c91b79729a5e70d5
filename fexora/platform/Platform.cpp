#include "fexora/platform/Platform.h"

#include <string>

#include "fexora/platform/base/Library.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/loop/LazyRunLoop.h"
#include "fexora/platform/network/LazyTransport.h"
#include "fexora/platform/text/ProcessText.h"
#include "fexora/platform/watch/InotifyFolderWatch.h"

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

// The piece that a module offers, or null with a line that says what goes without it.
template <class Piece>
Piece* openModule(const char* name, const char* entry, std::string_view without) {
  std::string reason;
  void* const address = moduleEntry(name, entry, reason);
  if (address != nullptr) return reinterpret_cast<Piece* (*)()>(address)();
  Platform::process().log->write(std::string("no ") + name + " module, " + std::string(without) +
                                 ": " + reason);
  return nullptr;
}

Text* openText() {
  return openModule<Text>("text", "fexora_text_module", "only ASCII is handled");
}

RunLoop* openLoop() {
  return openModule<RunLoop>("loop", "fexora_loop_module", "nothing is called later");
}

LazyTransport::Host transportHost() {
  const Platform& platform = Platform::process();
  return {platform.loop, platform.log, platform.files, processNetOptions()};
}

// On the loop that is in the record when a folder is first watched.
class ProcessFolderWatch final : public FolderWatch {
 public:
  std::unique_ptr<Watch> watch(const std::string& folder, const std::string& ignoredPrefix,
                               std::function<void()> changed) override {
    static NoDestructor<InotifyFolderWatch> inotify(*Platform::process().loop,
                                                    *Platform::process().log);
    return inotify->watch(folder, ignoredPrefix, std::move(changed));
  }
};

}  // namespace

// These are defined here, since each takes its partners from the record, in which a host may have
// set others, when it first needs them.
Text& Text::builtIn() {
  static NoDestructor<ProcessText> text(&openText);
  return *text;
}

RunLoop& RunLoop::builtIn() {
  static NoDestructor<LazyRunLoop> loop(&openLoop);
  return *loop;
}

FolderWatch& FolderWatch::builtIn() {
  static NoDestructor<ProcessFolderWatch> watch;
  return *watch;
}

Transport& Transport::builtIn() {
  static NoDestructor<LazyTransport> transport(transportHost);
  return *transport;
}

Platform& Platform::process() {
  static Platform platform{&Files::builtIn(),    &FolderWatch::builtIn(),
                           &RunLoop::builtIn(),  &Transport::builtIn(),
                           &Text::builtIn(),     &NotificationCenter::defaultCenter(),
                           &Log::builtIn(),      &noStrings(),
                           &Resources::builtIn()};
  return platform;
}

Files& Files::process() {
  return *Platform::process().files;
}

FolderWatch& FolderWatch::process() {
  return *Platform::process().folderWatch;
}

RunLoop& RunLoop::process() {
  return *Platform::process().loop;
}

Transport& Transport::process() {
  return *Platform::process().transport;
}

Text& Text::process() {
  return *Platform::process().text;
}

Log& Log::process() {
  return *Platform::process().log;
}

Resources& Resources::process() {
  return *Platform::process().resources;
}

}  // namespace fexora
