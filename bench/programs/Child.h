// Runs other programs and tells what they took.
#pragma once

#include <string>
#include <vector>

namespace fexora::bench {

struct Command {
  std::vector<std::string> words;  // the program, by path or by name, and its arguments
  std::string input;               // a file for its standard input; empty: none
};

struct Usage {
  bool ran;        // started, and ended with 0
  double peakMiB;  // the largest memory in use
};

// Waits for the end; standard output and error go nowhere.
Usage run(const Command& command);

}  // namespace fexora::bench
