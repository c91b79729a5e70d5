#include "fexora/platform/loop/glib/GlibRunLoop.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include <glib.h>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/loop/Clocks.h"

namespace fexora {
namespace {

constexpr double kMicroseconds = 1e6;
// How often posted functions are looked for when the process had no descriptor left for a wake-up.
constexpr gint64 kPollMicroseconds = 50'000;

// What the loop calls is C underneath: nothing may be thrown through it.
void call(const RunLoop::Function& function) noexcept {
  quietly(Log::process(), "A function that the loop called", function);
}

// A GSource whose dispatch calls `call`, which says whether the source goes on.
struct LoopSource {
  GSource source;
  std::function<bool()>* call;
};

gboolean dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
  const auto& call = *reinterpret_cast<LoopSource*>(source)->call;
  return call() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
}

void finalize(GSource* source) {
  delete reinterpret_cast<LoopSource*>(source)->call;
}

GSourceFuncs loopSourceFunctions = {nullptr, nullptr, dispatch, finalize, nullptr, nullptr};

GSource* newSource(std::function<bool()> call) {
  auto own = std::make_unique<std::function<bool()>>(std::move(call));
  GSource* source = g_source_new(&loopSourceFunctions, sizeof(LoopSource));
  reinterpret_cast<LoopSource*>(source)->call = own.release();
  // A function may run the loop itself, and waits there for what this source brings.
  g_source_set_can_recurse(source, TRUE);
  return source;
}

class GlibTimer final : public Timer {
 public:
  static std::shared_ptr<Timer> schedule(double seconds, RunLoop::Function function) {
    auto timer = std::make_shared<GlibTimer>();
    timer->source_ = newSource([timer, function = std::move(function)] {
      timer->release();
      call(function);
      return false;
    });
    // The clock is read in whole microseconds, so one more keeps the timer from firing early.
    const double bounded = seconds > 0 ? std::min(seconds, 1e9) : 0;  // not-a-number: at once
    const double microseconds = std::ceil(bounded * kMicroseconds) + 1;
    g_source_set_ready_time(timer->source_,
                            g_get_monotonic_time() + static_cast<gint64>(microseconds));
    g_source_attach(timer->source_, nullptr);
    return timer;
  }

  void invalidate() override {
    if (source_ == nullptr) return;
    GSource* source = source_;
    release();
    // May delete the function, and with it the last reference to this timer.
    g_source_destroy(source);
  }

  bool isValid() const override { return source_ != nullptr; }

 private:
  // The context keeps its own reference until the source is destroyed or has fired.
  void release() {
    g_source_unref(source_);
    source_ = nullptr;
  }

  GSource* source_ = nullptr;
};

class GlibDescriptorWatch final : public DescriptorWatch {
 public:
  GlibDescriptorWatch(int descriptor, RunLoop::Function function)
      : source_(newSource([function = std::move(function)] {
          call(function);
          return true;
        })) {
    g_source_add_unix_fd(source_, descriptor,
                         static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    g_source_attach(source_, nullptr);
  }
  ~GlibDescriptorWatch() override {
    g_source_destroy(source_);
    g_source_unref(source_);
  }

 private:
  GSource* source_;
};

}  // namespace

GlibRunLoop::GlibRunLoop() {
  GSource* source = nullptr;
  if (wake_.descriptor() >= 0) {
    source = newSource([this] {
      runPosted();
      return true;
    });
    g_source_add_unix_fd(source, wake_.descriptor(), G_IO_IN);
  } else {
    source = g_timeout_source_new(kPollMicroseconds / 1000);
    g_source_set_callback(
        source,
        [](gpointer loop) -> gboolean {
          static_cast<GlibRunLoop*>(loop)->runPosted();
          return G_SOURCE_CONTINUE;
        },
        this, nullptr);
    g_source_set_can_recurse(source, TRUE);
  }
  g_source_attach(source, nullptr);
  g_source_unref(source);
}

double GlibRunLoop::monotonicSeconds() {
  return monotonicClockSeconds();
}

double GlibRunLoop::wallSeconds() {
  return wallClockSeconds();
}

std::shared_ptr<Timer> GlibRunLoop::scheduleTimer(double seconds, Function function) {
  return GlibTimer::schedule(seconds, std::move(function));
}

void GlibRunLoop::post(Function function) {
  const std::lock_guard lock(mutex_);
  posted_.push_back(std::move(function));
  // Other threads call nothing of GLib.
  wake_.wake();
}

void GlibRunLoop::runPosted() {
  // One by one, so that a loop run inside of one has all others at hand; what they post is left to
  // the next round, so that other sources have their turn.
  std::size_t left = postedCount();
  do {
    const Function function = takePosted();
    if (!function) return;
    call(function);
  } while (left-- > 1);
}

std::size_t GlibRunLoop::postedCount() {
  const std::lock_guard lock(mutex_);
  return posted_.size();
}

// Empty when there is none: a loop inside of one may have run the rest. The wake-up lasts until the
// last one is taken.
RunLoop::Function GlibRunLoop::takePosted() {
  const std::lock_guard lock(mutex_);
  Function function;
  if (!posted_.empty()) {
    function = std::move(posted_.front());
    posted_.pop_front();
  }
  if (posted_.empty()) wake_.clear();
  return function;
}

std::unique_ptr<DescriptorWatch> GlibRunLoop::watchReadable(int descriptor, Function function) {
  if (descriptor < 0) return nullptr;
  return std::make_unique<GlibDescriptorWatch>(descriptor, std::move(function));
}

void GlibRunLoop::runUntil(const std::function<bool()>& done) {
  while (!done()) g_main_context_iteration(nullptr, TRUE);
}

}  // namespace fexora
