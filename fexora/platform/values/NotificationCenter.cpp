#include "fexora/platform/values/NotificationCenter.h"

#include <algorithm>
#include <map>
#include <utility>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora {

struct NotificationCenter::Observers {
  struct Observer {
    std::string name;
    std::shared_ptr<std::function<void()>> function;
  };
  using ById = std::map<std::uint64_t, Observer>;

  // The first observer of `name` with an id above `after` and up to `last`; at the end when there
  // is none.
  ById::const_iterator next(std::string_view name, std::uint64_t after, std::uint64_t last) const {
    const auto end = byId.upper_bound(last);
    const auto at = std::find_if(byId.upper_bound(after), end, [&](const auto& observer) {
      return observer.second.name == name;
    });
    return at != end ? at : byId.end();
  }

  // Hands the observer out, whose function's end may change the list again.
  ById::node_type remove(std::uint64_t id) noexcept { return byId.extract(id); }

  ById byId;
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
  const auto observer =
      observers != nullptr ? observers->remove(id_) : Observers::ById::node_type();
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
  observers_->byId.try_emplace(
      id, Observers::Observer{std::string(name),
                              std::make_shared<std::function<void()>>(std::move(function))});
  return {observers_, id};
}

void NotificationCenter::postNotification(std::string_view name) {
  const auto observers = observers_;  // an observer may end the center itself
  const std::uint64_t last = observers->lastId;
  // Looked up anew after each call, which may have ended any observation; no list is made, so that
  // a post needs no memory.
  auto at = observers->next(name, 0, last);
  while (at != observers->byId.end()) {
    const std::uint64_t id = at->first;
    const auto function = at->second.function;  // an observer may end its own observation
    if (*function) quietly(Log::process(), "An observer of a notification", *function);
    at = observers->next(name, id, last);
  }
}

}  // namespace fexora
