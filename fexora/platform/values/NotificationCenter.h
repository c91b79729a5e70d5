// Tells observers in this process that something of a given name has happened.
//
// Main thread only. A post calls the observers at once, in the order in which they were added.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

// Posted when a store has looked at its changed folder: by then it has taken over what the file
// held, be it the other process's save or, after a deferred one, its own; where the file could not
// be read it has what it had.
inline constexpr const char* fileWatcherUpdate = "FileWatcherUpdate";

class FEXORA_API NotificationCenter {
  struct Observers;

 public:
  // Ends its observation when it goes; may outlive the center. The function goes with it, and may
  // itself own tokens.
  class FEXORA_API Token {
   public:
    Token() noexcept = default;
    Token(Token&& other) noexcept;
    Token& operator=(Token other) noexcept;
    ~Token();

   private:
    friend class NotificationCenter;
    Token(std::weak_ptr<Observers> observers, std::uint64_t id) noexcept;

    std::weak_ptr<Observers> observers_;
    std::uint64_t id_ = 0;
  };

  NotificationCenter();
  NotificationCenter(const NotificationCenter&) = delete;
  NotificationCenter& operator=(const NotificationCenter&) = delete;
  ~NotificationCenter();

  static NotificationCenter& defaultCenter();

  [[nodiscard]] Token addObserver(std::string_view name, std::function<void()> function);

  // Observers added during the post are not called by it; one that has been ended is not called
  // any more. What an observer throws is said in the process's log: the others are still called.
  void postNotification(std::string_view name);

 private:
  std::shared_ptr<Observers> observers_;
};

}  // namespace fexora
