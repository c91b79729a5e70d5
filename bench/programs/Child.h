// Runs other programs and tells what they took.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace fexora::bench {

struct Command {
  std::vector<std::string> words;  // the program, by path or by name, and its arguments
  std::string input;               // a file for its standard input; empty: none
};

struct Usage {
  bool ran;        // started, and ended with 0
  double peakMiB;  // the largest memory in use
};

// Starts it and returns at once; its standard output and error go nowhere. -1: it cannot be.
pid_t start(const Command& command);
// The same, and waits for its end.
Usage run(const Command& command);

}  // namespace fexora::bench
