// Numbers for people, and columns of them that line up.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fexora::program {

// Writes numbers as the current locale and the user's settings have them.
class NumberFormat {
 public:
  // `fraction` digits after the mark, with signs between groups of digits if `grouping`.
  NumberFormat(std::int64_t fraction, bool grouping);

  // With the wanted digits; one below 1 gets more where three significant ones need them.
  std::string amount(double value) const;
  // Six significant digits at least.
  std::string rate(double value) const;
  // As many digits as the number has, up to fifteen.
  std::string exact(double value) const;

 private:
  std::string write(double value, int fewest, int most) const;

  int fraction_;
  bool grouping_;
};

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
