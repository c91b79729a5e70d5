// The words of a command line, made ready for CLI11, which is given options only.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace fexora::program {

// Options start with two hyphens, but for -h. Another word with one is an operand, like the amount
// -5 or -.5, and so is each after the word "--".
struct SortedWords {
  std::vector<std::string> options;  // in CLI11's order, the last one first; like "--limit=3"
  std::vector<std::string> operands;
};

// `withValue` names the options that take a value, which is never empty and begins with "--" only
// after an equals sign. Throws a CLI::ParseError that names the option whose value is missing.
SortedWords sortWords(const std::vector<std::string>& words,
                      std::span<const std::string_view> withValue);

// "swiss franc"
std::string joined(const std::vector<std::string>& words);

// Lets CLI11 read sorted options. A name that is none of the app's is rejected with the nearest one
// that is.
void parseOptions(CLI::App& app, std::vector<std::string> options);

// "; did you mean --help?" with the nearest of the words, at most two slips of the finger away, or
// nothing.
std::string offerOf(std::string_view typed, const std::vector<std::string>& words);

// Options whose value is a number as NumberText.h reads it. CLI11 itself takes 010 for 8, and a
// number that is too large for the largest.
CLI::Option* addNumber(CLI::App& app, const char* name, std::optional<std::int64_t>& number,
                       const char* purpose);
CLI::Option* addNumber(CLI::App& app, const char* name, std::optional<double>& number,
                       const char* purpose);

// CLI11's help with the operands named in it, without a line end.
std::string helpText(const CLI::App& app, std::string_view operands);

}  // namespace fexora::program
