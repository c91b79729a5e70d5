// The folder watch on inotify.
#pragma once

#include "fexora/platform/base/Log.h"
#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/watch/FolderWatch.h"

namespace fexora {

// Heals itself without polling: while the folder is missing, the nearest folder above it tells when
// the name comes. Only where nothing above can be watched does it look again every
// limits::kFolderRetrySeconds. A folder that was moved away and one that was removed are the same
// to it: the watch is on the path. One inotify instance and one watch for each part of the path.
class FEXORA_API InotifyFolderWatch final : public FolderWatch {
 public:
  // Both outlive this and every watch that it gives.
  InotifyFolderWatch(RunLoop& loop, Log& log) : loop_(loop), log_(log) {}

  std::unique_ptr<Watch> watch(const std::string& folder, const std::string& ignoredPrefix,
                               std::function<void()> changed) override;

 private:
  RunLoop& loop_;
  Log& log_;
};

}  // namespace fexora
