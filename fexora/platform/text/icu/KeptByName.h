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
    const auto found = byName_.find(name);
    if (found != byName_.end()) return found->second;
    if (byName_.size() >= limits::kKeptLocales) byName_.clear();
    std::shared_ptr<const Object> made = make();
    byName_.emplace(name, made);
    return made;
  }

 private:
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<const Object>, std::less<>> byName_;
};

}  // namespace fexora
