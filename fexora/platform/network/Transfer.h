// One request as its sender sees it: how much of the answer has come, and the way to end it.
//
// Made by the sender for one request and handed over with it; see NetworkManager. Main thread but
// for what says otherwise.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API Transfer {
 public:
  struct Progress {
    std::uint64_t received = 0;          // bytes of the answer, as they are sent: perhaps packed
    std::optional<std::uint64_t> total;  // none where the service does not say, or not yet
    bool operator==(const Progress&) const = default;
  };
  // Called on the main thread while an answer comes: not before its first byte, not within
  // kTellSpacing of the last call, not twice with the same, and neither after cancel() nor after
  // the completion. It may cancel, and end the transport.
  using ProgressHandler = std::function<void(const Progress&)>;

  static constexpr double kTellSpacing = 0.25;  // seconds

  // What transfers on another thread write and look at. Any thread.
  class Counts {
   public:
    void set(std::uint64_t received, std::uint64_t total) noexcept {  // 0: not known
      received_ = received;
      total_ = total;
    }
    Progress progress() const noexcept;
    // As Transfer::cancel().
    void cancel();
    bool isCancelled() const noexcept { return isCancelled_; }
    // What to call at the first cancel(), on the thread of that; at once if that has been.
    void setEnding(std::function<void()> ending);

   private:
    std::atomic<std::uint64_t> received_ = 0;
    std::atomic<std::uint64_t> total_ = 0;
    std::atomic<bool> isCancelled_ = false;
    std::mutex mutex_;
    std::function<void()> ending_;  // under mutex_
  };

  explicit Transfer(ProgressHandler handler = {});

  // Ends the request. Nothing after its completion, nor when called again.
  void cancel() { counts_->cancel(); }
  bool isCancelled() const noexcept { return counts_->isCancelled(); }
  Progress progress() const noexcept { return counts_->progress(); }

  // For transports: what they count in, what to call at cancel() (see Counts), whether anybody
  // wants to be told, and the moment to do it.
  const std::shared_ptr<Counts>& counts() const noexcept { return counts_; }
  void setEnding(std::function<void()> ending) { counts_->setEnding(std::move(ending)); }
  bool isTold() const noexcept { return handler_ != nullptr; }
  void tell();

 private:
  std::shared_ptr<Counts> counts_ = std::make_shared<Counts>();
  ProgressHandler handler_;
  Progress last_;
};

}  // namespace fexora
