// Real store files, damaged at random and met by a store: the short form is a test, the long one
// the program reliability_damage.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace fexora::test {

// The bytes of a store as the library writes it, with `rates` rates, and the same in the binary
// encoding as Python writes it.
std::string realStore(int rates);
std::string inBinary(const std::string& xml);

// One to four damages: cut, bits and bytes changed, pieces left out, doubled, or of the other one
// of two files.
class Damager {
 public:
  explicit Damager(std::uint64_t seed) : engine_(seed) {}
  std::string damaged(std::string bytes, const std::string& other);

 private:
  std::size_t below(std::size_t bound) { return engine_() % (bound != 0 ? bound : 1); }
  void damage(std::string& bytes, const std::string& other);

  std::mt19937_64 engine_;
};

struct DamageReport {
  std::uint64_t read = 0;     // still a dictionary
  std::uint64_t refused = 0;  // kept the last content
  std::string fault;          // the first that was found; none when empty
};

// Puts each file where the store's belongs, on a disk in memory, and lets a running store reload
// it, another start with it and save: what can be read is taken as it is and reads the same when it
// was saved; what cannot is said, changes nothing, and is kept aside by the save.
class DamageJudge {
 public:
  void meet(const std::string& bytes);
  const DamageReport& report() const { return report_; }

 private:
  std::string faultOf(const std::string& bytes);
  DamageReport report_;
};

}  // namespace fexora::test
