// Objects of ICU's that are made once for each name, since making one takes far longer than what it
// is asked.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "fexora/platform/base/Limits.h"

namespace fexora {

// At most limits::kKeptLocales of them: a further one begins anew. Any thread.
template <class Object>
class KeptByName {
 public:
  // What `make` gives, null too, is kept. Whoever has got one may keep it.
  template <class Make>
  std::shared_ptr<const Object> get(std::string_view name, Make make) {
    const std::lock_guard lock(mutex_);
    return kept(name, make);
  }
  // ask(object), for what is said in less time than the object is shared in. `make` gives no null.
  template <class Make, class Ask>
  auto ask(std::string_view name, Make make, Ask ask) {
    const std::lock_guard lock(mutex_);
    return ask(*kept(name, make));
  }

 private:
  template <class Make>
  const std::shared_ptr<const Object>& kept(std::string_view name, const Make& make) {
    const auto found = byName_.find(name);
    if (found != byName_.end()) return found->second;
    if (byName_.size() >= limits::kKeptLocales) byName_.clear();
    return byName_.emplace(name, make()).first->second;
  }

  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<const Object>, std::less<>> byName_;
};

}  // namespace fexora
