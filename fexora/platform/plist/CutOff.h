// The growing lists of open containers share one vector, so that each finished list takes just the
// memory it needs.
#pragma once

#include <cstddef>
#include <iterator>
#include <span>
#include <vector>

#include "fexora/platform/values/Value.h"

namespace fexora {

// The elements of `all` from `first` on, moved out into a vector of just their size.
template <class T>
std::vector<T> cutOff(std::vector<T>& all, std::size_t first) {
  const auto from = all.begin() + static_cast<std::ptrdiff_t>(first);
  std::vector<T> part(std::make_move_iterator(from), std::make_move_iterator(all.end()));
  all.erase(from, all.end());
  return part;
}

// The same for entries, made into a dictionary.
inline Dictionary cutOffDictionary(std::vector<Dictionary::Entry>& all, std::size_t first) {
  auto part = Dictionary::fromEntries(std::span(all).subspan(first));
  all.resize(first);
  return part;
}

}  // namespace fexora
