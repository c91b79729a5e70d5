// Columns of numbers that line up.
#pragma once

#include <string>
#include <vector>

namespace fexora::program {

// In characters, each of which takes one column.
std::size_t numberWidth(const std::string& text);

class NumberColumn {
 public:
  void add(std::string text);
  // The text of row `index`, padded on the left to the widest.
  std::string aligned(std::size_t index) const;

 private:
  std::vector<std::string> texts_;
  std::size_t widest_ = 0;
};

}  // namespace fexora::program
