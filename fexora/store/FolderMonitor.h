// Calls a handler on the main queue whenever something is written into one folder.
//
// Our own names in the folder (kOwnPrefix) are not looked at. The handler learns neither what has
// changed nor whether several changes were merged into one call. A folder that cannot be watched
// leaves the monitor inert, which the watch says in the log.
// Main thread only, which is where the handler runs. No call follows the destructor.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "fexora/platform/Platform.h"

namespace fexora {

class FEXORA_API FolderMonitor {
 public:
  enum class State : std::uint8_t { on, off };

  // Running when the constructor returns.
  FolderMonitor(const std::string& path, std::function<void()> handler,
                Platform& platform = Platform::process());
  FolderMonitor(const FolderMonitor&) = delete;
  FolderMonitor& operator=(const FolderMonitor&) = delete;
  virtual ~FolderMonitor();

  // Resumes the calls; nothing when running. What changed while stopped gives one call, later.
  virtual void start();
  // No call until the next start; nothing when stopped.
  virtual void stop();

 private:
  struct Delivery;

  std::shared_ptr<Delivery> delivery_;
  std::unique_ptr<FolderWatch::Watch> watch_;
};

}  // namespace fexora
