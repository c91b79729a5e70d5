#include "fexora/platform/foundation/FirstOfStrings.h"

#include <utility>

namespace fexora {

FirstOfStrings::FirstOfStrings(std::vector<HostStrings*> sources) : sources_(std::move(sources)) {}

std::optional<std::string> FirstOfStrings::string(std::string_view key) {
  for (HostStrings* const source : sources_) {
    if (auto text = source->string(key)) return text;
  }
  return std::nullopt;
}

std::uint64_t FirstOfStrings::generation() {
  std::vector<std::uint64_t> now;
  now.reserve(sources_.size());
  for (HostStrings* const source : sources_) {
    now.push_back(source->generation());
    if (now.back() == 0) return 0;
  }
  const std::lock_guard lock(mutex_);
  if (now != seen_) {
    seen_ = std::move(now);
    generation_ = newGeneration();
  }
  return generation_;
}

}  // namespace fexora
