// Watches whatever a path leads to: the folder's entries, and that the path goes on leading there.
//
// A watch belongs to a folder, not to its name: after a rename it follows the folder away, after a
// removal it is silent. So the folders above are watched, too: each for being moved, the lowest of
// them for the name to come or to go.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "fexora/platform/watch/InotifyQueue.h"

namespace fexora {

// Armed once, when made; whoever sees Finding::path or ::overflow makes a new one. Main thread.
class InotifyPath {
 public:
  enum class Finding {
    nothing,
    entry,     // an entry whose name does not begin with the prefix has changed
    path,      // the path may lead elsewhere now, or somewhere at last
    overflow,  // the system lost events
  };

  InotifyPath(std::string_view folder, std::string ignoredPrefix);

  // Why the machine gives no watch, or no findings any more; none when it does, be the folder there
  // or not.
  const std::error_code& error() const noexcept { return error_; }
  // Whether the folder was there. Otherwise missing() says what is wrong with it, and waits()
  // whether a finding will come when that may have changed; when not, only another try tells.
  bool isThere() const noexcept { return folderWatch_ >= 0; }
  const std::error_code& missing() const noexcept { return missing_; }
  bool waits() const noexcept { return waits_; }

  int descriptor() const noexcept { return queue_.descriptor(); }
  // Takes all that waits; the finding that matters most, and `path` when nothing can be read. Any
  // change of an entry in a folder that the path has left counts for nothing.
  Finding read();

 private:
  // A folder above, with the name that leads on from it.
  struct Above {
    int watch;
    std::string name;
  };

  void arm(const std::vector<std::string>& paths, const std::vector<std::string>& names);
  void waitFor(const std::string& above, const std::string& path, const std::string& name);
  Finding judge(const InotifyQueue::Event& event) const;

  InotifyQueue queue_;
  std::string ignoredPrefix_;
  int folderWatch_ = -1;
  std::vector<Above> above_;
  bool waits_ = false;
  std::error_code missing_;
  std::error_code error_;
};

}  // namespace fexora
