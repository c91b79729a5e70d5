// Times several ways of one job against each other, in turns, so that whatever else the machine
// does meets all of them alike.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace fexora::bench {

class Race {
 public:
  // `title` names the job; the first way added is the limit that the others' ratios refer to.
  explicit Race(std::string title) : title_(std::move(title)) {}

  // `run` does the job `batch` times and returns something that depends on it, which keeps the
  // compiler from leaving it out.
  Race& add(std::string name, std::function<double()> run, double batch = 1);

  // Runs all ways in turns for about `seconds` in all and prints a line for each: median, 10th and
  // 90th percentile of one job's time, and the ratio of the medians.
  void run(double seconds = 1.0);

 private:
  struct Way {
    std::string name;
    std::function<double()> run;
    double batch;
    std::vector<double> times;  // seconds for one job
  };

  std::string title_;
  std::vector<Way> ways_;
};

}  // namespace fexora::bench
