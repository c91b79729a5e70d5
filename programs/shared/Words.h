// The words of a command line, made ready for an OptionReader, which is given options only.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace fexora::program {

// What is wrong with the words, in a line for people.
struct OptionError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Options start with two hyphens, but for -h. Another word with one is an operand, like the amount
// -5 or -.5, and so is each after the word "--".
struct SortedWords {
  std::vector<std::string> options;  // in CLI11's order, the last one first; like "--limit=3"
  std::vector<std::string> operands;
};

// `withValue` names the options that take a value, which is never empty and begins with "--" only
// after an equals sign. Throws an OptionError that names the option whose value is missing.
SortedWords sortWords(const std::vector<std::string>& words,
                      std::span<const std::string_view> withValue);

// "swiss franc"
std::string joined(const std::vector<std::string>& words);

// "; did you mean --help?" with the nearest of the words, at most two slips of the finger away, or
// nothing.
std::string offerOf(std::string_view typed, const std::vector<std::string>& words);

}  // namespace fexora::program
