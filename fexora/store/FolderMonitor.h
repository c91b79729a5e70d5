// Watches one folder and calls a handler on the main queue whenever something is written into it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "fexora/platform/Platform.h"

namespace fexora {

// The handler learns nothing about the change; several changes may come as one call. Names that
// begin with kOwnPrefix are ours and count for nothing. A folder that is missing, goes or comes
// back costs one call when it is there again. Where the machine gives no watch the log says so and
// the monitor is inert; start() after stop() then tries again. Where there is no memory for it the
// monitor is inert, too.
// Main thread. The handler may stop or destroy the monitor.
class FEXORA_API FolderMonitor {
 public:
  using Handler = std::function<void()>;
  enum class State : std::uint8_t { on, off };

  // Running when this returns. `platform` outlives the monitor.
  FolderMonitor(std::string path, Handler handler, Platform& platform = Platform::process());
  FolderMonitor(const FolderMonitor&) = delete;
  FolderMonitor& operator=(const FolderMonitor&) = delete;
  // No call follows, whatever the state.
  virtual ~FolderMonitor();

  // Goes on; changes made while stopped come as one call soon after.
  virtual void start();
  // No call is made until start().
  virtual void stop();

 private:
  // What a call needs, kept while it lasts even when the monitor goes meanwhile.
  struct Delivery {
    Handler handler;
    State state = State::off;
    bool isPending = false;  // changed while off, or since start() and not yet told

    void call();
  };

  virtual State state() const { return delivery_ != nullptr ? delivery_->state : State::off; }
  virtual void setState(State state) {
    if (delivery_ != nullptr) delivery_->state = state;
  }
  void open();
  void deliverPending();

  std::string path_;
  Platform& platform_;
  std::shared_ptr<Delivery> delivery_;
  std::unique_ptr<FolderWatch::Watch> watch_;
};

}  // namespace fexora
