#include "fexora/platform/values/NotificationCenter.h"

#include <algorithm>
#include <utility>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora {

struct NotificationCenter::Observers {
  struct Observer {
    std::uint64_t id;
    std::string name;
    std::shared_ptr<std::function<void()>> function;
  };

  // The first observer of `name` with an id above `after` and up to `last`; they stand by id.
  const Observer* next(std::string_view name, std::uint64_t after, std::uint64_t last) const {
    const auto at = std::find_if(list.begin(), list.end(), [&](const Observer& observer) {
      return observer.id > after && observer.id <= last && observer.name == name;
    });
    return at != list.end() ? &*at : nullptr;
  }

  // Hands the function out, whose end may change the list again.
  std::shared_ptr<std::function<void()>> remove(std::uint64_t id) noexcept {
    const auto at = std::find_if(list.begin(), list.end(),
                                 [id](const Observer& observer) { return observer.id == id; });
    if (at == list.end()) return nullptr;
    auto function = std::move(at->function);
    list.erase(at);
    return function;
  }

  std::vector<Observer> list;
  std::uint64_t lastId = 0;
};

NotificationCenter::Token::Token(std::weak_ptr<Observers> observers, std::uint64_t id) noexcept
    : observers_(std::move(observers)), id_(id) {}

NotificationCenter::Token::Token(Token&& other) noexcept
    : observers_(std::exchange(other.observers_, {})), id_(std::exchange(other.id_, 0)) {}

NotificationCenter::Token& NotificationCenter::Token::operator=(Token other) noexcept {
  std::swap(observers_, other.observers_);
  std::swap(id_, other.id_);
  return *this;
}

NotificationCenter::Token::~Token() {
  const auto observers = observers_.lock();
  // Dies last, when nothing is looked at any more: it may own the owner of a token, this one's too.
  const auto function = observers != nullptr ? observers->remove(id_) : nullptr;
}

NotificationCenter::NotificationCenter() : observers_(std::make_shared<Observers>()) {}
NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::defaultCenter() {
  static NoDestructor<NotificationCenter> center;
  return *center;
}

NotificationCenter::Token NotificationCenter::addObserver(std::string_view name,
                                                          std::function<void()> function) {
  const std::uint64_t id = ++observers_->lastId;
  observers_->list.push_back(
      {id, std::string(name), std::make_shared<std::function<void()>>(std::move(function))});
  return {observers_, id};
}

void NotificationCenter::postNotification(std::string_view name) {
  const auto observers = observers_;  // an observer may end the center itself
  const std::uint64_t last = observers->lastId;
  // Looked up anew after each call, which may have ended any observation; no list is made, so that
  // a post needs no memory.
  for (std::uint64_t id = 0; const auto* observer = observers->next(name, id, last);) {
    id = observer->id;
    const auto function = observer->function;  // an observer may end its own observation
    if (*function) quietly(Log::process(), "An observer of a notification", *function);
  }
}

}  // namespace fexora
