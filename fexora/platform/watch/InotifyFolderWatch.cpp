#include "fexora/platform/watch/InotifyFolderWatch.h"

#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "fexora/platform/foundation/Limits.h"
#include "fexora/platform/watch/InotifyPath.h"

namespace fexora {
namespace {

// A folder may come between the look at it and the one above it; then all is looked at anew.
constexpr int kTries = 3;

class InotifyWatch final : public FolderWatch::Watch {
 public:
  InotifyWatch(RunLoop& loop, Log& log, std::string folder, std::string ignoredPrefix,
               std::function<void()> changed)
      : loop_(loop),
        log_(log),
        folder_(std::move(folder)),
        ignoredPrefix_(std::move(ignoredPrefix)),
        changed_(std::move(changed)) {}
  ~InotifyWatch() override {
    if (retry_ != nullptr) retry_->invalidate();
  }

  bool start();

 private:
  bool arm();
  void renew();
  void noteMissing();
  void retryLater();
  void onReadable();
  void callChanged();
  void say(std::string_view what, const std::error_code& why = {});

  RunLoop& loop_;
  Log& log_;
  const std::string folder_;
  const std::string ignoredPrefix_;
  const std::function<void()> changed_;
  std::optional<InotifyPath> path_;
  std::unique_ptr<DescriptorWatch> readable_;  // of the path's descriptor, so it goes first
  std::shared_ptr<Timer> retry_;
  bool isBroken_ = false;
};

bool InotifyWatch::start() {
  if (!arm()) {
    say("cannot be watched", path_->error());
    return false;
  }
  if (!path_->isThere()) noteMissing();
  return true;
}

bool InotifyWatch::arm() {
  for (int i = 0; i < kTries; ++i) {
    readable_.reset();
    path_.emplace(folder_, ignoredPrefix_);
    if (path_->error() || path_->isThere() || path_->waits()) break;
  }
  if (path_->error()) return false;
  readable_ = loop_.watchReadable(path_->descriptor(), [this] { onReadable(); });
  return readable_ != nullptr;
}

// After a break. Whatever happened before the new watches stood is told by the one call.
void InotifyWatch::renew() {
  if (!arm()) {
    if (!std::exchange(isBroken_, true)) say("is no longer watched", path_->error());
    retryLater();
    return;
  }
  if (!path_->isThere()) {
    noteMissing();
    return;
  }
  isBroken_ = false;
  say("is watched again");
  callChanged();
}

void InotifyWatch::noteMissing() {
  if (!std::exchange(isBroken_, true)) say("is not there; waiting for it", path_->missing());
  if (!path_->waits()) retryLater();
}

void InotifyWatch::retryLater() {
  retry_ = loop_.scheduleTimer(limits::kFolderRetrySeconds, [this] { renew(); });
}

void InotifyWatch::onReadable() {
  switch (path_->read()) {
    case InotifyPath::Finding::nothing:
      break;
    case InotifyPath::Finding::entry:
      callChanged();
      break;
    case InotifyPath::Finding::overflow:
      say("had more changes than the system keeps");
      renew();
      break;
    case InotifyPath::Finding::path:
      // Read again at once, it would fail again at once.
      if (path_->error()) say("could not be watched", path_->error());
      renew();
      break;
  }
}

// The call may destroy this watch, and with it the function: both are done with here.
void InotifyWatch::callChanged() {
  const std::function<void()> changed = changed_;
  if (changed) changed();
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
