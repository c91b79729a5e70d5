#include "fexora/store/FolderMonitor.h"

#include <utility>

#include "fexora/platform/files/ContainerFolder.h"

namespace fexora {

// Shared with the calls on their way, which find it stopped when the monitor has gone.
struct FolderMonitor::Delivery : std::enable_shared_from_this<FolderMonitor::Delivery> {
  Delivery(RunLoop& runLoop, std::function<void()> call)
      : loop(runLoop), handler(std::move(call)) {}

  void changed() {
    if (state == State::off) {
      missed = true;
    } else if (handler) {
      const auto keep = shared_from_this();  // the handler may end the monitor
      handler();
    }
  }

  void deliverMissed() {
    if (state == State::off || !std::exchange(missed, false)) return;
    changed();
  }

  RunLoop& loop;
  std::function<void()> handler;
  State state = State::off;
  bool missed = false;
};

FolderMonitor::FolderMonitor(const std::string& path, std::function<void()> handler,
                             Platform& platform)
    : delivery_(std::make_shared<Delivery>(*platform.loop, std::move(handler))),
      watch_(platform.folderWatch->watch(path, std::string(kOwnPrefix),
                                         [delivery = delivery_] { delivery->changed(); })) {
  FolderMonitor::start();
}

FolderMonitor::~FolderMonitor() { FolderMonitor::stop(); }

void FolderMonitor::start() {
  if (delivery_->state == State::on) return;
  delivery_->state = State::on;
  if (!delivery_->missed) return;
  delivery_->loop.post([weak = std::weak_ptr(delivery_)] {
    if (const auto delivery = weak.lock()) delivery->deliverMissed();
  });
}

void FolderMonitor::stop() { delivery_->state = State::off; }

}  // namespace fexora
