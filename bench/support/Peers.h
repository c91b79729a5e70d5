// What people would use instead, entered into the races of our own way.
//
// A peer's source adds itself by one static object, so that a peer whose library is missing is
// simply not built:
//   const Peers<SaveJob> settings([](Race& race, const SaveJob& job) { race.add(…); });
#pragma once

#include <string>
#include <vector>

#include "bench/support/Race.h"
#include "bench/support/World.h"

namespace fexora::bench {

// `Job` is one of the records below: what all ways of a race are given alike. It outlives the race.
template <class Job>
class Peers {
 public:
  using Add = void (*)(Race& race, const Job& job);
  explicit Peers(Add add) { all().push_back(add); }

  static void enter(Race& race, const Job& job) {
    for (const Add add : all()) add(race, job);
  }

 private:
  static std::vector<Add>& all() {
    static std::vector<Add> peers;
    return peers;
  }
};

// One setting changed and saved beside the world's rates. Files of one's own go into its folder.
struct SaveJob {
  const World& world;
};

// The world's rates read from a file, each as a number.
struct ReadJob {
  const World& world;
};

// One pair rate between two of the world's currencies.
struct PairJob {
  const World& world;
};

// One amount into all of the world's currencies.
struct ConversionJob {
  const World& world;
};

// An answer of the service, whose rates' codes and numbers are taken.
struct AnswerJob {
  const std::string& text;
};

// Those of `names` that contain the query, in any case; the queries in turn. `limit` bounds them.
struct SearchJob {
  const std::vector<std::string>& names;
  const std::vector<std::string>& queries;
  std::size_t limit;
};

// Each text as a number, in the numbers' style of English.
struct AmountJob {
  const std::vector<std::string>& texts;
};

}  // namespace fexora::bench
