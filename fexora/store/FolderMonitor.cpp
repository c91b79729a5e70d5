#include "fexora/store/FolderMonitor.h"

#include <utility>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/files/ContainerFolder.h"

namespace fexora {
namespace {

constexpr std::string_view kMonitoring = "Watching a folder";

}  // namespace

FolderMonitor::FolderMonitor(std::string path, Handler handler, Platform& platform)
    : path_(std::move(path)), platform_(platform) {
  guarded(*platform_.log, kMonitoring, [&] {
    delivery_ = std::make_shared<Delivery>();
    delivery_->handler = std::move(handler);
    // Not start(): no subclass's operation may run before the subclass is there.
    delivery_->state = State::on;
    open();
  });
}

FolderMonitor::~FolderMonitor() = default;

void FolderMonitor::start() {
  if (delivery_ == nullptr || state() == State::on) return;
  setState(State::on);
  guarded(*platform_.log, kMonitoring, [this] {
    if (watch_ == nullptr) open();
    if (delivery_->isPending) deliverPending();
  });
}

void FolderMonitor::stop() {
  if (state() == State::on) setState(State::off);
}

void FolderMonitor::open() {
  watch_ = platform_.folderWatch->watch(path_, std::string(kOwnPrefix),
                                        [weak = std::weak_ptr<Delivery>(delivery_)] {
                                          if (const auto delivery = weak.lock()) delivery->call();
                                        });
}

// Two rounds of the queue later: changes that the watch had not yet seen at start() come in the
// first, take the pending one along, and leave nothing to tell.
void FolderMonitor::deliverPending() {
  const auto deliver = [weak = std::weak_ptr<Delivery>(delivery_)] {
    const auto delivery = weak.lock();
    if (delivery != nullptr && delivery->isPending) delivery->call();
  };
  platform_.loop->post([&platform = platform_, deliver] {
    guarded(*platform.log, kMonitoring, [&] { platform.loop->post(deliver); });
  });
}

void FolderMonitor::Delivery::call() {
  isPending = state == State::off;
  if (!isPending && handler) handler();
}

}  // namespace fexora
