// A program that goes on until it is stopped, and what it takes meanwhile.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

namespace fexora::bench {

class Running {
 public:
  // The program, by path or by name, and its arguments. Its output goes nowhere.
  explicit Running(const std::vector<std::string>& words);
  ~Running();  // kills it and waits for its end
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  // Waits until it has used no processor time for a second; after 20 seconds in any case.
  void waitUntilSettled() const;
  double proportionalMiB() const;    // its memory, what is shared counted by its part
  std::uint64_t timesWoken() const;  // of all its threads, since its start

 private:
  pid_t process_;
};

}  // namespace fexora::bench
