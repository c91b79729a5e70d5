// The main queue of the process: posted functions, one-shot timers, watched descriptors, and the
// clocks that go with them. Everything it calls runs on the main thread, one at a time. A function
// may run the loop itself, as a modal dialog does: whatever is posted, due or readable meanwhile is
// called in there. What a function throws is said in the process's log and dropped.
//
// The process's own implementation rides on GLib's default main context, which GTK and Qt hosts
// already iterate. A host with another loop implements this class and installs it before it first
// uses the library (see Platform.h).
#pragma once

#include <functional>
#include <memory>

#include "fexora/platform/base/Export.h"

namespace fexora {

// A one-shot timer. The loop keeps it until it fires or is invalidated, whoever else lets it go.
class FEXORA_API Timer {
 public:
  Timer() = default;
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  virtual ~Timer();

  // It never fires after this. Nothing once it has fired, its own function included. Main thread.
  virtual void invalidate() = 0;
  // False once it has fired or been invalidated.
  virtual bool isValid() const = 0;
};

// Ends the watch of a descriptor when it goes. Main thread.
class FEXORA_API DescriptorWatch {
 public:
  DescriptorWatch() = default;
  DescriptorWatch(const DescriptorWatch&) = delete;
  DescriptorWatch& operator=(const DescriptorWatch&) = delete;
  virtual ~DescriptorWatch();
};

class FEXORA_API RunLoop {
 public:
  using Function = std::function<void()>;

  RunLoop() = default;
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;
  virtual ~RunLoop();

  // Seconds on a clock that never jumps; its zero means nothing. Any thread.
  virtual double monotonicSeconds() = 0;
  // Seconds since 1970 on the clock that people set. Any thread.
  virtual double wallSeconds() = 0;

  // Calls `function` once, no sooner than `seconds` from now on the monotonic clock. Main thread.
  virtual std::shared_ptr<Timer> scheduleTimer(double seconds, Function function) = 0;
  // Calls `function` soon, in the order of the posts. Any thread.
  virtual void post(Function function) = 0;
  // Calls `function` whenever `descriptor` can be read; null when it cannot be watched. The
  // descriptor stays the caller's and outlives the watch. Main thread.
  virtual std::unique_ptr<DescriptorWatch> watchReadable(int descriptor, Function function) = 0;

  // Runs the loop until `done` is true, asked after each round: for programs without a loop of
  // their own. Main thread.
  virtual void runUntil(const std::function<bool()>& done) = 0;

  // The library's own, and the one that the process uses: see Platform::process().
  static RunLoop& builtIn();
  static RunLoop& process();
};

}  // namespace fexora
