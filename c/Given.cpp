#include "c/Given.h"

#include <mutex>
#include <set>
#include <string>

#include "fexora/platform/base/NoDestructor.h"

namespace fexora::c {

Outcome giveCodes(const std::vector<const char*>& from, const char** codes, std::size_t capacity,
                  std::size_t* count) {
  if (count == nullptr) return misuse("no place for the count");
  if (codes == nullptr && capacity > 0) return misuse("no room for the codes");
  std::copy_n(from.begin(), std::min(from.size(), capacity), codes);
  *count = from.size();
  return {};
}

Outcome giveText(std::string_view from, char* text, std::size_t capacity, std::size_t* length) {
  if (text == nullptr && capacity > 0) return misuse("no room for the text");
  if (length != nullptr) *length = from.size();
  if (capacity > 0) putText(from, text, capacity);
  return {};
}

const char* kept(std::string_view text) {
  struct Kept {
    std::mutex mutex;
    std::set<std::string, std::less<>> texts;
  };
  static NoDestructor<Kept> all;
  const std::lock_guard lock(all->mutex);
  auto at = all->texts.find(text);
  if (at == all->texts.end()) at = all->texts.emplace(text).first;
  return at->c_str();
}

}  // namespace fexora::c
