// One way to learn of a change in a folder. A peer's source adds itself by one static object.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fexora::bench {

// Made after the folder's first file is there.
class Observer {
 public:
  Observer() = default;
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;
  virtual ~Observer() = default;

  // Does `change` and waits until told of it: when that was (see now()), or nothing when a second
  // has passed.
  virtual std::optional<std::int64_t> observe(const std::function<void()>& change) = 0;
};

// For those that ride on GLib's main context; Qt's loop does, too.
class LoopObserver : public Observer {
 public:
  std::optional<std::int64_t> observe(const std::function<void()>& change) override;

 protected:
  // On the main thread, from the loop.
  void told();

 private:
  std::optional<std::int64_t> told_;
};

struct WatchPeer {
  const char* name;
  std::unique_ptr<Observer> (*make)(const std::string& folder);

  static std::vector<WatchPeer>& all();
};

template <class Way>
std::unique_ptr<Observer> makeObserver(const std::string& folder) {
  return std::make_unique<Way>(folder);
}

// A static object of this enters a way into the race.
template <class Way>
struct EnterWatch {
  explicit EnterWatch(const char* name) { WatchPeer::all().push_back({name, &makeObserver<Way>}); }
};

}  // namespace fexora::bench
