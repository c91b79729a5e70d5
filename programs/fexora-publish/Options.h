// What the command line asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fexora::publish {

struct Options {
  std::vector<std::string> sources;      // files, or "-" for standard input
  std::string output;                    // empty: standard output
  std::optional<double> maxAge;          // days
  std::optional<std::int64_t> minCount;  // codes; 1 when left out
  std::optional<double> maxJump;         // percent
  bool force = false;                    // publishes whatever the jump

  // Set when the line asked for a text instead of work: the help or the version.
  std::optional<std::string> answer;
};

// Throws a Rejection when the words do not fit.
Options readOptions(int count, char** words);

}  // namespace fexora::publish
