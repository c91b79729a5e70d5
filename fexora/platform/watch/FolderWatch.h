// Tells when something is written into a folder.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API FolderWatch {
 public:
  // No call follows once it has gone. Main thread.
  class FEXORA_API Watch {
   public:
    Watch() = default;
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    virtual ~Watch();
  };

  FolderWatch() = default;
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;
  virtual ~FolderWatch();

  // Calls `changed` on the main thread after entries of `folder` whose names do not begin with
  // `ignoredPrefix` were made, deleted, moved in or closed after writing; several such changes may
  // give one call. Whatever breaks the watch (the folder is missing, goes and comes back, events
  // are lost) is said in the log, and after each break `changed` is called once. Null, with a log
  // line, when the machine has no watch left to give. Main thread.
  virtual std::unique_ptr<Watch> watch(const std::string& folder, const std::string& ignoredPrefix,
                                       std::function<void()> changed) = 0;

  // The library's own, and the one that the process uses: see Platform::process().
  static FolderWatch& builtIn();
  static FolderWatch& process();
};

}  // namespace fexora
