// Times several ways of one job against each other, in turns, so that whatever else the machine
// does meets all of them alike.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace fexora::bench {

class Race {
 public:
  // `job` names what is done, for `n` things where that matters (0: not said); the first way added
  // is the limit that the others' ratios refer to.
  explicit Race(std::string job, std::size_t n = 0) : job_(std::move(job)), n_(n) {}

  // `run` does the job `batch` times and returns something that depends on it, which keeps the
  // compiler from leaving it out.
  Race& add(std::string name, std::function<double()> run, double batch = 1);
  // Called before every run of every way, untimed.
  Race& before(std::function<void()> prepare);

  // Runs all ways in turns for about `seconds` in all, five times at least, and reports for each:
  // median, 10th and 90th percentile of one job's time, and the ratio of the medians. Ways that
  // take less than ten milliseconds are run twice in a row, and the second run counts.
  void run(double seconds = 1.0);

 private:
  struct Way {
    std::string name;
    std::function<double()> run;
    double batch;
    std::vector<double> times;  // seconds for one job
  };

  void time(Way& way) const;

  std::string job_;
  std::size_t n_;
  std::function<void()> prepare_ = [] {};
  std::vector<Way> ways_;
};

}  // namespace fexora::bench
