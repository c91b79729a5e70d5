#include "programs/fexora/NumberColumn.h"

#include <algorithm>
#include <utility>

namespace fexora::program {
// Code points: digits, marks and signs are one each in every locale.
std::size_t numberWidth(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

void NumberColumn::add(std::string text) {
  widest_ = std::max(widest_, numberWidth(text));
  texts_.push_back(std::move(text));
}

std::string NumberColumn::aligned(std::size_t index) const {
  const std::string& text = texts_[index];
  return std::string(widest_ - numberWidth(text), ' ') + text;
}

}  // namespace fexora::program
