// One inotify instance: a queue of what happens to watched files and folders (see inotify(7)).
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace fexora {

// Owns its descriptor, which neither blocks nor goes to child processes. Main thread.
class InotifyQueue {
 public:
  struct Event {
    int watch;              // what add() answered; -1 when events were lost
    std::uint32_t mask;     // IN_ bits
    std::string_view name;  // of the folder's entry; empty when the folder itself is meant
  };

  // Opens the queue; error() says whether that worked.
  InotifyQueue() noexcept;
  InotifyQueue(const InotifyQueue&) = delete;
  InotifyQueue& operator=(const InotifyQueue&) = delete;
  ~InotifyQueue();

  int descriptor() const noexcept { return descriptor_; }
  const std::error_code& error() const noexcept { return error_; }

  // Watches the folder at `path`, links followed; bits add up when it is watched already. The
  // watch's number, or -1 with the reason in `error`.
  int add(const std::string& path, std::uint32_t mask, std::error_code& error) noexcept;

  // Hands over the events that wait. An error when they cannot be read: then the queue is of no
  // further use.
  std::error_code drain(const std::function<void(const Event&)>& take);

 private:
  int descriptor_;
  std::error_code error_;
};

}  // namespace fexora
