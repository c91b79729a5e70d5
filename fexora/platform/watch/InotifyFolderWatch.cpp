#include "fexora/platform/watch/InotifyFolderWatch.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/loop/TimerHolder.h"
#include "fexora/platform/watch/InotifyPath.h"

namespace fexora {
namespace {

// A folder may come between the look at it and the one above it; then all is looked at anew.
constexpr int kTries = 3;

constexpr std::string_view kWatching = "Watching a folder";

class InotifyWatch final : public FolderWatch::Watch {
 public:
  InotifyWatch(RunLoop& loop, Log& log, std::string folder, std::string ignoredPrefix,
               std::function<void()> changed)
      : loop_(loop),
        log_(log),
        folder_(std::move(folder)),
        ignoredPrefix_(std::move(ignoredPrefix)),
        changed_(std::make_shared<const std::function<void()>>(std::move(changed))) {}

  bool start();

 private:
  enum class State : std::uint8_t {
    watched,
    awaited,  // missing, and an event will tell of its coming
    sought,   // missing, and only another look tells
    lost,     // the machine gives no watch; looked at again, too
  };

  State arm();
  void enter(State state);
  void renew(std::string_view what = {}, const std::error_code& why = {});
  void onReadable();
  void callChanged();
  void say(std::string_view what, const std::error_code& why = {});

  RunLoop& loop_;
  Log& log_;
  const std::string folder_;
  const std::string ignoredPrefix_;
  const std::shared_ptr<const std::function<void()>> changed_;
  std::optional<InotifyPath> path_;            // none until armed, and without memory for it
  std::unique_ptr<DescriptorWatch> readable_;  // of the path's descriptor, so it goes first
  State state_ = State::watched;
  TimerHolder retry_;
};

bool InotifyWatch::start() {
  const State state = arm();
  if (state == State::lost) {
    say("cannot be watched", path_->error());
    return false;
  }
  enter(state);
  return true;
}

InotifyWatch::State InotifyWatch::arm() {
  for (int i = 0; i < kTries; ++i) {
    readable_.reset();
    path_.emplace(folder_, ignoredPrefix_);
    if (path_->error() || path_->isThere() || path_->waits()) break;
  }
  if (path_->error()) return State::lost;
  readable_ = loop_.watchReadable(path_->descriptor(), [this] { onReadable(); });
  if (readable_ == nullptr) return State::lost;
  if (path_->isThere()) return State::watched;
  return path_->waits() ? State::awaited : State::sought;
}

// What comes next is set up before anything is said, which takes memory. One line a break.
void InotifyWatch::enter(State state) {
  const bool isBreak = std::exchange(state_, state) == State::watched;
  if (state == State::sought || state == State::lost) {
    retry_.schedule(loop_, limits::kFolderRetrySeconds, [this] { renew(); });
  } else {
    retry_.end();
  }
  if (!isBreak || state == State::watched) return;
  if (state == State::lost) {
    say("is no longer watched", path_ ? path_->error() : std::error_code());
  } else {
    say("is not there; waiting for it", path_->missing());
  }
}

// After a break, of which `what` tells. Whatever happened before the new watches stood is told by
// the one call. Guarded by parts: a watch that nothing renews would be silent for ever.
void InotifyWatch::renew(std::string_view what, const std::error_code& why) {
  State state = State::lost;
  guarded(log_, kWatching, [&] { state = arm(); });
  guarded(log_, kWatching, [&] {
    enter(state);
    if (!what.empty()) say(what, why);
    if (state == State::watched) say("is watched again");
  });
  if (state == State::watched) callChanged();
}

void InotifyWatch::onReadable() {
  switch (path_->read()) {
    case InotifyPath::Finding::nothing:
      break;
    case InotifyPath::Finding::entry:
      callChanged();
      break;
    case InotifyPath::Finding::overflow:
      renew("had more changes than the system keeps");
      break;
    case InotifyPath::Finding::path: {
      // Read again at once, it would fail again at once.
      const std::error_code error = path_->error();
      renew(error ? "could not be watched" : "", error);
      break;
    }
  }
}

// The call may destroy this watch: its function lives on until it returns.
void InotifyWatch::callChanged() {
  const auto changed = changed_;
  if (*changed) (*changed)();
}

void InotifyWatch::say(std::string_view what, const std::error_code& why) {
  std::string line = "The folder " + folder_ + " ";
  line += what;
  if (why) line.append(": ").append(why.message());
  log_.write(line);
}

}  // namespace

std::unique_ptr<FolderWatch::Watch> InotifyFolderWatch::watch(const std::string& folder,
                                                              const std::string& ignoredPrefix,
                                                              std::function<void()> changed) {
  auto watch =
      std::make_unique<InotifyWatch>(loop_, log_, folder, ignoredPrefix, std::move(changed));
  if (!watch->start()) return nullptr;
  return watch;
}

}  // namespace fexora
